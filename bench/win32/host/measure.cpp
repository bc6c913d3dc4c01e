#include "bench/win32/host/measure.h"

#include <fmt/format.h>
#include <windows.h>

#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>
#include <utility>

// After windows.h, which it needs.
#include <psapi.h>

#include "base/error.h"
#include "simulator/win32/console.h"
#include "simulator/win32/foreign.h"
#include "simulator/win32/foreign_list.h"
#include "simulator/win32/person.h"
#include "simulator/win32/tool_process.h"

namespace simhost {
namespace {

using Clock = std::chrono::steady_clock;
using nlohmann::json;

/// What an operation leaves for later is none of the next one's: the log fits its columns a tenth of a second
/// after a message. An operation that makes no calls for as long has ended.
constexpr auto kRest = std::chrono::milliseconds(300);

template <class Duration>
double Milliseconds(Duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

/// Milliseconds that the calls of an operation take alone.
double Bare(const std::string& operation, const std::string& results) {
  std::ifstream stream(results);
  if (!stream) throw base::Error("The file " + results + " cannot be read.");
  return json::parse(stream).at(operation).get<double>();
}

std::uint64_t Calls(Host& host) {
  std::uint64_t calls = 0;
  for (const auto& [member, count] : host.GetBuilding().Faults().Counts()) calls += count;
  return calls;
}

/// Host and tool share one processor: whoever looks at the tool's windows instead makes it slower.
void WaitForTheLastCall(Stage& stage) {
  std::uint64_t now = 0;
  stage.patience.Until(
      [&] {
        std::this_thread::sleep_for(kRest);
        const std::uint64_t before = std::exchange(now, stage.OnHost(Calls));
        return now == before && now > 0;
      },
      "the tool does not come to an end of its calls");
}

/// A line for whoever makes the table: what was measured, in milliseconds or megabytes, what against, and the
/// number of calls.
void Tell(std::string_view what, double measured, double against, std::uint64_t calls) {
  WriteLine(fmt::format("MEASURED {} {:.2f} {:.2f} {}", what, measured, against, calls));
}

/// Megabytes of memory in use at the peak.
double PeakOf(HANDLE process) {
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof counters;
  GetProcessMemoryInfo(process, &counters, sizeof counters);
  return static_cast<double>(counters.PeakWorkingSetSize) / (1024.0 * 1024.0);
}

double PeakOfEmptyWindow(const Stage& stage, const std::string& program) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION made{};
  std::wstring line = win32::Wide(program);
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &made))
    throw base::Error(program + " could not be started");
  const win32::Handle thread(made.hThread);
  const win32::Handle process(made.hProcess);
  stage.patience.Until([] { return FindNamed("EmptyWindow") ? "" : "the empty window does not come"; });
  WaitForInputIdle(process.Get(), INFINITE);
  const double peak = PeakOf(process.Get());
  TerminateProcess(process.Get(), 0);
  return peak;
}

}  // namespace

void MeasureLoad(Stage& stage, Words words) {
  const double bare = Bare("load", words[1].text);
  MeasureStart(stage, {});
  const auto [time, calls] = stage.OnHost([](Host& host) {
    const auto took = host.CurrentTool().Send(0, 0, "");
    return std::pair(Milliseconds(took), Calls(host));
  });
  Tell(words[0].text, time, bare, calls);
}

void MeasureActivation(Stage& stage, Words words) {
  Tell(words[0].text, stage.OnHost([](Host& host) { return Milliseconds(host.CurrentTool().ComingUp()); }), 0,
       0);
}

void MeasureStart(Stage& stage, Words) {
  std::this_thread::sleep_for(kRest);
  stage.OnHost([](Host& host) { host.GetBuilding().Faults().StartCounting(); });
}

void MeasureEnd(Stage& stage, Words words) {
  WaitForTheLastCall(stage);
  const auto [time, calls] = stage.OnHost(
      [](Host& host) { return std::pair(Milliseconds(host.GetBuilding().Faults().Span()), Calls(host)); });
  Tell(words[0].text, time, Bare(words[0].text, words[1].text), calls);
}

void MeasureMemory(Stage& stage, Words words) {
  const double empty = PeakOfEmptyWindow(stage, words[0].text);
  for (const DWORD id : ToolProcesses()) {
    const win32::Handle process(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, id));
    Tell("memory", PeakOf(process.Get()), empty, 0);
  }
}

void MeasurePage(Stage& stage, Words words) {
  const ForeignList list(FindNamed("fMain.lvwConfig"));
  const int row = list.FindRow(words[1].text);
  if (row < 0) throw base::Error("there is no page \"" + words[1].text + "\"");
  const auto start = Clock::now();
  person::ClickAt(FindNamed("fMain.lvwConfig"), list.PointOn(row));
  const auto end = start + stage.patience.limit;
  for (HWND control = nullptr; !control || !OnScreen(control); control = FindNamed(words[2].text)) {
    if (Clock::now() > end) throw base::Error("the page does not come");
  }
  Tell(words[0].text, Milliseconds(Clock::now() - start), 0, 0);
}

}  // namespace simhost
