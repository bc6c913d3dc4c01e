#include "serverlink/asio_loop.h"

namespace serverlink {

void AsioLoop::Turn() {
  io_.restart();
  io_.poll();
}

void AsioLoop::RunUntil(const std::function<bool()>& done) {
  const auto idle = asio::make_work_guard(io_);
  while (!quit_ && !done()) {
    io_.restart();
    io_.run_one_for(std::chrono::milliseconds(50));
  }
}

void AsioLoop::Start(ui::Timer& timer) {
  timers_[&timer] = std::make_unique<asio::steady_timer>(io_);
  Arm(timer);
}

// A timer that is stopped or destroyed cancels its wait, whose handler then touches nothing.
void AsioLoop::Arm(ui::Timer& timer) {
  auto& native = *timers_.at(&timer);
  native.expires_after(timer.Interval());
  native.async_wait([this, &timer, &native](const asio::error_code& error) {
    const auto found = timers_.find(&timer);
    if (error || found == timers_.end() || found->second.get() != &native) return;
    Arm(timer);
    if (timer.onTick) timer.onTick();
  });
}

}  // namespace serverlink
