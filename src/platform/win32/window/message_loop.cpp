#include "platform/win32/window/message_loop.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace win32 {
namespace {

constexpr UINT kPosted = WM_APP;
constexpr ULONGLONG kLongestTurn = 200;  // milliseconds
constexpr DWORD kPause = 10;             // milliseconds after a failure

}  // namespace

MessageLoop::MessageLoop(FaultSink onFault)
    : onFault_(std::move(onFault)),
      window_([this](UINT message, WPARAM wParam, LPARAM) { return Receive(message, wParam); }) {}

int MessageLoop::Run() {
  MSG message;
  while (Next(message)) Handle(message);
  return static_cast<int>(message.wParam);
}

// GetMessage answers 0 for the end and -1 for a failure, in which the message means nothing.
bool MessageLoop::Next(MSG& message) {
  for (;;) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got >= 0) return got != 0;
    Sleep(kPause);
  }
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
    if (!Next(message)) return KeepQuit(message);
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
  window_.Post(kPosted);
}

void MessageLoop::RunOutsideSend(const std::function<void()>& work) {
  const bool senderWaits = (InSendMessageEx(nullptr) & (ISMEX_SEND | ISMEX_REPLIED)) == ISMEX_SEND;
  senderWaits ? Post(work) : Guard(work);
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
    try {
      work();
    } catch (const std::exception& error) {
      if (onFault_) onFault_(error.what());
    } catch (...) {
      if (onFault_) onFault_("Unknown failure");
    }
  } catch (...) {
    // The fault sink is the last place that could have told it.
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

bool MessageLoop::Receive(UINT message, WPARAM wParam) {
  if (message == kPosted) {
    RunPosted();
    return true;
  }
  if (message != WM_TIMER) return false;
  const auto timer = timers_.find(wParam);
  if (timer != timers_.end() && timer->second->onTick) {
    // A copy: the handler may stop or destroy its timer.
    const auto tick = timer->second->onTick;
    Guard(tick);
  }
  return true;
}

}  // namespace win32
