// Where the rules find their values: page class, control and unit of each field that a rule looks at.
#pragma once

#include <array>
#include <string_view>

#include "advice/unit.h"

namespace advice {

inline constexpr std::string_view kOutputs = "fControlOutput", kInputs = "fHardwareInput",
                                  kHeatCool = "fHeatCool", kFanValve = "fFanValve", kGeneral = "fGeneral",
                                  kOptions = "fOptions", kLoops = "fPID", kAlarms = "fAlarm",
                                  kReceived = "fNetworkInput", kSent = "fNetworkOutput";

// Contents of flags and option groups.
inline constexpr std::string_view kUnchecked = "0", kChecked = "1", kFirstOption = "0", kSecondOption = "1";

inline Place OutputFunctionAt(std::size_t i) { return {kOutputs, At("cboOutput", i)}; }
inline Place InputFunctionAt(std::size_t i) { return {kInputs, At("cboInput", i)}; }

inline const Place kLocation{"fMain", "txtLocation"};

// Heating and cooling. Setpoints by period: occupied, standby, unoccupied.
inline constexpr std::size_t kPeriods = 3;
inline constexpr const char* kPeriodNames[] = {"Occupied/Bypass", "Standby", "Unoccupied"};
inline Place CoolingAt(std::size_t period) {
  return {kHeatCool, At("txtSetPoint", period), Quantity::kTemperature};
}
inline Place HeatingAt(std::size_t period) { return CoolingAt(kPeriods + period); }
inline const Place kMaxSupply{kHeatCool, "txtMaxDischHeat", Quantity::kTemperature},
    kMinSupply{kHeatCool, "txtMinDischCool", Quantity::kTemperature},
    kEconomizerLimit{kHeatCool, "txtfreeCoolDegree", Quantity::kTemperature},
    kEnthalpyLimit{kHeatCool, "txtfreeCooling", Quantity::kEnthalpy},
    kCoolOn{kHeatCool, "txtCoolOn", Quantity::kPlain, "sec"},
    kCoolOff{kHeatCool, "txtCoolOFF", Quantity::kPlain, "sec"},
    kChangeover{kHeatCool, "txtChngeOverDelay", Quantity::kPlain, "min"},
    kIntegrated{kHeatCool, "chkMechAndEco"};

// Fan and valves.
inline const Place kHeatDrive{kFanValve, "txtHeat", Quantity::kPlain, "sec"},
    kCoolDrive{kFanValve, "txtCool", Quantity::kPlain, "sec"},
    kFanSpeed{kFanValve, "txtFanSpeed", Quantity::kPlain, "%"};

// General settings.
inline const Place kBypassTime{kGeneral, "txtBypassTime", Quantity::kPlain, "min"},
    kCO2Limit{kGeneral, "txtCO2", Quantity::kPlain, "ppm"},
    kMixedLimit{kGeneral, "txtAirLowLimit", Quantity::kTemperature},
    kMinDamper{kGeneral, "txtOutdoor", Quantity::kPlain, "%"},
    kMaxDamper{kGeneral, "txtOutdoorMax", Quantity::kPlain, "%"},
    kDamperDrive{kGeneral, "txtFreshAir", Quantity::kPlain, "sec"}, kDamperCloses{kGeneral, "chkFreshAir"},
    kEconomizer{kGeneral, "optEcono"}, kControlledBy{kGeneral, "optTemp"};

// Options.
inline const Place kStartTime{kOptions, "txtStartTime", Quantity::kPlain, "min"},
    kCoolStart{kOptions, "chkOptimum(1)"}, kHeatStart{kOptions, "chkOptimum(2)"},
    kAveraging{kOptions, "chkEnable"}, kAverageOf{kOptions, "optAverage"},
    kAlternates{kOptions, "chkAlternate"}, kCycle{kOptions, "txtHeatCool", Quantity::kPlain, "min"};

inline Place AlarmAt(std::size_t box, Quantity quantity = Quantity::kPlain, const char* unit = "") {
  return {kAlarms, At("txtAlarm", box), quantity, unit};
}

/// Variables in the order of the boxes of their page.
inline constexpr std::array<const char*, 23> kReceivedVariables = {
    "nviOccCmd",      "nviApplicMode",   "nviHotWater",   "nviOutdoorRH",   "nviOutdoorEnth",
    "nviSetPtOffset", "nviShedding",     "nviSlave",      "nviWaterTemp",   "nviMixedAirTemp",
    "nviReturnTemp",  "nviTerminalLoad", "nviCO2",        "nviFanState",    "nviDuctPressure",
    "nviEconoEnable", "nviEmergCmd",     "nviSupplyTemp", "nviSupplyPress", "nviSpaceTemp",
    "nviSpaceRH",     "nviSpaceEnth",    "nviOutdoorTemp"};
inline Place ReceiveTimeAt(std::size_t i) { return {kReceived, At("txtnvi", i), Quantity::kPlain, "sec"}; }

}  // namespace advice
