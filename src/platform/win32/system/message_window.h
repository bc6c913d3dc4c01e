// A window without a place on the screen, for messages to a thread: what other threads post to it is received
// on its own one. Also how every function that the system calls back keeps exceptions to itself.
#pragma once

#include <windows.h>

#include <functional>

#include "platform/win32/system/window_class.h"

namespace win32 {

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
