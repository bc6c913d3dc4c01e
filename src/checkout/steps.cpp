#include "checkout/steps.h"

#include <algorithm>

#include "base/text.h"
#include "host/output_functions.h"

namespace checkout {
namespace {

enum PropertyNumber { kFunction = 3, kLocalHardware = 5 };
constexpr std::string_view kFunctionFormat = "UCPTroofTopOutputType";

struct Position {
  host::SignalClass of;
  const char* name;
  std::string_view value, state;
};
constexpr Position kPositions[] = {{host::SignalClass::kOnOff, "ON", "100.0", "1"},
                                   {host::SignalClass::kOnOff, "OFF", "0.0", "0"},
                                   {host::SignalClass::kModulating, "0 %", "0.0", "1"},
                                   {host::SignalClass::kModulating, "50 %", "50.0", "1"},
                                   {host::SignalClass::kModulating, "100 %", "100.0", "1"}};
constexpr const Position& kOff = kPositions[1];

/// The function that drives the same actuator the other way; empty for all others.
std::string OtherWay(const std::string& function) {
  constexpr std::string_view kOpen = "_OPEN", kClose = "_CLOSE";
  for (const auto& [one, other] : {std::pair(kOpen, kClose), {kClose, kOpen}}) {
    if (function.ends_with(one)) return function.substr(0, function.size() - one.size()) + std::string(other);
  }
  return {};
}

struct Output {
  int number;
  std::string function;
  bool local;
};

std::vector<Output> ReadOutputs(host::DeviceObjects& device) {
  std::vector<Output> outputs;
  for (int number = 1; number <= host::DeviceObjects::kOutputs; ++number) {
    host::PropertyCollection& properties = device.OutputProperties[static_cast<std::size_t>(number)];
    properties[kFunction].Bind(kFunctionFormat);
    outputs.push_back({number, base::Upper(properties[kFunction].Read()),
                       base::EqualsNoCase(properties[kLocalHardware].Read(), "TRUE")});
  }
  return outputs;
}

}  // namespace

std::vector<Step> ReadSteps(host::DeviceObjects& device) {
  const std::vector<Output> outputs = ReadOutputs(device);
  std::vector<Step> steps;
  for (const Output& output : outputs) {
    if (!output.local) continue;
    const std::string other = OtherWay(output.function);
    const auto half = std::ranges::find(outputs, other, &Output::function);
    for (const auto& [of, name, value, state] : kPositions) {
      if (host::GetOutputSignalClass(output.function) != of) continue;
      Step& step = steps.emplace_back(Step{name, {{output.number, output.function, value, state}}});
      // The control must not drive the actuator the other way meanwhile.
      if (!other.empty() && half != outputs.end())
        step.overrides.push_back({half->number, half->function, kOff.value, kOff.state});
    }
  }
  return steps;
}

}  // namespace checkout
