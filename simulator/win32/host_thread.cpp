#include "simulator/win32/host_thread.h"

namespace simhost {
namespace {

constexpr UINT kWorkWaits = WM_APP;

}  // namespace

HostThread::HostThread()
    : window_([this](UINT message, WPARAM, LPARAM) {
        if (message == kWorkWaits) WorkOff();
        return message == kWorkWaits;
      }) {}

void HostThread::Post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    work_.push(std::move(work));
  }
  window_.Post(kWorkWaits);
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
