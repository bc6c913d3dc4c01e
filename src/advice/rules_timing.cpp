// Times of equipment, the fan's speed, and the options that live by a time.
#include <utility>

#include "advice/places.h"
#include "advice/rules.h"

namespace advice {
namespace {

using enum Severity;

constexpr double kShortestRun = 60, kShortestRest = 300;  // seconds, of a compressor
constexpr double kFastestMinimum = 60;                    // percent, of a fan
constexpr double kSecondsPerMinute = 60;

// The pages save an open and a close function only together.
bool FloatingHeat(const Unit& unit) { return unit.Drives({"HEAT_VALVE_OPEN", "HEAT_COOL_VALVE_OPEN"}); }
bool FloatingCool(const Unit& unit) { return unit.Drives({"COOL_VALVE_OPEN", "HEAT_COOL_VALVE_OPEN"}); }
bool FloatingDamper(const Unit& unit) { return unit.Drives({"FRESH_AIR_DAMPER_OPEN"}); }

struct Floating {
  const char* name;
  bool (*used)(const Unit& unit);
  const Place& drive;
};
const Floating kFloating[] = {{"Heating", FloatingHeat, kHeatDrive},
                              {"Cooling", FloatingCool, kCoolDrive},
                              {"Fresh air damper", FloatingDamper, kDamperDrive}};

void ShortCooling(const Unit& unit, Report& found) {
  for (const auto& [name, place] : {std::pair("Minimum time ON", kCoolOn), {"Minimum time OFF", kCoolOff}}) {
    if (unit.Drives({"COOLING_1"}) && unit.Number(place) < kShortestRun)
      found({place}, {Word(name), unit.Shown(place), unit.Figure(kShortestRun, Quantity::kPlain, "sec")});
  }
}

void ShortRest(const Unit& unit, Report& found) {
  const double rest = unit.Number(kCoolOff);
  if (unit.Drives({"COOLING_1"}) && rest >= kShortestRun && rest < kShortestRest)
    found({kCoolOff}, {Word("Minimum time OFF"), unit.Shown(kCoolOff),
                       unit.Figure(kShortestRest, Quantity::kPlain, "sec")});
}

void ShortChangeover(const Unit& unit, Report& found) {
  if (!unit.Heats() || !unit.CoolsMechanically()) return;
  for (const Floating& valve : {kFloating[0], kFloating[1]}) {
    if (valve.used(unit) && unit.Number(kChangeover) * kSecondsPerMinute < 2 * unit.Number(valve.drive))
      found({kChangeover, valve.drive}, {unit.Shown(kChangeover), unit.Shown(valve.drive)});
  }
}

void NoDriveTime(const Unit& unit, Report& found) {
  for (const Floating& floating : kFloating) {
    if (floating.used(unit) && unit.Number(floating.drive) <= 0)
      found({floating.drive}, {Word(floating.name)});
  }
}

void FanSpeed(const Unit& unit, Report& found) {
  const double speed = unit.Number(kFanSpeed);
  if (unit.Drives({"FAN_SPEED_MOD"}) && (speed <= 0 || speed > kFastestMinimum))
    found({kFanSpeed}, {unit.Shown(kFanSpeed), unit.Figure(kFastestMinimum, Quantity::kPlain, "%")});
}

void OptimumStart(const Unit& unit, Report& found) {
  const bool cools = unit.Cools() && unit.Is(kCoolStart, kChecked);
  const bool heats = unit.Heats() && unit.Is(kHeatStart, kChecked);
  if ((cools || heats) && unit.Number(kStartTime) <= 0) found({kStartTime, kCoolStart, kHeatStart});
}

/// Weights at no and full demand, of the quantity that is averaged.
void Weights(const Unit& unit, Report& found) {
  if (!unit.Is(kAveraging, kChecked)) return;
  const std::size_t first = unit.Is(kAverageOf, kSecondOption) ? 2 : 0;
  const Place none{kOptions, At("txtAt", first), Quantity::kPlain, "%"};
  const Place full{kOptions, At("txtAt", first + 1), Quantity::kPlain, "%"};
  const double atNone = unit.Number(none), atFull = unit.Number(full);
  if (atNone < 0 || atFull < 0 || atNone + atFull == 0)
    found({none, full, kAveraging}, {unit.Shown(none), unit.Shown(full)});
}

void Alternation(const Unit& unit, Report& found) {
  if (unit.Heats() && unit.Cools() && unit.Is(kAlternates, kChecked) &&
      unit.Number(kCycle) < 2 * unit.Number(kChangeover))
    found({kCycle, kChangeover, kAlternates}, {unit.Shown(kCycle), unit.Shown(kChangeover)});
}

void Bypass(const Unit& unit, Report& found) {
  if (unit.HeatsOrCools() && unit.Number(kBypassTime) <= 0) found({kBypassTime});
}

constexpr const char* kShort = "Mechanical cooling: %s1% is %s2%, less than %s3%.";
constexpr const char* kLonger = "Set a longer time.";

constexpr Check kRules[] = {
    {{"cooling-time-short", kFault, kShort, "A compressor that is switched this often is damaged.", kLonger,
      kPractice},
     ShortCooling},
    {{"cooling-rest-short", kHint, kShort,
      "A compressor needs a rest before it starts again, until its pressures are even.", kLonger, kPractice},
     ShortRest},
    {{"changeover-short", kHint,
      "The changeover delay (%s1%) is shorter than twice the drive time of the valve (%s2%).",
      "One valve opens before the other is closed.", "Set a longer changeover delay.", kPractice},
     ShortChangeover},
    {{"no-drive-time", kFault, "%s1%: the drive time is 0.",
      "A floating actuator is positioned by its drive time.", "Set the drive time of the actuator.",
      kPractice},
     NoDriveTime},
    {{"fan-minimum", kHint, "The minimum fan speed is %s1%; usual is more than 0 and at most %s2%.",
      "A fan that may stand still does not cool its motor; one that cannot slow down saves nothing.",
      "Set the lowest speed that the fan and the coils need.", kPractice},
     FanSpeed},
    {{"optimum-start", kFault, "Optimum start is enabled, but its maximum start time is 0.",
      "Without time no start can be earlier.", "Set the maximum start time, or switch optimum start off.",
      kPractice},
     OptimumStart},
    {{"averaging-weights", kFault, "Demand averaging: the weights %s1% and %s2% give no average.",
      "With weights below 0, or all of 0, the unit follows nobody.", "Correct the weights.", kPractice},
     Weights},
    {{"alternation-short", kFault,
      "The heating/cooling cycle time (%s1%) is shorter than twice the changeover delay (%s2%).",
      "The unit would do little else than change over.", "Set a longer cycle time or a shorter delay.",
      kPractice},
     Alternation},
    {{"no-bypass", kHint, "The bypass time is 0.", "Whoever asks for more time gets none.",
      "Set the bypass time.", kPractice},
     Bypass},
};

}  // namespace

std::span<const Check> TimingRules() { return kRules; }

}  // namespace advice
