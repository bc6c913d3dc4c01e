// What the commands of a script act on: the host on its thread, the windows on the screen, what was
// remembered. The commands run on a thread of their own, so that the host serves the tool meanwhile.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "automation/error.h"
#include "simulator/win32/host.h"
#include "simulator/win32/host_thread.h"
#include "simulator/win32/other_host.h"
#include "simulator/win32/patience.h"
#include "simulator/win32/script.h"

namespace simhost {

/// An order to the tool that may take long, carried out by the host's thread while the script goes on.
class Order {
 public:
  void Begin();
  void End(std::optional<automation::Error> failure);

  bool Running() const;
  /// Throws the failure of an order that has ended, once.
  void ThrowFailure();
  /// Waits for the end, then as ThrowFailure. Throws base::Error when it takes longer.
  void Wait(std::chrono::milliseconds limit);

 private:
  mutable std::mutex mutex_;
  std::condition_variable ended_;
  bool running_ = false;
  std::optional<automation::Error> failure_;
};

struct Stage {
  Stage(Host& theHost, HostThread& theThread, std::function<void(bool)> show)
      : host(theHost), thread(theThread), showHostWindow(std::move(show)) {}

  Host& host;  // on its thread only: use OnHost
  HostThread& thread;
  std::function<void(bool)> showHostWindow;  // called on the host's thread
  std::shared_ptr<Order> order = std::make_shared<Order>();
  Remembered remembered;
  Patience patience;
  std::unique_ptr<OtherHost> otherHost;

  /// Does `work(host)` on the host's thread and gives its result. `work` holds what it needs by value.
  template <class Work>
  auto OnHost(Work work) {
    return thread.Run([&host = host, work = std::move(work)] { return work(host); }, patience.limit);
  }

  /// Starts `work(host)` on the host's thread and returns at once.
  void Give(std::function<void(Host&)> work);
};

}  // namespace simhost
