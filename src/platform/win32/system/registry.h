// The system's registry and the user's locale behind the ports of base. Created by the composition root.
#pragma once

#include "base/registry.h"
#include "platform/win32/system/handle.h"

namespace win32 {

class WindowsRegistry : public base::Registry {
 public:
  std::optional<std::string> Read(base::RegistryRoot root, const std::string& key,
                                  const std::string& name) override;
  bool Write(base::RegistryRoot root, const std::string& key, const std::string& name,
             const std::string& text) override;
};

/// The system keeps two sets of machine-wide values, of classes and of interfaces, one for programs of each
/// width.
enum class RegistryView { kOwn, kOther };

/// The text of a key's default value in exactly this view, up to its NUL, with the environment's variables
/// filled in where its type asks for that; empty when there is none.
std::string DefaultText(RegistryView view, HKEY hive, const std::string& key);
bool HasKey(RegistryView view, HKEY hive, const std::string& key);

HKEY HiveOf(base::RegistryRoot root);

/// An identifier as the registry's keys write it, in braces.
std::string GuidText(const GUID& guid);

class WindowsLocale : public base::Locale {
 public:
  std::string GetLocaleString(int item) override;
  /// Short date, a blank and long time of the user's locale.
  std::string GeneralDateNow() override;
};

}  // namespace win32
