// Compares ways of doing the same on a machine that is not quiet: in each round all take turns in short
// slices, so that whatever slows the machine down meets all of them, and what counts is the median of the
// rounds.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Times {
  double real = 0;  // nanoseconds for one run of the work
  double cpu = 0;   // of this thread
};

class Contest {
 public:
  /// `work` does it once; `prepare` runs before each time and `renew` before each round, and neither is
  /// measured.
  void Add(const std::string& name, std::function<void()> work, std::function<void()> prepare = {},
           std::function<void()> renew = {}) {
    entries_.push_back({name, std::move(work), std::move(prepare), std::move(renew)});
  }

  /// Runs everything, for about 0.2 s each.
  void Run();

  /// Nanoseconds, median of the rounds.
  double Median(const std::string& name, double Times::*clock) const;
  /// How many times as fast the fastest of `names` is as the fastest of `others`, median of the rounds.
  double Speed(const std::vector<std::string>& names, const std::vector<std::string>& others,
               double Times::*clock) const;

 private:
  struct Entry {
    std::string name;
    std::function<void()> work;
    std::function<void()> prepare;
    std::function<void()> renew;
    std::vector<Times> rounds = {};
  };
  const Entry& Find(const std::string& name) const;

  std::vector<Entry> entries_;
};

}  // namespace bench
