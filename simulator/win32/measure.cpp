// What it costs to bring the tool up, against what the calls alone cost that it makes to its host.
#include "simulator/win32/measure.h"

#include <fmt/format.h>

#include <chrono>

#include "base/error.h"
#include "simulator/win32/console.h"

namespace simhost {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWarmUp = 50;
constexpr int kBareCalls = 400;
constexpr double kShare = 1.25;     // of the calls' own time
constexpr double kAllowance = 150;  // milliseconds for everything else

double Milliseconds(Clock::duration time) { return std::chrono::duration<double, std::milli>(time).count(); }

// One call between the two processes that does nothing but fetch a value.
double BareCall(const Tool& tool, int calls) {
  const auto start = Clock::now();
  for (int i = 0; i < calls; ++i) tool.Get("Remote");
  return Milliseconds(Clock::now() - start) / calls;
}

}  // namespace

void MeasureLoad(Stage& stage, Words) {
  const std::string result = stage.OnHost([](Host& host) {
    Tool& tool = host.CurrentTool();
    BareCall(tool, kWarmUp);
    const double bare = BareCall(tool, kBareCalls);
    const std::uint64_t before = host.GetBuilding().Faults().Total();
    const auto start = Clock::now();
    tool.Send(0, 0, "");
    const double load = Milliseconds(Clock::now() - start);
    const auto calls = static_cast<double>(host.GetBuilding().Faults().Total() - before);
    const double limit = kShare * calls * bare + kAllowance;
    std::string line = fmt::format(
        "SendCommand to window {:.0f} ms; {:.0f} host calls of {:.3f} ms = {:.0f} ms; limit {:.0f} ms; ratio "
        "{:.2f}",
        load, calls, bare, calls * bare, limit, load / (calls * bare));
    if (load > limit) throw base::Error("too slow: " + line);
    return line;
  });
  WriteLine("        " + result);
}

}  // namespace simhost
