#include "configuration/record_places.h"

#include <algorithm>

#include "base/text.h"

namespace configuration::record {
namespace {

constexpr FunctionPlace kFunctions[] = {
    {"FAN_ON_OFF", Place::kFan, "ON/OFF"},
    {"FAN_SPEED_MOD", Place::kFan, "Speed"},
    {"HEATING_1", Place::kHeating, "Stage 1"},
    {"HEATING_2", Place::kHeating, "Stage 2"},
    {"HEATING_3", Place::kHeating, "Stage 3"},
    {"HEATING_4", Place::kHeating, "Stage 4"},
    {"HEATING_MOD", Place::kHeating, "Modulating"},
    {"HEAT_VALVE_OPEN", Place::kHeating, "Valve open"},
    {"HEAT_VALVE_CLOSE", Place::kHeating, "Valve close"},
    {"HEATING_VALVE_MOD", Place::kHeating, "Valve"},
    {"COOLING_1", Place::kCooling, "Stage 1"},
    {"COOLING_2", Place::kCooling, "Stage 2"},
    {"COOLING_3", Place::kCooling, "Stage 3"},
    {"COOLING_4", Place::kCooling, "Stage 4"},
    {"COOL_VALVE_OPEN", Place::kCooling, "Valve open"},
    {"COOL_VALVE_CLOSE", Place::kCooling, "Valve close"},
    {"COOLING_VALVE_MOD", Place::kCooling, "Valve"},
    {"REVERSING_VALVE", Place::kCooling, "Reversing valve"},
    {"HEAT_COOL_VALVE_OPEN", Place::kCooling, "Heat/cool valve open"},
    {"HEAT_COOL_VALVE_CLOSE", Place::kCooling, "Heat/cool valve close"},
    {"HEAT_COOL_VALVE_MOD", Place::kCooling, "Heat/cool valve"},
    {"HUMIDIFIER_ON_OFF", Place::kHumidifier, "ON/OFF"},
    {"HUMIDIFIER_MOD", Place::kHumidifier, "Modulating"},
    {"DEHUMIDIFIER_ON_OFF", Place::kDehumidifier, "ON/OFF"},
    {"DEHUMIDIFIER_MOD", Place::kDehumidifier, "Modulating"},
    {"MIN_FRESH_AIR_ENABLE", Place::kDamper, "Min fresh air"},
    {"ECONOMIZER_ENABLE", Place::kDamper, "Economizer"},
    {"FRESH_AIR_DAMPER_OPEN", Place::kDamper, "Damper open"},
    {"FRESH_AIR_DAMPER_CLOSE", Place::kDamper, "Damper close"},
    {"FRESH_AIR_DAMPER_MOD", Place::kDamper, "Modulating"},
    {"BYPASS_DAMPER_MOD", Place::kBypass, "Modulating"},

    {"SPACE_TEMP", Place::kSpace, "Temperature"},
    {"SPACE_ENTHALPY", Place::kSpace, "Enthalpy"},
    {"SPACE_HUMIDITY", Place::kSpace, "Humidity"},
    {"CO2_LEVEL", Place::kSpace, "CO2 Level"},
    {"SETPOINT", Place::kSpace, "Setpoint adjuster"},
    {"RETURN_TEMP", Place::kReturn, "Temperature"},
    {"MIXED_AIR_TEMP", Place::kMixed, "Temperature"},
    {"SUPPLY_TEMP", Place::kSupply, "Temperature"},
    {"SUPPLY_PRESSURE", Place::kSupply, "Pressure"},
    {"DUCT_PRESSURE", Place::kSupply, "Duct pressure"},
    {"OUTDOOR_TEMP", Place::kOutdoor, "Temperature"},
    {"OUTDOOR_ENTHALPY", Place::kOutdoor, "Enthalpy"},
    {"OUTDOOR_HUMIDITY", Place::kOutdoor, "Humidity"},
    {"WATER_TEMP", Place::kWater, "Temperature"},
    {"FAN_STATE", Place::kFanState, "Feedback"},
    {"AUXILIARY_ALARM", Place::kContacts, "Auxiliary alarm"},
    {"OCC_CONTACT", Place::kContacts, "Occupancy"},
    {"BYPASS_CONTACT", Place::kContacts, "Bypass"},
    {"ECONO_ENABLE_CNTCT", Place::kContacts, "Economizer"},
    {"EMERGENCY_CONTACT", Place::kContacts, "Emergency"},
    {"MODE_SELECTOR", Place::kContacts, "Mode selector"},
};
constexpr std::string_view kNone[] = {"", "UNUSED", "UNASSIGNED"};

}  // namespace

const FunctionPlace* PlaceOf(std::string_view function) {
  const auto* found = std::ranges::find(kFunctions, base::Upper(function), &FunctionPlace::function);
  return found == std::end(kFunctions) ? nullptr : found;
}

bool IsUnassigned(std::string_view function) {
  return std::ranges::find(kNone, base::Upper(function)) != std::end(kNone);
}

}  // namespace configuration::record
