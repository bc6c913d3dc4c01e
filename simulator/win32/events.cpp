#include "simulator/win32/events.h"

#include <string_view>

namespace simhost {
namespace {

struct Kind {
  std::string_view member;
  std::string_view sentence;
};

constexpr Kind kEvents[] = {{"ObjectServer.Connect", "A tool asked for the network."},
                            {"Network.OpenSession", "A session was asked for."},
                            {"Device.AddLmo", "A device template was loaded."},
                            {"Network.BeginTransaction", "A transaction began."},
                            {"Network.CommitTransaction", "A commit was asked for."},
                            {"Network.CancelTransaction", "A cancel was asked for."}};

}  // namespace

Events::Events(simulator::Building& building) : building_(building) {
  static_assert(std::size(kEvents) == kKinds);
  building_.Faults().StartCounting();
}

std::vector<std::string> Events::News() {
  std::vector<std::string> news;
  for (std::size_t i = 0; i < kKinds; ++i) {
    for (const std::uint64_t now = building_.Faults().Count(kEvents[i].member); told_[i] < now; ++told_[i]) {
      news.emplace_back(kEvents[i].sentence);
    }
  }
  const std::vector<std::string>& log = building_.Log();
  for (; logTold_ < log.size(); ++logTold_) news.push_back(log[logTold_]);
  return news;
}

}  // namespace simhost
