// Runs all benchmarks and prints what counts: ratios between two ways of doing the same in one run, and the
// number of host calls of each operation of the tool.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "growth.h"
#include "host_calls.h"
#include "keys.h"
#include "link_bench.h"

namespace {

// Keeps the median time of every benchmark.
class MedianReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.aggregate_name == "median") times_[run.run_name.function_name] = run.GetAdjustedCPUTime();
    }
  }

  double Nanoseconds(const std::string& name) const { return times_.at(name); }

 private:
  std::map<std::string, double> times_;
};

struct Ratio {
  const char* what;
  const char* measured;
  const char* against;
  double limit;
};

// Made again under Wine to measure what the calls cost alone; see bench/load.sim.
constexpr const char* kTraceFile = "build/bench/calls.json";
constexpr const char* kTwentyUnits = "build/bench/units";
constexpr const char* kCopyTrace = "build/bench/copy.json";
constexpr const char* kHundredUnits = "build/bench/hundred";

constexpr Ratio kRatios[] = {
    {"change one of 64 fields / plain string_view and memchr", "RecordChange", "PlainRecord", 1.0},
};

void PrintCalls(const char* title, const simulator::CallTrace& trace, const char* file) {
  std::printf("\n%-58s %10s\n", title, "calls");
  for (const auto& operation : trace.operations)
    std::printf("%-58s %10zu\n", operation.name.c_str(), bench::CountCalls(operation));
  std::ofstream(file) << trace.ToJson();
}

}  // namespace

int main() {
  std::string arguments[] = {"tarn_bench", "--benchmark_repetitions=15", "--benchmark_min_time=0.05",
                             "--benchmark_enable_random_interleaving=true"};
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  MedianReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);

  int over = 0;
  std::printf("%-58s %10s %8s %8s\n", "ratio, medians of 15", "time", "ratio", "limit");
  for (const Ratio& ratio : kRatios) {
    const double time = reporter.Nanoseconds(ratio.measured);
    const double value = time / reporter.Nanoseconds(ratio.against);
    std::printf("%-58s %7.0f ns %8.2f %8.2f%s\n", ratio.what, time, value, ratio.limit,
                value > ratio.limit ? "  OVER" : "");
    over += value > ratio.limit;
  }
  over += bench::PrintLink();
  over += bench::PrintGrowth();
  over += bench::PrintKeys();
  bench::WriteBuilding(kTwentyUnits, 20);
  bench::WriteBuilding(kHundredUnits, 101);
  PrintCalls("host calls, all pages", bench::TraceHostCalls(), kTraceFile);
  PrintCalls("host calls, one unit's values for a hundred", bench::TraceCopying(kHundredUnits), kCopyTrace);
  return over == 0 ? 0 : 1;
}
