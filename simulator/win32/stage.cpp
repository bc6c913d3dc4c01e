#include "simulator/win32/stage.h"

#include <utility>

#include "base/error.h"

namespace simhost {

void Order::Begin() {
  const std::lock_guard lock(mutex_);
  if (running_) throw base::Error("the tool is still busy with the last order");
  running_ = true;
  failure_.reset();
}

void Order::End(std::optional<automation::Error> failure) {
  {
    const std::lock_guard lock(mutex_);
    running_ = false;
    failure_ = std::move(failure);
  }
  ended_.notify_all();
}

bool Order::Running() const {
  const std::lock_guard lock(mutex_);
  return running_;
}

void Order::ThrowFailure() {
  const std::lock_guard lock(mutex_);
  if (const auto failure = std::exchange(failure_, std::nullopt)) throw *failure;
}

void Order::Wait(std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  if (!ended_.wait_for(lock, limit, [this] { return !running_; })) {
    throw base::Error("the tool has not carried out the order");
  }
  lock.unlock();
  ThrowFailure();
}

void Stage::Give(std::function<void(Host&)> work) {
  order->Begin();
  thread.Post([&host = host, order = order, work = std::move(work)] {
    try {
      work(host);
      order->End({});
    } catch (const automation::Error& error) {
      order->End(error);
    } catch (const std::exception& error) {
      order->End(automation::Error(automation::kApplicationDefined, error.what(), "SimHost"));
    }
  });
}

}  // namespace simhost
