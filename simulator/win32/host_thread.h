// The one thread that owns the building and every COM object. Other threads hand it work, which its message
// loop does between two calls of the tool; inside an outgoing call to the tool it waits for the end of that
// call. Work is handed over by value: a caller that stops waiting leaves nothing behind that the work could
// still touch.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <queue>
#include <type_traits>
#include <utility>

#include "base/error.h"
#include "platform/win32/system/own_window.h"

namespace simhost {

class HostThread {
 public:
  /// To be made on the thread that does the work. Throws base::Error.
  HostThread();

  /// Lets the thread do `work` soon; from any thread. The work must not throw.
  void Post(std::function<void()> work);

  /// Lets the thread do `work` soon; its result or its exception is in the future. From any thread.
  template <class Work>
  auto Start(Work work) {
    auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Work>()>>(std::move(work));
    auto result = task->get_future();
    Post([task] { (*task)(); });
    return result;
  }

  /// Lets the thread do `work` and gives its result or its exception; from any other thread. Throws
  /// base::Error when the thread has not done it within `limit`.
  template <class Work>
  auto Run(Work work, std::chrono::milliseconds limit) {
    auto result = Start(std::move(work));
    if (result.wait_for(limit) != std::future_status::ready)
      throw base::Error("the host is still waiting for the tool");
    return result.get();
  }

 private:
  void WorkOff();

  win32::MessageWindow window_;
  std::mutex mutex_;
  std::queue<std::function<void()>> work_;
};

}  // namespace simhost
