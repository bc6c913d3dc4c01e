// Sensors behind the hardware inputs, and where the unit stands.
#include <algorithm>
#include <iterator>

#include "advice/places.h"
#include "advice/rules.h"
#include "base/text.h"
#include "host/input_functions.h"

namespace advice {
namespace {

using enum Severity;

constexpr std::string_view kDisconnected = "DISCONNECTED";

/// What else is as good as the usual sensor, and the types in which the value is published, by function. The
/// first is the usual one.
struct Usual {
  std::string_view function;
  std::string_view otherSensor;
  std::string_view types;
};
constexpr std::string_view kTemperatures = "SNVT_temp_p,SNVT_temp,SNVT_temp_f";
constexpr std::string_view kPressures = "SNVT_press_p,SNVT_press_f";
constexpr std::string_view kContacts = "SNVT_switch,SNVT_lev_disc";
constexpr Usual kUsual[] = {
    {"SPACE_TEMP", "", kTemperatures},
    {"RETURN_TEMP", "", kTemperatures},
    {"SUPPLY_TEMP", "", kTemperatures},
    {"OUTDOOR_TEMP", "", kTemperatures},
    {"MIXED_AIR_TEMP", "", kTemperatures},
    {"WATER_TEMP", "", kTemperatures},
    {"SETPOINT", "", "SNVT_temp_diff_p,SNVT_temp_p"},
    {"SPACE_ENTHALPY", "", "SNVT_enthalpy"},
    {"OUTDOOR_ENTHALPY", "", "SNVT_enthalpy"},
    {"SPACE_HUMIDITY", "", "SNVT_lev_percent"},
    {"OUTDOOR_HUMIDITY", "", "SNVT_lev_percent"},
    {"CO2_LEVEL", "", "SNVT_ppm"},
    {"SUPPLY_PRESSURE", "", kPressures},
    {"DUCT_PRESSURE", "", kPressures},
    {"AUXILIARY_ALARM", "", kContacts},
    {"FAN_STATE", "LINEAR", "SNVT_switch,SNVT_lev_disc,SNVT_amp,SNVT_amp_ac,SNVT_amp_f"},  // a current, too
    {"OCC_CONTACT", "", "SNVT_switch,SNVT_lev_disc,SNVT_occupancy"},
    {"BYPASS_CONTACT", "", kContacts},
    {"ECONO_ENABLE_CNTCT", "", kContacts},
    {"EMERGENCY_CONTACT", "", kContacts},
    {"MODE_SELECTOR", "", "SNVT_hvac_mode"},
};

struct HardwareInput {
  const Unit& unit;
  std::size_t i;

  std::string_view Function() const { return unit.InputFunction(i); }
  bool IsUsed() const { return !Function().empty() && Function() != host::kUnused; }
  Place FunctionPlace() const { return InputFunctionAt(i); }
  Place SensorPlace() const { return {kInputs, At("UCPTsensorType", i)}; }
  Place TypePlace() const { return {kInputs, At("nvoHwInput" + std::to_string(i + 1), i)}; }
  std::string Sensor() const { return base::Upper(unit.Shown(SensorPlace()).shown); }
  Value Number() const { return Text(std::to_string(i + 1)); }
  const Usual* Row() const {
    const auto* row = std::ranges::find(kUsual, Function(), &Usual::function);
    return row == std::end(kUsual) ? nullptr : row;
  }
};

template <class Work>
void EachInput(const Unit& unit, Work work) {
  for (std::size_t i = 0; i < host::DeviceObjects::kInputs; ++i) work(HardwareInput{unit, i});
}

void NoSensor(const Unit& unit, Report& found) {
  EachInput(unit, [&found](const HardwareInput& input) {
    if (input.IsUsed() && input.Sensor() == kDisconnected)
      found({input.FunctionPlace(), input.SensorPlace()}, {input.Number(), Text(input.Function())});
  });
}

void UnusualSensor(const Unit& unit, Report& found) {
  EachInput(unit, [&found](const HardwareInput& input) {
    const Usual* row = input.Row();
    const std::string sensor = input.Sensor();
    if (!row || sensor.empty() || sensor == kDisconnected) return;
    const std::string_view usual = host::FindInputFunction(row->function)->usualSensor;
    if (!usual.empty() && sensor != usual && sensor != row->otherSensor)
      found({input.FunctionPlace(), input.SensorPlace()},
            {input.Number(), Text(input.Function()), Text(sensor), Text(usual)});
  });
}

void UnusualType(const Unit& unit, Report& found) {
  EachInput(unit, [&](const HardwareInput& input) {
    const Usual* row = input.Row();
    const std::string type = unit.Shown(input.TypePlace()).shown;
    if (!row || type.empty()) return;
    const std::vector<std::string> usual = base::Split(row->types, ",");
    if (std::ranges::find(usual, type) == usual.end())
      found({input.FunctionPlace(), input.TypePlace()},
            {input.Number(), Text(input.Function()), Text(type), Text(usual.front())});
  });
}

void SensorOfNothing(const Unit& unit, Report& found) {
  EachInput(unit, [&found](const HardwareInput& input) {
    const std::string sensor = input.Sensor();
    if (input.Function() == host::kUnused && !sensor.empty() && sensor != kDisconnected)
      found({input.FunctionPlace(), input.SensorPlace()}, {input.Number(), Text(sensor)});
  });
}

void NoLocation(const Unit& unit, Report& found) {
  if (unit.Known(kLocation) && base::Trim(unit.Shown(kLocation).shown).empty()) found({kLocation});
}

constexpr Check kRules[] = {
    {{"input-without-sensor", kFault, "Input %s1% (%s2%) has no sensor configured.",
      "A function gets no value from a disconnected input.", "Configure the sensor of the input.", kPractice},
     NoSensor},
    {{"sensor-unusual", kHint, "Input %s1% (%s2%) has a sensor of the type %s3%; usual is %s4%.",
      "Another type gives wrong values unless it is wired and scaled for it.",
      "Check the sensor and its configuration.", kPractice},
     UnusualSensor},
    {{"variable-type-unusual", kHint, "Input %s1% (%s2%) is published as %s3%; usual is %s4%.",
      "Whoever is bound to the variable reads the value in a wrong unit.",
      "Choose the type of the variable in the configuration of the sensor.", kPractice},
     UnusualType},
    {{"sensor-of-nothing", kHint, "Input %s1% is unused, but a sensor (%s2%) is configured.",
      "A sensor that nobody uses mostly means a function that was forgotten.",
      "Give the input its function, or disconnect its sensor.", kPractice},
     SensorOfNothing},
    {{"no-location", kHint, "The unit has no location.",
      "Whoever comes later finds the unit by its location.", "Type where the unit stands.", kPractice},
     NoLocation},
};

}  // namespace

std::span<const Check> InputRules() { return kRules; }

}  // namespace advice
