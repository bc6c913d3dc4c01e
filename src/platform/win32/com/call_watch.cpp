#include "platform/win32/com/call_watch.h"

// After windows.h, which it needs.
#include <objbase.h>

#include <bit>
#include <utility>

namespace win32 {
namespace {

constexpr UINT kLook = WM_APP;
constexpr std::chrono::milliseconds kInterval{200};

thread_local CallWatch* ownWatch = nullptr;

// Milliseconds that the system was awake: the hours that a computer slept through are not the host's silence.
ULONGLONG AwakeTime() {
  ULONGLONG time = 0;  // in units of 100 ns
  QueryUnbiasedInterruptTime(&time);
  return time / 10'000;
}

// Ends the call that this thread waits for; it fails with RPC_E_CALL_CANCELED. For Wine alone the function is
// looked up: it has none there, and the call filter's answer serves.
void CancelOwnCall() {
  static const auto cancel = std::bit_cast<HRESULT(WINAPI*)(DWORD, ULONG)>(
      GetProcAddress(GetModuleHandleW(L"ole32.dll"), "CoCancelCall"));
  if (cancel) cancel(0, 0);
}

}  // namespace

PendingCall::PendingCall(std::string_view member) : watch_(ownWatch), member_(member) {
  if (watch_) watch_->Begin(*this);
}

PendingCall::~PendingCall() {
  if (watch_) watch_->End(*this);
}

CallWatch::CallWatch(Handlers handlers)
    : handlers_(std::move(handlers)),
      window_([this](UINT message, WPARAM, LPARAM) { return Receive(message); }) {
  CoEnableCallCancellation(nullptr);
  reminder_ = std::jthread([this](const std::stop_token& stop) { Remind(stop); });
  ownWatch = this;
}

CallWatch::~CallWatch() {
  if (ownWatch == this) ownWatch = nullptr;
  CoDisableCallCancellation(nullptr);
}

void CallWatch::Begin(PendingCall& call) {
  call.start_ = AwakeTime();
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

bool CallWatch::Receive(UINT message) {
  if (message != kLook) return false;
  if (GivesUp()) CancelOwnCall();
  return true;
}

bool CallWatch::GivesUp() {
  MSG reminder;
  while (PeekMessageW(&reminder, window_.Get(), 0, 0, PM_REMOVE)) {
  }
  PendingCall* const call = innermost_;
  if (!call || asking_) return false;
  if (call->givenUp_) return true;
  const std::chrono::milliseconds elapsed(AwakeTime() - call->start_);
  if (elapsed < (givenUp_ ? kGivenUpPatience : kPatience)) return false;
  if (givenUp_) return call->givenUp_ = true;
  asked_ = asking_ = true;
  Guarded([&] { call->givenUp_ |= handlers_.overdue(call->member_, elapsed); });
  asking_ = false;
  return call->givenUp_;
}

// Between calls this thread sleeps. What it sends waits for nobody, so the receiver may call other processes.
void CallWatch::Remind(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (!stop.stop_requested()) {
    parked_ = true;
    begun_.wait(lock, stop, [this] { return since_ != 0; });
    parked_ = false;
    begun_.wait_for(lock, stop, kInterval, [] { return false; });
    const ULONGLONG since = since_;
    // The shorter patience; which one counts is seen on the other thread.
    if (since == 0 || std::chrono::milliseconds(AwakeTime() - since) < kGivenUpPatience) continue;
    window_.Post(WM_NULL);
    SendNotifyMessageW(window_.Get(), kLook, 0, 0);
  }
}

}  // namespace win32
