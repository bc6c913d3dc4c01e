// Setpoints of heating and cooling in the three periods, and the limits of the supply air.
#include "advice/places.h"
#include "advice/rules.h"

namespace advice {
namespace {

using enum Severity;

// Differences in kelvin. The standard counts in steps of 5 °F.
constexpr double kCrossed = 1;
constexpr double kDeadBand = 5 / 1.8, kCoolingSetback = 5 / 1.8, kHeatingSetback = 10 / 1.8;
constexpr std::size_t kOccupied = 0, kUnoccupied = 2;

/// The distance of cooling above heating in each period of a unit that does both.
template <class Judge>
void EachDistance(const Unit& unit, Report& found, double figure, Judge tooClose) {
  if (!unit.Heats() || !unit.Cools()) return;
  for (std::size_t period = 0; period < kPeriods; ++period) {
    const Place heating = HeatingAt(period), cooling = CoolingAt(period);
    if (tooClose(unit.Number(cooling) - unit.Number(heating)))
      found({heating, cooling}, {Word(kPeriodNames[period]), unit.Shown(heating),
                                 unit.Figure(figure, Quantity::kDifference), unit.Shown(cooling)});
  }
}

void Crossed(const Unit& unit, Report& found) {
  EachDistance(unit, found, kCrossed, [](double distance) { return Less(distance, kCrossed); });
}

void Close(const Unit& unit, Report& found) {
  EachDistance(unit, found, kDeadBand,
               [](double distance) { return Less(distance, kDeadBand) && !Less(distance, kCrossed); });
}

/// One side of the unit: where its setpoints stand, in which direction they are set back, and how far.
struct Side {
  const char* name;
  bool (Unit::*used)() const;
  Place (*at)(std::size_t period);
  double direction;
  double setback;

  double Distance(const Unit& unit, std::size_t period) const {
    return direction * (unit.Number(at(period)) - unit.Number(at(kOccupied)));
  }
};
const Side kSides[] = {{"Heating", &Unit::Heats, HeatingAt, -1, kHeatingSetback},
                       {"Cooling", &Unit::Cools, CoolingAt, 1, kCoolingSetback}};

void Tighter(const Unit& unit, Report& found) {
  for (const Side& side : kSides) {
    for (std::size_t period = kOccupied + 1; period < kPeriods; ++period) {
      if ((unit.*side.used)() && Less(side.Distance(unit, period), 0))
        found({side.at(period), side.at(kOccupied)},
              {Word(kPeriodNames[period]), Word(side.name), unit.Shown(side.at(period)),
               unit.Shown(side.at(kOccupied))});
    }
  }
}

void SmallSetback(const Unit& unit, Report& found) {
  for (const Side& side : kSides) {
    const double distance = side.Distance(unit, kUnoccupied);
    if ((unit.*side.used)() && Less(distance, side.setback) && !Less(distance, 0))
      found({side.at(kUnoccupied), side.at(kOccupied)},
            {Word(side.name), unit.Shown(side.at(kUnoccupied)),
             unit.Figure(side.setback, Quantity::kDifference), unit.Shown(side.at(kOccupied))});
  }
}

constexpr const char* kTooClose = "%s1%: heating at %s2% is less than %s3% below cooling at %s4%.";
constexpr const char* kMoveApart = "Move the two setpoints apart.";

constexpr Check kRules[] = {
    {{"setpoints-crossed", kFault, kTooClose, "Heating and cooling work against each other.", kMoveApart,
      kPractice},
     Crossed},
    {{"setpoints-close", kHint, kTooClose,
      "A wide dead band keeps heating and cooling from following each other.", kMoveApart,
      "ASHRAE 90.1-2016, 6.4.3.1.2"},
     Close},
    {{"setback-tighter", kFault, "%s1%: %s2% at %s3% is tighter than in the occupied mode (%s4%).",
      "The unit uses more energy while nobody is there; mostly two rows are mixed up.",
      "Correct the setpoints of the periods.", kPractice},
     Tighter},
    {{"setback-small", kHint, "Unoccupied: %s1% at %s2% is set back by less than %s3% from %s4%.",
      "A small setback saves little while nobody is there.",
      "Set it back further; accept this where the space must be held.", "ASHRAE 90.1-2016, 6.4.3.3.2"},
     SmallSetback},
};

}  // namespace

std::span<const Check> SetpointRules() { return kRules; }

}  // namespace advice
