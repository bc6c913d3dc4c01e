#include "platform/win32/call_watch.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/error.h"
#include "platform/win32/system_error.h"

namespace win32 {
namespace {

constexpr const wchar_t* kClass = L"TarnCallWatch";
constexpr std::chrono::milliseconds kLook{200};

thread_local CallWatch* ownWatch = nullptr;

bool Due(ULONGLONG start) {
  const std::chrono::milliseconds elapsed(GetTickCount64() - start);
  return elapsed >= std::min(CallWatch::kPatience, CallWatch::kGivenUpPatience);
}

// A fault of the one who is asked must not reach COM: the call is then waited for, as without a watch.
template <class Work>
void Guarded(Work work) noexcept {
  try {
    work();
  } catch (const std::exception& error) {
    OutputDebugStringW(Wide(error.what()).c_str());
  }
}

}  // namespace

PendingCall::PendingCall(std::string_view member) : watch_(ownWatch), member_(member) {
  if (watch_) watch_->Begin(*this);
}

PendingCall::~PendingCall() {
  if (watch_) watch_->End(*this);
}

CallWatch::CallWatch(Handlers handlers) : handlers_(std::move(handlers)) {
  RegisterWindowClass(kClass, &DefWindowProcW);
  window_ = WindowHandle(
      CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ThisModule(), nullptr));
  if (!window_) throw base::Error("Calls to the host cannot be watched: " + LastErrorText());
  reminder_ = std::jthread([this](const std::stop_token& stop) { Remind(stop); });
  ownWatch = this;
}

CallWatch::~CallWatch() {
  if (ownWatch == this) ownWatch = nullptr;
}

void CallWatch::Begin(PendingCall& call) {
  call.start_ = GetTickCount64();
  call.outer_ = std::exchange(innermost_, &call);
  since_ = call.start_;
  if (!parked_) return;
  const std::lock_guard lock(mutex_);
  begun_.notify_one();
}

void CallWatch::End(PendingCall& call) {
  innermost_ = call.outer_;
  since_ = innermost_ ? innermost_->start_ : 0;
  givenUp_ = call.givenUp_;
  if (std::exchange(asked_, false)) Guarded([this] { handlers_.over(); });
}

bool CallWatch::GivesUp() {
  MSG reminder;
  while (PeekMessageW(&reminder, window_.Get(), 0, 0, PM_REMOVE)) {
  }
  PendingCall* const call = innermost_;
  if (!call || asking_) return false;
  const std::chrono::milliseconds elapsed(GetTickCount64() - call->start_);
  if (elapsed < (givenUp_ ? kGivenUpPatience : kPatience)) return false;
  if (givenUp_) return call->givenUp_ = true;
  asked_ = asking_ = true;
  Guarded([&] { call->givenUp_ |= handlers_.overdue(call->member_, elapsed); });
  asking_ = false;
  return call->givenUp_;
}

// COM hears of a pending call only when a message arrives, so this thread sends some. Between calls it
// sleeps.
void CallWatch::Remind(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (!stop.stop_requested()) {
    parked_ = true;
    begun_.wait(lock, stop, [this] { return since_ != 0; });
    parked_ = false;
    begun_.wait_for(lock, stop, kLook, [] { return false; });
    const ULONGLONG since = since_;
    if (since != 0 && Due(since)) PostMessageW(window_.Get(), WM_NULL, 0, 0);
  }
}

}  // namespace win32
