// Windows of this program: their classes, how they are destroyed, the names that other processes read, and
// windows for messages alone. Also how every function that the system calls back keeps exceptions to itself.
#pragma once

#include <windows.h>

#include <functional>
#include <string_view>

#include "platform/win32/system/handle.h"

namespace win32 {

using WindowHandle = Owner<HWND, Calls<DestroyWindow>>;

/// The program or library that this code is part of: its window classes are its own, also where another part
/// of the process has classes of the same names.
HINSTANCE ThisModule();

/// Where a window stands on the screen.
inline RECT WindowRect(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return rect;
}

/// What is within its border, counted from there.
inline RECT ClientRect(HWND window) {
  RECT rect = {};
  GetClientRect(window, &rect);
  return rect;
}

/// The dialog that waits for its answer over a window, or over another dialog there; else the window itself.
HWND EnabledOver(HWND window);

/// Registers a window class with the dialog background; harmless when it is there already.
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure);

/// A native window is marked with the name of what it shows ("fPID", "fPID.txtPIDTemp(0)"), as a property of
/// the window that other processes can read: automated operation and test drivers find controls by it.
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

/// Writes the failure that is being handled to the debugger's output; only inside a catch.
void TellDebugger() noexcept;

/// Runs `work`, which the system has called: an exception must not cross its frames, so it goes to the
/// debugger's output. For callbacks without a better place for a failure; see MessageLoop::Guard for the
/// others.
template <class Work>
void Guarded(Work&& work) noexcept {
  try {
    work();
  } catch (...) {
    TellDebugger();
  }
}

/// A window without a place on the screen, for messages to a thread: what other threads post to it is
/// received on its own one.
class MessageWindow {
 public:
  /// Answers whether the message was one of its own.
  using Receiver = std::function<bool(UINT message, WPARAM wParam, LPARAM lParam)>;

  /// Throws base::Error when the system has no window left.
  explicit MessageWindow(Receiver receive);
  MessageWindow(const MessageWindow&) = delete;
  MessageWindow& operator=(const MessageWindow&) = delete;

  HWND Get() const { return window_.Get(); }
  /// From any thread.
  void Post(UINT message, WPARAM wParam = 0) const { PostMessageW(Get(), message, wParam, 0); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  Receiver receive_;
  WindowHandle window_;
};

}  // namespace win32
