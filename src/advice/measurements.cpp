#include "advice/measurements.h"

#include <algorithm>

#include "advice/places.h"

namespace advice {
namespace {

bool HasInput(const Unit& unit, const std::vector<std::string_view>& functions) {
  return std::ranges::any_of(functions,
                             [&unit](std::string_view function) { return unit.HasInput(function); });
}

}  // namespace

const Measurement kSpaceTemp{{"SPACE_TEMP"}, {"nviSpaceTemp"}},
    kReturnTemp{{"RETURN_TEMP"}, {"nviReturnTemp"}}, kSupplyTemp{{"SUPPLY_TEMP"}, {"nviSupplyTemp"}},
    kMixedTemp{{"MIXED_AIR_TEMP"}, {"nviMixedAirTemp"}}, kOutdoorTemp{{"OUTDOOR_TEMP"}, {"nviOutdoorTemp"}},
    kOutdoorAir{{"OUTDOOR_TEMP", "OUTDOOR_ENTHALPY"}, {"nviOutdoorTemp", "nviOutdoorEnth"}},
    kWater{{"WATER_TEMP"}, {"nviWaterTemp", "nviHotWater"}},
    kSpaceHumidity{{"SPACE_HUMIDITY"}, {"nviSpaceRH"}}, kCO2{{"CO2_LEVEL"}, {"nviCO2"}},
    kSupplyPressure{{"SUPPLY_PRESSURE"}, {"nviSupplyPress"}},
    kDuctPressure{{"DUCT_PRESSURE"}, {"nviDuctPressure"}},
    kPressure{{"DUCT_PRESSURE", "SUPPLY_PRESSURE"}, {"nviDuctPressure", "nviSupplyPress"}},
    kFanState{{"FAN_STATE"}, {"nviFanState"}}, kAuxiliaryAlarm{{"AUXILIARY_ALARM"}, {}};

std::vector<Place> Measurement::Places() const {
  std::vector<Place> places;
  for (const std::string_view variable : variables) {
    const auto found = std::ranges::find(kReceivedVariables, variable);
    places.push_back(ReceiveTimeAt(static_cast<std::size_t>(found - kReceivedVariables.begin())));
  }
  return places;
}

bool Measurement::IsThere(const Unit& unit) const {
  return HasInput(unit, inputs) ||
         std::ranges::any_of(Places(), [&unit](const Place& time) { return unit.Number(time) > 0; });
}

bool Measurement::IsMissing(const Unit& unit) const {
  return unit.Known(InputFunctionAt(0)) && !HasInput(unit, inputs) &&
         std::ranges::all_of(Places(), [&unit](const Place& time) {
           return unit.Number(time) <= 0 || (unit.Known(time) && unit.Shown(time).shown.empty());
         });
}

}  // namespace advice
