#include "simulator/controls/input_functions.h"

#include <algorithm>

#include "base/text.h"

namespace controls {
namespace {

constexpr std::string_view kTemperature = "SNVT_temp_p SNVT_temp SNVT_temp_f";
constexpr std::string_view kPressure = "SNVT_press_p SNVT_press_f";
constexpr std::string_view kContact = "SNVT_switch SNVT_lev_disc";
constexpr std::string_view kOccupancy = "SNVT_occupancy SNVT_switch SNVT_lev_disc";

constexpr InputFunction kFunctions[] = {
    {"SPACE_TEMP", "2,3,6", "°C", kTemperature},
    {"RETURN_TEMP", "2,3,6", "°C", kTemperature},
    {"SUPPLY_TEMP", "2,3,6", "°C", kTemperature},
    {"OUTDOOR_TEMP", "2,3,6", "°C", kTemperature},
    {"MIXED_AIR_TEMP", "2,3,6", "°C", kTemperature},
    {"WATER_TEMP", "2,3,6", "°C", kTemperature},
    {"SETPOINT", "2,3,7", "°C", "SNVT_temp_p SNVT_temp_diff_p SNVT_temp SNVT_temp_f"},
    {"SPACE_ENTHALPY", "2,3", "kJ/kg", "SNVT_enthalpy"},
    {"OUTDOOR_ENTHALPY", "2,3", "kJ/kg", "SNVT_enthalpy"},
    {"SPACE_HUMIDITY", "2", "% RH", "SNVT_lev_percent"},
    {"OUTDOOR_HUMIDITY", "2", "% RH", "SNVT_lev_percent"},
    {"CO2_LEVEL", "2", "ppm", "SNVT_ppm"},
    {"SUPPLY_PRESSURE", "2", "Pa", kPressure},
    {"DUCT_PRESSURE", "2", "Pa", kPressure},
    {"AUXILIARY_ALARM", "2,3,4,6", "",
     "SNVT_switch SNVT_lev_disc SNVT_lev_percent SNVT_temp_p SNVT_count_inc"},
    {"FAN_STATE", "2,4", "A", "SNVT_switch SNVT_lev_disc SNVT_amp SNVT_amp_ac SNVT_amp_f"},
    {"OCC_CONTACT", "4", "", kOccupancy},
    {"BYPASS_CONTACT", "4", "", kOccupancy},
    {"ECONO_ENABLE_CNTCT", "4", "", kContact},
    {"EMERGENCY_CONTACT", "4", "", kContact},
    {"MODE_SELECTOR", "5", "", "SNVT_hvac_mode SNVT_count_inc"},
};

struct TypeMeaning {
  std::string_view type;
  std::string_view meaning;
};

constexpr TypeMeaning kMeanings[] = {
    {"SNVT_temp_p", "temperature in steps of 0.01 °C"},
    {"SNVT_temp_diff_p", "temperature difference in steps of 0.01 °C"},
    {"SNVT_temp", "temperature in steps of 0.1 °C"},
    {"SNVT_temp_f", "temperature as a real number"},
    {"SNVT_ppm", "concentration in parts per million"},
    {"SNVT_enthalpy", "enthalpy in steps of 0.01 kJ/kg"},
    {"SNVT_press_p", "pressure in steps of 1 Pa"},
    {"SNVT_press_f", "pressure as a real number"},
    {"SNVT_switch", "percentage and on/off state"},
    {"SNVT_amp", "current in steps of 0.1 A"},
    {"SNVT_amp_ac", "alternating current in steps of 1 A"},
    {"SNVT_amp_f", "current as a real number"},
    {"SNVT_lev_disc", "off, low, medium, high, on"},
    {"SNVT_lev_percent", "percentage in steps of 0.005 %"},
    {"SNVT_hvac_mode", "operating mode"},
    {"SNVT_occupancy", "occupied, unoccupied, bypass, standby"},
    {"SNVT_count_inc", "count"},
};

std::string WithoutBlanks(std::string_view text) { return base::ReplaceAll(text, " ", ""); }

}  // namespace

std::vector<const InputFunction*> FunctionsFor(std::string_view stored, std::string_view choices) {
  const std::string list = WithoutBlanks(choices);
  std::vector<const InputFunction*> functions;
  for (const InputFunction& function : kFunctions) {
    if (function.choices != list) continue;
    if (base::EqualsNoCase(function.name, stored)) return {&function};
    functions.push_back(&function);
  }
  return functions;
}

std::string UnitOf(const std::vector<const InputFunction*>& functions) {
  if (functions.empty()) return {};
  const std::string_view unit = functions.front()->unit;
  const bool shared =
      std::ranges::all_of(functions, [unit](const InputFunction* other) { return other->unit == unit; });
  return shared ? std::string(unit) : std::string();
}

std::string_view Meaning(std::string_view type) {
  const auto found = std::ranges::find(kMeanings, type, &TypeMeaning::type);
  return found == std::end(kMeanings) ? std::string_view() : found->meaning;
}

}  // namespace controls
