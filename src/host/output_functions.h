// The functions that a hardware output can be given, by the names that the device exchanges. Compared in
// upper case.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/// How an output with a function is driven; the numbers are those of the device's type definition.
enum class SignalClass { kNone = 0, kOnOff = 1, kModulating = 6 };

inline constexpr std::string_view kUnassigned = "UNASSIGNED";

inline constexpr std::array<std::string_view, 32> kOutputFunctions = {
    kUnassigned,
    "FAN_ON_OFF",
    "HEATING_1",
    "HEATING_2",
    "HEATING_3",
    "HEATING_4",
    "COOLING_1",
    "COOLING_2",
    "COOLING_3",
    "COOLING_4",
    "REVERSING_VALVE",
    "HUMIDIFIER_ON_OFF",
    "DEHUMIDIFIER_ON_OFF",
    "MIN_FRESH_AIR_ENABLE",
    "ECONOMIZER_ENABLE",
    "HEAT_VALVE_OPEN",
    "HEAT_VALVE_CLOSE",
    "COOL_VALVE_OPEN",
    "COOL_VALVE_CLOSE",
    "HEAT_COOL_VALVE_OPEN",
    "HEAT_COOL_VALVE_CLOSE",
    "FRESH_AIR_DAMPER_OPEN",
    "FRESH_AIR_DAMPER_CLOSE",
    "FAN_SPEED_MOD",
    "HEATING_MOD",
    "HEATING_VALVE_MOD",
    "COOLING_VALVE_MOD",
    "HEAT_COOL_VALVE_MOD",
    "HUMIDIFIER_MOD",
    "DEHUMIDIFIER_MOD",
    "FRESH_AIR_DAMPER_MOD",
    "BYPASS_DAMPER_MOD",
};

/// On/off for every on/off name, modulating for every modulating one, none for "UNASSIGNED" and unknown
/// names.
SignalClass GetOutputSignalClass(std::string_view function);

/// A function of a family that is switched on stage by stage.
struct Stage {
  std::string family;  // "HEATING_" or "COOLING_"
  int number;          // 1 to 4

  std::string Name(int other) const { return family + std::to_string(other); }
};

/// The stage that a function is, or nothing.
std::optional<Stage> StageOf(std::string_view function);

/// The signal types that an output's hardware can have.
inline constexpr std::string_view kDigital = "DIGITAL";
inline constexpr std::string_view kPwm = "PWM";
inline constexpr std::string_view kAnalog = "ANALOG_0_10V";

/// True when hardware with that signal type can drive a function of that class.
bool CanDrive(std::string_view signalType, SignalClass signalClass);

}  // namespace host
