#include "simulator/win32/host_thread.h"

#include "platform/win32/system_error.h"

namespace simhost {
namespace {

constexpr wchar_t kClassName[] = L"SimHostThread";
constexpr UINT kWorkWaits = WM_APP;

}  // namespace

HostThread::HostThread() {
  win32::RegisterWindowClass(kClassName, WindowProcedure);
  const HINSTANCE program = GetModuleHandleW(nullptr);
  window_ = win32::WindowHandle(
      CreateWindowW(kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, program, nullptr));
  if (!window_) throw base::Error("The host cannot make its message window: " + win32::LastErrorText());
  SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void HostThread::Post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    work_.push(std::move(work));
  }
  PostMessageW(window_.Get(), kWorkWaits, 0, 0);
}

LRESULT CALLBACK HostThread::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<HostThread*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message != kWorkWaits || !self) return DefWindowProcW(window, message, wParam, lParam);
  self->WorkOff();
  return 0;
}

void HostThread::WorkOff() {
  std::unique_lock lock(mutex_);
  if (work_.empty()) return;
  const std::function<void()> work = std::move(work_.front());
  work_.pop();
  lock.unlock();
  work();
}

}  // namespace simhost
