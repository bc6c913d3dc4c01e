#include "platform/win32/system/message_window.h"

#include <exception>
#include <utility>

#include "base/error.h"
#include "platform/win32/system/system_error.h"

namespace win32 {
namespace {

constexpr const wchar_t* kClass = L"TarnMessages";

}  // namespace

void TellDebugger() noexcept {
  try {
    throw;
  } catch (const std::exception& error) {
    OutputDebugStringA(error.what());
  } catch (...) {
    OutputDebugStringA("Unknown failure");
  }
}

MessageWindow::MessageWindow(Receiver receive) : receive_(std::move(receive)) {
  RegisterWindowClass(kClass, &Procedure);
  window_ = WindowHandle(
      CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ThisModule(), nullptr));
  if (!window_) throw base::Error("A window for messages could not be made: " + LastErrorText());
  SetWindowLongPtrW(Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK MessageWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto* self = reinterpret_cast<const MessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  bool received = false;
  if (self) Guarded([&] { received = self->receive_(message, wParam, lParam); });
  return received ? 0 : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace win32
