#include "platform/win32/message_loop.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/error.h"
#include "platform/win32/system_error.h"

namespace win32 {
namespace {

constexpr const wchar_t* kClass = L"TarnMessageLoop";
constexpr UINT kPosted = WM_APP;
constexpr ULONGLONG kLongestTurn = 200;  // milliseconds

}  // namespace

MessageLoop::MessageLoop(FaultSink onFault) : onFault_(std::move(onFault)) {
  RegisterWindowClass(kClass, &Procedure);
  window_ = WindowHandle(
      CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ThisModule(), nullptr));
  if (!window_) throw base::Error("The message loop could not be set up: " + LastErrorText());
  SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MessageLoop::~MessageLoop() = default;

int MessageLoop::Run() {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) Handle(message);
  return static_cast<int>(message.wParam);
}

// Work that posts itself anew and busy timers must not keep the caller here.
void MessageLoop::Turn() {
  const ULONGLONG end = GetTickCount64() + kLongestTurn;
  MSG message;
  while (!quitting_ && GetTickCount64() <= end && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return KeepQuit(message);
    Handle(message);
  }
}

void MessageLoop::TurnFor(HWND window) {
  MSG message;
  while (PeekMessageW(&message, window, 0, 0, PM_REMOVE)) Handle(message);
}

void MessageLoop::RunUntil(const std::function<bool()>& done) {
  MSG message;
  while (!quitting_ && !done()) {
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) return KeepQuit(message);
    Handle(message);
  }
}

// Not for an inner loop to swallow: the program's own loop ends by it.
void MessageLoop::KeepQuit(const MSG& message) {
  quitting_ = true;
  PostQuitMessage(static_cast<int>(message.wParam));
}

void MessageLoop::Handle(MSG& message) {
  const auto filters = filters_;
  if (std::ranges::any_of(filters, [&](MessageFilter* filter) { return filter->Translate(message); })) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void MessageLoop::Post(std::function<void()> work) {
  posted_.push_back(std::move(work));
  PostMessageW(window_.Get(), kPosted, 0, 0);
}

void MessageLoop::Quit() {
  quitting_ = true;
  PostQuitMessage(0);
}

void MessageLoop::SetWaiting(bool waiting) {
  waiting_ = std::max(0, waiting_ + (waiting ? 1 : -1));
  if (!ShowPointer()) SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

bool MessageLoop::ShowPointer() const {
  if (Waiting()) SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  return Waiting();
}

void MessageLoop::Guard(const std::function<void()>& work) const noexcept {
  try {
    work();
  } catch (const std::exception& error) {
    try {
      if (onFault_) onFault_(error.what());
    } catch (...) {
      // The fault sink is the last place that could have told it.
    }
  } catch (...) {
    try {
      if (onFault_) onFault_("Unknown failure");
    } catch (...) {
      // As above.
    }
  }
}

void MessageLoop::Start(ui::Timer& timer) {
  const auto interval = static_cast<UINT>(std::max<long long>(1, timer.Interval().count()));
  timers_[++lastTimer_] = &timer;
  SetTimer(window_.Get(), lastTimer_, interval, nullptr);
}

void MessageLoop::Stop(ui::Timer& timer) {
  std::erase_if(timers_, [&](const auto& entry) {
    if (entry.second != &timer) return false;
    KillTimer(window_.Get(), entry.first);
    return true;
  });
}

// What the work posts in its turn waits for its own message, so that it never keeps the loop from other
// messages.
void MessageLoop::RunPosted() {
  for (std::size_t count = posted_.size(); count > 0 && !posted_.empty(); --count) {
    const auto work = std::move(posted_.front());
    posted_.pop_front();
    Guard(work);
  }
}

LRESULT CALLBACK MessageLoop::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* loop = reinterpret_cast<MessageLoop*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (loop && message == kPosted) {
    loop->RunPosted();
    return 0;
  }
  if (loop && message == WM_TIMER) {
    const auto timer = loop->timers_.find(wParam);
    if (timer != loop->timers_.end() && timer->second->onTick) {
      // A copy: the handler may stop or destroy its timer.
      const auto tick = timer->second->onTick;
      loop->Guard(tick);
    }
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace win32
