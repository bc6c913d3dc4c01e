// Marks a native window with the name of what it shows ("fPID", "fPID.txtPIDTemp(0)"), as a property of the
// window that other processes can read: automated operation and test drivers find controls by it.
#pragma once

#include <windows.h>

#include <string_view>

namespace win32 {

inline constexpr const wchar_t* kNameProperty = L"TarnName";

/// Keeps the mark for its life, which ends before the window's.
class WindowName {
 public:
  WindowName(HWND window, std::string_view name);
  WindowName(const WindowName&) = delete;
  WindowName& operator=(const WindowName&) = delete;
  ~WindowName();

  /// For a process that ends without its farewells: the marks are texts of the whole session, which would
  /// keep them until the user logs off.
  static void GiveAllBack();

 private:
  HWND window_;
  ATOM atom_;
};

}  // namespace win32
