#include "contest.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <stdexcept>

namespace bench {
namespace {

constexpr int kRounds = 15;
constexpr int kSlices = 8;        // of a round, for each
constexpr double kSlice = 1.5e6;  // nanoseconds

double Now(clockid_t clock) {
  timespec now;
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

/// Runs `work` for one slice and adds what it took; answers how often it ran. A first batch, which finds the
/// caches as another entry left them, does not count.
double RunSlice(const std::function<void()>& work, const std::function<void()>& prepare, Times& taken) {
  double runs = 0;
  const int count = prepare ? 1 : 16;
  bool isFirst = true;
  for (double spent = 0; spent < kSlice; isFirst = false) {
    if (prepare) prepare();
    const double startCpu = Now(CLOCK_THREAD_CPUTIME_ID);
    const double start = Now(CLOCK_MONOTONIC);
    for (int i = 0; i < count; ++i) work();
    const double time = Now(CLOCK_MONOTONIC) - start;
    if (isFirst) continue;
    taken.cpu += Now(CLOCK_THREAD_CPUTIME_ID) - startCpu;
    taken.real += time;
    spent += time;
    runs += count;
  }
  return runs;
}

double MedianOf(std::vector<double> values) {
  std::ranges::nth_element(values, values.begin() + kRounds / 2);
  return values[kRounds / 2];
}

}  // namespace

void Contest::Run() {
  for (int round = 0; round < kRounds; ++round) {
    std::vector<Times> taken(entries_.size());
    std::vector<double> runs(entries_.size());
    for (const Entry& entry : entries_) {
      if (entry.renew) entry.renew();
    }
    for (int slice = 0; slice < kSlices; ++slice) {
      for (std::size_t i = 0; i < entries_.size(); ++i)
        runs[i] += RunSlice(entries_[i].work, entries_[i].prepare, taken[i]);
    }
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      entries_[i].rounds.push_back({taken[i].real / runs[i], taken[i].cpu / runs[i]});
    }
  }
}

const Contest::Entry& Contest::Find(const std::string& name) const {
  const auto found = std::ranges::find(entries_, name, &Entry::name);
  if (found == entries_.end()) throw std::out_of_range(name);
  return *found;
}

double Contest::Median(const std::string& name, double Times::*clock) const {
  std::vector<double> values;
  for (const Times& round : Find(name).rounds) values.push_back(round.*clock);
  return MedianOf(values);
}

double Contest::Speed(const std::vector<std::string>& names, const std::vector<std::string>& others,
                      double Times::*clock) const {
  std::vector<double> values;
  for (std::size_t round = 0; round < kRounds; ++round) {
    const auto fastest = [&](const std::vector<std::string>& entries) {
      double time = Find(entries.front()).rounds[round].*clock;
      for (const auto& name : entries) time = std::min(time, Find(name).rounds[round].*clock);
      return time;
    };
    values.push_back(fastest(others) / fastest(names));
  }
  return MedianOf(values);
}

}  // namespace bench
