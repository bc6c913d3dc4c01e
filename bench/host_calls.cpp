#include "host_calls.h"

#include <algorithm>

#include "tests/core/tool.h"

namespace bench {

using simulator::CallTrace;
using simulator::TracedCall;

CallTrace TraceHostCalls() {
  CallTrace trace;
  simulator::CallRecorder recorder(trace);
  tests::Tool tool;
  tool.throughHost = [&](std::string_view programId, const automation::Object& object) {
    return recorder.Created(programId, object);
  };
  const auto begin = [&](const char* operation) { trace.operations.push_back({operation, {}}); };
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
  CallTrace done = trace;  // what follows is the end of the tool
  return done;
}

std::size_t CountCalls(const CallTrace::Operation& operation) {
  return static_cast<std::size_t>(std::ranges::count_if(operation.calls, [](const TracedCall& call) {
    return call.kind != TracedCall::Kind::kCreate && call.kind != TracedCall::Kind::kRelease;
  }));
}

}  // namespace bench
