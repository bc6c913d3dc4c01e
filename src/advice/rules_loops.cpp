// The tuning of the control loops that an assigned function uses.
#include "advice/measurements.h"
#include "advice/places.h"
#include "advice/rules.h"

namespace advice {
namespace {

using enum Severity;

// Fields of a loop, in the order of its boxes.
constexpr std::size_t kProportional = 0, kDeadBand = 1, kIntegral = 2, kIntegralTime = 3, kDerivative = 4;

bool HeatsOrCools(const Unit& unit) { return unit.HeatsOrCools(); }

struct Loop {
  const char* name;
  std::string_view boxes;
  Quantity gain;
  const char* gainUnit;
  bool (*used)(const Unit& unit);

  Place Gain(std::size_t field) const { return {kLoops, At(boxes, field), gain, gainUnit}; }
  Place Time() const { return {kLoops, At(boxes, kIntegralTime), Quantity::kPlain, "sec"}; }
};
constexpr Loop kLoopTable[] = {
    {"Space Temperature", "txtPIDTemp", Quantity::kGainPerDegree, "", HeatsOrCools},
    {"Supply Temperature", "txtPIDTempDisch", Quantity::kGainPerDegree, "", HeatsOrCools},
    {"CO2 Level", "txtCO2Level", Quantity::kPlain, "% / ppm",
     [](const Unit& unit) { return unit.HasDamper() && unit.Number(kCO2Limit) > 0 && kCO2.IsThere(unit); }},
    {"Humidity", "txtHumidity", Quantity::kPlain, "%/% RH",
     [](const Unit& unit) { return unit.ControlsHumidity(); }},
    {"Pressure", "txtPressure", Quantity::kGainPerPressure, "",
     [](const Unit& unit) { return unit.ControlsPressure(); }},
};

template <class Work>
void EachLoop(const Unit& unit, Work work) {
  for (const Loop& loop : kLoopTable) {
    if (loop.used(unit)) work(loop);
  }
}

void NoGain(const Unit& unit, Report& found) {
  EachLoop(unit, [&](const Loop& loop) {
    if (unit.Number(loop.Gain(kProportional)) == 0) found({loop.Gain(kProportional)}, {Word(loop.name)});
  });
}

void NegativeGain(const Unit& unit, Report& found) {
  EachLoop(unit, [&](const Loop& loop) {
    for (const std::size_t field : {kProportional, kIntegral, kDerivative}) {
      const Place gain = loop.Gain(field);
      if (unit.Number(gain) < 0) found({gain}, {Word(loop.name), unit.Shown(gain)});
    }
  });
}

void NoIntegralTime(const Unit& unit, Report& found) {
  EachLoop(unit, [&](const Loop& loop) {
    const Place gain = loop.Gain(kIntegral);
    if (unit.Number(gain) > 0 && unit.Number(loop.Time()) <= 0)
      found({loop.Time(), gain}, {Word(loop.name), unit.Shown(gain)});
  });
}

void WideDeadBand(const Unit& unit, Report& found) {
  if (!unit.Heats() || !unit.Cools()) return;
  const Place band{kLoops, At(kLoopTable[0].boxes, kDeadBand), Quantity::kDifference};
  for (std::size_t period = 0; period < kPeriods; ++period) {
    const double distance = unit.Number(CoolingAt(period)) - unit.Number(HeatingAt(period));
    if (distance > 0 && Less(distance / 2, unit.Number(band)))
      found({band, HeatingAt(period), CoolingAt(period)},
            {Word(kPeriodNames[period]), unit.Shown(band), unit.Figure(distance, Quantity::kDifference)});
  }
}

constexpr const char* kSetGains = "Correct the gains of the loop.";

constexpr Check kRules[] = {
    {{"loop-without-gain", kFault, "%s1%: the proportional gain of the loop is 0.",
      "The loop does not answer to what it measures.", kSetGains, kPractice},
     NoGain},
    {{"loop-negative-gain", kFault, "%s1%: the loop has a negative gain (%s2%).",
      "The loop acts in the wrong direction.", kSetGains, kPractice},
     NegativeGain},
    {{"loop-integral-time", kFault, "%s1%: the loop has an integral gain (%s2%), but an integral time of 0.",
      "Without its time the integral part jumps.", "Set the integral time, or an integral gain of 0.",
      kPractice},
     NoIntegralTime},
    {{"loop-dead-band", kHint,
      "%s1%: the dead band of the loop (%s2%) is wider than half of the distance of the setpoints (%s3%).",
      "Within the dead band nothing is controlled: the space drifts towards the other setpoint.",
      "Make the dead band narrower, or move the setpoints apart.", kPractice},
     WideDeadBand},
};

}  // namespace

std::span<const Check> LoopRules() { return kRules; }

}  // namespace advice
