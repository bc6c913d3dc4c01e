#include "host/output_functions.h"

#include <algorithm>

#include "base/text.h"

namespace host {

SignalClass GetOutputSignalClass(std::string_view function) {
  const std::string name = base::Upper(function);
  if (name == kUnassigned || std::ranges::find(kOutputFunctions, name) == kOutputFunctions.end())
    return SignalClass::kNone;
  return name.ends_with("_MOD") ? SignalClass::kModulating : SignalClass::kOnOff;
}

std::optional<Stage> StageOf(std::string_view function) {
  if (function.empty() || function.back() < '1' || function.back() > '4') return std::nullopt;
  const std::string_view family = function.substr(0, function.size() - 1);
  if (family != "HEATING_" && family != "COOLING_") return std::nullopt;
  return Stage{std::string(family), function.back() - '0'};
}

bool CanDrive(std::string_view signalType, SignalClass signalClass) {
  if (signalClass == SignalClass::kOnOff) return signalType == kDigital;
  return signalClass == SignalClass::kModulating && (signalType == kAnalog || signalType == kPwm);
}

}  // namespace host
