// Looks at windows of any process and brings them to the front, by the system's own means. The mark of a
// window is a property of it, which ends with the window.
#pragma once

#include "plugin/desktop_windows.h"

namespace win32 {

class NativeDesktop : public plugin::DesktopWindows {
 public:
  void Mark(std::int32_t window, std::int32_t mark) override;
  plugin::Sight Look(std::int32_t window, std::int32_t mark) override;
  void Show(std::int32_t window, int command) override;
  void SetTopmost(std::int32_t window, bool topmost) override;
  void RaiseLoading(std::int32_t window) override;
  void Activate(std::int32_t window) override;
};

}  // namespace win32
