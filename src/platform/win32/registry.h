// The system's registry behind the base::Registry port. Created by the composition root.
#pragma once

#include "base/registry.h"

namespace win32 {

class WindowsRegistry : public base::Registry {
 public:
  std::optional<std::string> Read(base::RegistryRoot root, const std::string& key,
                                  const std::string& name) override;
  bool Write(base::RegistryRoot root, const std::string& key, const std::string& name,
             const std::string& text) override;
};

}  // namespace win32
