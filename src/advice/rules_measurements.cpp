// What the assigned functions need to know, and whether anything tells them.
#include <string>

#include "advice/measurements.h"
#include "advice/places.h"
#include "advice/rules.h"
#include "base/text.h"

namespace advice {
namespace {

using enum Severity;

/// Heating or cooling by the space itself: not by the return air, and not by the load of terminal units.
bool BySpace(const Unit& unit) {
  const bool byLoad = unit.Is(kAveraging, kChecked) && unit.Is(kAverageOf, kSecondOption);
  return unit.HeatsOrCools() && unit.Is(kControlledBy, kFirstOption) && !byLoad;
}

bool ByReturnAir(const Unit& unit) { return unit.HeatsOrCools() && unit.Is(kControlledBy, kSecondOption); }

struct Need {
  Severity severity;
  const char* what;  // English
  const Measurement& measurement;
  bool (*needed)(const Unit& unit);
};
const Need kNeeds[] = {
    {kFault, "Temperature control", kSpaceTemp, BySpace},
    {kFault, "Temperature control", kReturnTemp, ByReturnAir},
    {kFault, "Humidity", kSpaceHumidity, [](const Unit& unit) { return unit.ControlsHumidity(); }},
    {kFault, "Economizer", kOutdoorAir, [](const Unit& unit) { return unit.Economizes(); }},
    {kFault, "Pressure", kPressure, [](const Unit& unit) { return unit.ControlsPressure(); }},
    {kFault, "Heat/Cool Changeover", kWater, [](const Unit& unit) { return unit.Drives({"HEAT_COOL"}); }},
    {kHint, "CO2 limit", kCO2,
     [](const Unit& unit) { return unit.HasDamper() && unit.Number(kCO2Limit) > 0; }},
    {kHint, "Mechanical cooling", kOutdoorTemp, [](const Unit& unit) { return unit.CoolsMechanically(); }},
    {kHint, "Mixed air", kMixedTemp, [](const Unit& unit) { return unit.HasDamper(); }},
    {kHint, "Supply Temperature", kSupplyTemp, [](const Unit& unit) { return unit.HeatsOrCools(); }},
    {kHint, "Fan alarm", kFanState, [](const Unit& unit) { return unit.Drives({"FAN_"}); }},
};

Value OneOf(const std::vector<std::string_view>& names) {
  return Text(base::Join(std::vector<std::string>(names.begin(), names.end()), " / "));
}

template <Severity kSeverity>
void Missing(const Unit& unit, Report& found) {
  for (const Need& need : kNeeds) {
    if (need.severity != kSeverity || !need.needed(unit) || !need.measurement.IsMissing(unit)) continue;
    found(need.measurement.Places(),
          {OneOf(need.measurement.inputs), Word(need.what), OneOf(need.measurement.variables)});
  }
}

constexpr const char* kMissing =
    "Not measured: %s1% (needed for: %s2%). No input has this function, and %s3% has no receive time.";
constexpr const char* kBlind =
    "Without a value, or with one whose loss nobody notices, the function does not know what it does.";
constexpr const char* kMeasure =
    "Give an input the function, or bind the network variable and set its receive time.";

constexpr Check kRules[] = {
    {{"not-measured", kFault, kMissing, kBlind, kMeasure, "LonMark, SCPTmaxRcvTime"}, Missing<kFault>},
    {{"not-measured-hint", kHint, kMissing, kBlind, kMeasure, "LonMark, SCPTmaxRcvTime"}, Missing<kHint>},
};

}  // namespace

std::span<const Check> MeasurementRules() { return kRules; }

}  // namespace advice
