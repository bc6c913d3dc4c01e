// What the commands of a script act on: the host on its thread, the windows on the screen, what was
// remembered. The commands run on a thread of their own, so that the host serves the tool meanwhile.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <utility>

#include "base/error.h"
#include "simulator/win32/host.h"
#include "simulator/win32/host_thread.h"
#include "simulator/win32/other_host.h"
#include "simulator/win32/patience.h"
#include "simulator/win32/script.h"

namespace simhost {

struct Stage {
  Stage(Host& theHost, HostThread& theThread, std::function<void(bool)> show)
      : host(theHost), thread(theThread), showHostWindow(std::move(show)) {}

  Host& host;  // on its thread only: use OnHost
  HostThread& thread;
  std::function<void(bool)> showHostWindow;  // called on the host's thread
  std::future<void> order;  // given to the tool, carried out by the host's thread while the script goes on
  Remembered remembered;
  Patience patience;
  std::unique_ptr<OtherHost> otherHost;

  /// Does `work(host)` on the host's thread and gives its result. `work` holds what it needs by value.
  template <class Work>
  auto OnHost(Work work) {
    return thread.Run([&host = host, work = std::move(work)] { return work(host); }, patience.limit);
  }

  /// Gives an order: starts `work(host)` on the host's thread and returns at once. Throws base::Error while
  /// the last one is carried out.
  template <class Work>
  void Give(Work work) {
    if (Ordered()) throw base::Error("the tool is still busy with the last order");
    order = thread.Start([&host = host, work = std::move(work)] { work(host); });
  }

  /// Whether an order is being carried out.
  bool Ordered() const {
    return order.valid() && order.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
  }
  /// Throws the failure of an order that has ended, once.
  void ThrowFailure() {
    if (order.valid() && !Ordered()) order.get();
  }
  /// Waits for the end of the order, then as ThrowFailure. Throws base::Error when it takes longer.
  void WaitOrder() {
    if (order.valid() && order.wait_for(patience.limit) != std::future_status::ready)
      throw base::Error("the tool has not carried out the order");
    ThrowFailure();
  }
};

}  // namespace simhost
