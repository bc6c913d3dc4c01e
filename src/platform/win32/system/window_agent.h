// What the window agent asks of the system: named sections of the paging file, seen by all programs of the
// user's session, and windows of any process, which are looked at and brought to the front. The mark of a
// window is a property of it, which ends with the window.
#pragma once

#include "plugin/desktop_windows.h"
#include "plugin/shared_memory.h"

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

class PagedMemory : public plugin::SharedMemory {
 public:
  std::unique_ptr<plugin::SharedSection> Open(std::int32_t size, const std::string& name) override;
  bool Denied() const override { return denied_; }

 private:
  bool denied_ = false;
};

}  // namespace win32
