#include "host_calls.h"

#include <algorithm>

#include "fleet/fCopy.h"
#include "fleet/fleet.h"
#include "tests/core/tool.h"

namespace bench {
namespace {

using simulator::CallTrace;
using simulator::TracedCall;

/// A tool whose calls are written down, operation by operation.
class TracedTool {
 public:
  explicit TracedTool(simulator::Building& building) : tool(building) {
    tool.throughHost = [this](std::string_view programId, const automation::Object& object) {
      return recorder_.Created(programId, object);
    };
  }
  void Begin(const char* operation) { trace_.operations.push_back({operation, {}}); }
  const CallTrace& Trace() const { return trace_; }

 private:
  CallTrace trace_;
  simulator::CallRecorder recorder_{trace_};

 public:
  tests::Tool tool;  // ends before what its calls are written into
};

}  // namespace

CallTrace TraceHostCalls() {
  simulator::Building building(tests::Tool::Options());
  TracedTool traced(building);
  tests::Tool& tool = traced.tool;
  const auto begin = [&](const char* operation) { traced.Begin(operation); };
  begin("load");
  tool.Open(tests::kAssigned);
  begin("refresh");
  tool.Click("cmdRefresh");
  begin("edit");
  tool.ChoosePage("fPID");
  tool.Type("fPID.txtPIDTemp(0)", "3.5");
  begin("apply");
  tool.Click("cmdApply");
  begin("units");
  tool.Find<ui::OptionButton>("optUnit(1)").Click();
  return traced.Trace();  // what follows is the end of the tool
}

CallTrace TraceCopying(const std::filesystem::path& folder) {
  simulator::BuildingOptions options;
  options.dataFolder = folder;
  simulator::Building building(options);
  TracedTool traced(building);
  tests::Tool& tool = traced.tool;
  traced.Begin("load");
  tool.Open("Unit 1");
  traced.Begin("edit");
  tool.ChoosePage("fPID");
  tool.Type("fPID.txtPIDTemp(0)", "3.5");
  tool.Click("cmdApply");
  traced.Begin("units");
  CallTrace done;
  fleet::fCopy& window = tool.Companion<fleet::Fleet>().CopyWindow();
  const auto press = [&](const char* operation, const char* button) {
    traced.Begin(operation);
    dynamic_cast<ui::Button&>(*window.Find(button)).Click();
  };
  tool.loop.whileOpen = [&] {
    press("dry-run", "cmdCompare");
    press("copy", "cmdCopy");
    press("again", "cmdCopy");
    done = traced.Trace();
    dynamic_cast<ui::Button&>(*window.Find("cmdClose")).Click();
  };
  tool.ChooseEntry("Copy to units...");
  return done;
}

std::size_t CountCalls(const CallTrace::Operation& operation) {
  return static_cast<std::size_t>(std::ranges::count_if(operation.calls, [](const TracedCall& call) {
    return call.kind != TracedCall::Kind::kCreate && call.kind != TracedCall::Kind::kRelease;
  }));
}

}  // namespace bench
