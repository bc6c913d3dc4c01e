// Alarm limits and delays. The boxes are not bound to fixed fields: only with the usual records does each
// have its usual place, and with any other number of boxes these rules stay silent.
#include "advice/measurements.h"
#include "advice/places.h"
#include "advice/rules.h"

namespace advice {
namespace {

using enum Severity;

constexpr std::size_t kUsualBoxes = 23;
constexpr std::size_t kSupplyLow = 8, kSupplyHigh = 9;
constexpr std::size_t kNone = kUsualBoxes;  // no such limit

struct Row {
  const char* name;
  const Measurement& measurement;
  std::size_t low, high, delay;
  Quantity quantity = Quantity::kPlain;
  const char* unit = "";
};
const Row kRows[] = {
    {"Space temp", kSpaceTemp, kNone, kNone, 1},
    {"Return temp", kReturnTemp, 2, 3, 4, Quantity::kTemperature},
    {"Mixed air temp", kMixedTemp, 5, 6, 7, Quantity::kTemperature},
    {"Supply temp", kSupplyTemp, kSupplyLow, kSupplyHigh, 10, Quantity::kTemperature},
    {"Supply pressure", kSupplyPressure, kNone, kNone, 12},
    {"Duct pressure", kDuctPressure, 13, 14, 15, Quantity::kPressure},
    {"Space humidity", kSpaceHumidity, 16, 17, 18, Quantity::kPlain, "% RH"},
    {"Space CO2 level", kCO2, kNone, kNone, 20},
    {"Auxiliary alarm", kAuxiliaryAlarm, kNone, kNone, 21},
    {"Fan alarm", kFanState, kNone, kNone, 22},
};

bool HasUsualBoxes(const Unit& unit) {
  return unit.Known(AlarmAt(kUsualBoxes - 1)) && !unit.Known(AlarmAt(kUsualBoxes));
}

template <class Work>
void EachRow(const Unit& unit, Work work) {
  if (!HasUsualBoxes(unit)) return;
  for (const Row& row : kRows) {
    if (row.measurement.IsThere(unit)) work(row);
  }
}

void LimitsCrossed(const Unit& unit, Report& found) {
  EachRow(unit, [&](const Row& row) {
    const Place low = AlarmAt(row.low, row.quantity, row.unit),
                high = AlarmAt(row.high, row.quantity, row.unit);
    if (row.low != kNone && unit.Number(low) >= unit.Number(high))
      found({low, high}, {Word(row.name), unit.Shown(low), unit.Shown(high)});
  });
}

void NoDelay(const Unit& unit, Report& found) {
  EachRow(unit, [&](const Row& row) {
    if (unit.Number(AlarmAt(row.delay)) <= 0) found({AlarmAt(row.delay)}, {Word(row.name)});
  });
}

// The pages compare whole numbers; this compares what stands there.
void SupplyOutside(const Unit& unit, Report& found) {
  if (!HasUsualBoxes(unit)) return;
  const Place low = AlarmAt(kSupplyLow, Quantity::kTemperature),
              high = AlarmAt(kSupplyHigh, Quantity::kTemperature);
  const auto tell = [&](const char* name, const Place& setpoint, const Place& limit) {
    found({setpoint, limit}, {Word(name), unit.Shown(setpoint), unit.Shown(limit)});
  };
  if (unit.Heats() && unit.Number(high) - unit.Number(kMaxSupply) < kRounding)
    tell("Max supply temp", kMaxSupply, high);
  if (unit.Cools() && unit.Number(kMinSupply) - unit.Number(low) < kRounding)
    tell("Min supply temp", kMinSupply, low);
}

constexpr Check kRules[] = {
    {{"supply-outside-alarm", kFault, "%s1% (%s2%) does not lie inside the alarm limit (%s3%).",
      "Normal operation raises the alarm.", "Move the setpoint or the alarm limit.", kPractice},
     SupplyOutside},
    {{"alarm-limits-crossed", kFault, "%s1%: the low alarm limit (%s2%) is not below the high one (%s3%).",
      "Every value is outside of such limits.", "Correct the alarm limits.", kPractice},
     LimitsCrossed},
    {{"alarm-without-delay", kHint, "%s1%: the alarm has no delay.",
      "Each short disturbance raises an alarm, and people stop reading them.", "Give the alarm a delay.",
      kPractice},
     NoDelay},
};

}  // namespace

std::span<const Check> AlarmRules() { return kRules; }

}  // namespace advice
