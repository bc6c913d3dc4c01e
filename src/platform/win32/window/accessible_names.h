// What screen readers and test programs call a control: the system's own name for it (its caption or the
// label before it) is replaced where the description of the form knows a better one.
#pragma once

#include <windows.h>

#include <set>
#include <string>

#include "platform/win32/system/handle.h"

struct IAccPropServices;

namespace win32 {

class AccessibleNames {
 public:
  AccessibleNames();
  AccessibleNames(const AccessibleNames&) = delete;
  AccessibleNames& operator=(const AccessibleNames&) = delete;
  ~AccessibleNames();

  /// Empty: the system's own name again, as must be before the window is destroyed. Without COM on this
  /// thread, and on Wine, which does not have the service, every name is the system's.
  void Set(HWND control, const std::wstring& name);

 private:
  bool Ready();

  ComPtr<IAccPropServices> services_;
  std::set<HWND> named_;
};

}  // namespace win32
