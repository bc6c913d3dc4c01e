// The fresh air damper and cooling with outdoor air.
#include "advice/places.h"
#include "advice/rules.h"

namespace advice {
namespace {

using enum Severity;

constexpr double kHighestOutdoor = 24;           // °C
constexpr double kHighestEnthalpy = 28 * 2.326;  // kJ/kg; both scales count from the same zero, as hosts do

void AboveLimit(const Unit& unit, Report& found, const Place& limit, double highest) {
  if (unit.Economizes() && Less(highest, unit.Number(limit)))
    found({limit}, {unit.Shown(limit), unit.Figure(highest, limit.quantity)});
}

constexpr const char* kHighLimit =
    "The economizer is used up to %s1% outdoors; the highest usual limit is %s2%.";
constexpr const char* kAddsLoad = "Warm or humid outdoor air adds load instead of taking it away.";
constexpr const char* kLowerLimit = "Lower the limit of the economizer.";

constexpr Check kRules[] = {
    {{"economizer-without-damper", kHint,
      "The economizer is included, but no output drives a fresh air damper.",
      "Without its damper the unit cannot cool with outdoor air.",
      "Assign the fresh air damper; accept this where the unit has none.", kPractice},
     [](const Unit& unit, Report& found) {
       if (unit.CoolsMechanically() && unit.Is(kEconomizer, kFirstOption) && !unit.Economizes())
         found({kEconomizer});
     }},
    {{"economizer-temperature", kHint, kHighLimit, kAddsLoad, kLowerLimit, "ASHRAE 90.1-2016, 6.5.1.1.3"},
     [](const Unit& unit, Report& found) { AboveLimit(unit, found, kEconomizerLimit, kHighestOutdoor); }},
    {{"economizer-enthalpy", kHint, kHighLimit, kAddsLoad, kLowerLimit, "ASHRAE 90.1-2016, 6.5.1.1.3"},
     [](const Unit& unit, Report& found) { AboveLimit(unit, found, kEnthalpyLimit, kHighestEnthalpy); }},
    {{"economizer-alone", kHint, "Mechanical cooling is not used together with the economizer.",
      "What outdoor air can save is lost as soon as it is not enough alone.",
      "Let mechanical cooling help the economizer.", "ASHRAE 90.1-2016, 6.5.1.3"},
     [](const Unit& unit, Report& found) {
       if (unit.Economizes() && unit.CoolsMechanically() && unit.Is(kIntegrated, kUnchecked))
         found({kIntegrated});
     }},
    {{"damper-stays-open", kHint, "The fresh air damper stays open in unoccupied mode.",
      "Outdoor air is heated and cooled while nobody needs it.", "Let the damper close in unoccupied mode.",
      "ASHRAE 90.1-2016, 6.4.3.4.2"},
     [](const Unit& unit, Report& found) {
       if (unit.HasDamper() && unit.Is(kDamperCloses, kUnchecked)) found({kDamperCloses});
     }},
    {{"damper-positions", kFault, "The minimum damper position (%s1%) is above the maximum (%s2%).",
      "No position of the damper is allowed then.", "Correct the positions of the damper.", kPractice},
     [](const Unit& unit, Report& found) {
       if (unit.HasDamper() && unit.Number(kMinDamper) > unit.Number(kMaxDamper))
         found({kMinDamper, kMaxDamper}, {unit.Shown(kMinDamper), unit.Shown(kMaxDamper)});
     }},
    {{"mixed-air-limit", kHint,
      "The low limit of the mixed air (%s1%) is above the minimum supply temperature (%s2%).",
      "The limit closes the damper before the supply air is as cool as it may be.",
      "Lower the limit of the mixed air, or raise the minimum supply temperature.", kPractice},
     [](const Unit& unit, Report& found) {
       if (unit.HasDamper() && Less(unit.Number(kMinSupply), unit.Number(kMixedLimit)))
         found({kMixedLimit, kMinSupply}, {unit.Shown(kMixedLimit), unit.Shown(kMinSupply)});
     }},
};

}  // namespace

std::span<const Check> EconomizerRules() { return kRules; }

}  // namespace advice
