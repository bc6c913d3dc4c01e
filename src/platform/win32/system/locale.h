// The user's locale behind the base::Locale port. Created by the composition root.
#pragma once

#include "base/registry.h"

namespace win32 {

class WindowsLocale : public base::Locale {
 public:
  std::string GetLocaleString(int item) override;
  /// Short date, a blank and long time of the user's locale.
  std::string GeneralDateNow() override;
};

}  // namespace win32
