#include "simulator/win32/measure.h"

#include <fmt/format.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "base/error.h"
#include "platform/win32/com_object.h"
#include "simulator/call_trace.h"
#include "simulator/win32/console.h"

namespace simhost {
namespace {

using Clock = std::chrono::steady_clock;
using nlohmann::json;

constexpr double kShare = 1.25;     // of the calls' own time
constexpr double kAllowance = 150;  // milliseconds for everything else

template <class Duration>
double Milliseconds(Duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

std::string ReadText(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw base::Error("The file " + file + " cannot be read.");
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Milliseconds that the calls of an operation take alone.
double Bare(const std::string& operation, const std::string& results) {
  return json::parse(ReadText(results)).at(operation).get<double>();
}

std::uint64_t Calls(Host& host) {
  std::uint64_t calls = 0;
  for (const auto& [member, count] : host.GetBuilding().Faults().Counts()) calls += count;
  return calls;
}

void Tell(std::string_view operation, std::uint64_t calls, double time, double bare) {
  WriteLine(fmt::format("MEASURED {:<12} {:>5} calls {:>8.1f} ms {:>8.1f} ms alone {:>6.2f}", operation,
                        calls, time, bare, time / bare));
}

}  // namespace

void ReplayCalls(Stage& stage, Words words) {
  const auto trace = simulator::CallTrace::FromJson(ReadText(words[0].text));
  const json results = stage.OnHost([trace](Host&) {
    simulator::CallReplay replay([](const std::string& programId) { return win32::CreateObject(programId); });
    json times;
    for (const auto& operation : trace.operations) {
      const auto start = Clock::now();
      replay.Run(operation);
      times[operation.name] = Milliseconds(Clock::now() - start);
    }
    return times;
  });
  std::ofstream(words[1].text) << results;
}

void MeasureLoad(Stage& stage, Words words) {
  const double bare = Bare("load", words[0].text);
  MeasureStart(stage, {});
  const auto [time, calls] = stage.OnHost([](Host& host) {
    const auto start = Clock::now();
    host.CurrentTool().Send(0, 0, "");
    return std::pair(Milliseconds(Clock::now() - start), Calls(host));
  });
  Tell("load", calls, time, bare);
  const double limit = kShare * bare + kAllowance;
  if (time > limit) throw base::Error(fmt::format("{:.0f} ms is over the limit of {:.0f} ms", time, limit));
}

void MeasureStart(Stage& stage, Words) {
  stage.OnHost([](Host& host) { host.GetBuilding().Faults().StartCounting(); });
}

void MeasureEnd(Stage& stage, Words words) {
  const auto [time, calls] = stage.OnHost(
      [](Host& host) { return std::pair(Milliseconds(host.GetBuilding().Faults().Span()), Calls(host)); });
  Tell(words[0].text, calls, time, Bare(words[0].text, words[1].text));
}

}  // namespace simhost
