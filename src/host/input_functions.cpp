#include "host/input_functions.h"

#include <algorithm>

#include "base/text.h"

namespace host {
namespace {

constexpr InputFunction kFunctions[] = {
    {kUnused, "", ""},
    {"SPACE_TEMP", "2,3,6", "STD_THERMISTOR"},
    {"RETURN_TEMP", "2,3,6", "STD_THERMISTOR"},
    {"SUPPLY_TEMP", "2,3,6", "STD_THERMISTOR"},
    {"OUTDOOR_TEMP", "2,3,6", "STD_THERMISTOR"},
    {"MIXED_AIR_TEMP", "2,3,6", "STD_THERMISTOR"},
    {"WATER_TEMP", "2,3,6", "STD_THERMISTOR"},
    {"SETPOINT", "2,3,7", "SETPOINT_OFFSET"},
    {"SPACE_ENTHALPY", "2,3", ""},
    {"OUTDOOR_ENTHALPY", "2,3", ""},
    {"SPACE_HUMIDITY", "2", ""},
    {"OUTDOOR_HUMIDITY", "2", ""},
    {"CO2_LEVEL", "2", ""},
    {"SUPPLY_PRESSURE", "2", ""},
    {"DUCT_PRESSURE", "2", ""},
    {"AUXILIARY_ALARM", "2,3,4,6", "DIGITAL"},
    {"FAN_STATE", "2,4", "DIGITAL"},
    {"OCC_CONTACT", "4", "DIGITAL"},
    {"BYPASS_CONTACT", "4", "DIGITAL"},
    {"ECONO_ENABLE_CNTCT", "4", "DIGITAL"},
    {"EMERGENCY_CONTACT", "4", "DIGITAL"},
    {"MODE_SELECTOR", "5", "MULTI_LEVEL"},
};

// Configuration properties of an input.
constexpr int kSensorType = 2;
constexpr int kLinearScale = 4;
constexpr int kThermistorOffset = 6;
constexpr int kOffsetRange = 9;

struct DefaultRow {
  std::string_view function;
  std::string_view sensor;
  int number;
  std::string_view format;
  std::vector<double> values;
  std::string_view variableType;
};

// A room thermistor without correction; transmitters of 0 to 10 V over the range that is usual for the
// quantity; a setpoint adjuster of three degrees either way.
const DefaultRow kDefaults[] = {
    {"SPACE_TEMP", "STD_THERMISTOR", kThermistorOffset, "UCPTthermistorOffset#SI", {0}, "SNVT_temp_p"},
    {"SPACE_ENTHALPY", "LINEAR", kLinearScale, "UCPTsensorScale", {0, 10, 0, 100}, "SNVT_enthalpy"},
    {"SPACE_HUMIDITY", "LINEAR", kLinearScale, "UCPTsensorScale", {0, 10, 0, 100}, "SNVT_lev_percent"},
    {"CO2_LEVEL", "LINEAR", kLinearScale, "UCPTsensorScale", {0, 10, 0, 2000}, "SNVT_ppm"},
    {"SETPOINT", "SETPOINT_OFFSET", kOffsetRange, "UCPTsetpointOffsetRange#SI", {-3, 3}, "SNVT_temp_diff_p"},
};

}  // namespace

std::span<const InputFunction> InputFunctions() { return kFunctions; }

const InputFunction* FindInputFunction(std::string_view function) {
  const auto* found = std::ranges::find(kFunctions, function, &InputFunction::name);
  return found == std::end(kFunctions) ? nullptr : found;
}

std::optional<InputDefaults> DefaultsOf(std::string_view function, const base::Numbers& numbers) {
  const auto* row = std::ranges::find(kDefaults, function, &DefaultRow::function);
  if (row == std::end(kDefaults)) return std::nullopt;
  std::vector<std::string> texts;
  for (const double value : row->values) texts.push_back(numbers.Text(value, 1));
  return InputDefaults{{{kSensorType, "UCPTsensorType", std::string(row->sensor)},
                        {row->number, row->format, base::Join(texts, " ")}},
                       row->variableType};
}

}  // namespace host
