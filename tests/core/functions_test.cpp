// Controls can be used or not by the functions that are chosen for inputs and outputs: at once, when their
// page is shown, and when it is read again from the device.
#include "tool_test.h"

namespace {

/// Functions chosen one after the other, and the groups that can be used then ("cooling, dampers").
enum Connector { kInput, kOutput };
struct Step {
  std::vector<std::tuple<Connector, int, const char*>> choices;
  const char* usable;
};
/// Controls and arrays of a page that can be used or not together: what they are for, and their names.
struct PageFunctions {
  const char* name;
  std::vector<std::pair<std::string, std::string>> groups;
  std::vector<Step> steps;
};
const PageFunctions kPages[] = {
    {"fHeatCool",
     {{"stage", "chkHeatStage"},
      {"cooling", "txtCoolOn lblCoolOn lblSec(0) txtCoolOFF lblCoolOFF lblSec(1)"},
      {"mechanical", "txtMechCoolLL lblMechCool lblUnits(9) fraMech"},
      {"heating", "txtminHeatPeriod lblHeat lblHeatUnit"},
      {"reversing", "FrameRversingValve OptionNormallyCool OptionNormallyHeat"},
      {"others", "txtSetPoint txtMechCoolDelay chkMechAndEco txtMaxDischHeat txtMinDischCool"}},
     {{{}, "others"},
      {{{kOutput, 1, "HEATING_1"}}, "heating, others"},
      {{{kOutput, 2, "HEATING_MOD"}}, "stage, heating, others"},
      {{{kOutput, 1, "HEAT_VALVE_OPEN"}, {kOutput, 3, "HEAT_VALVE_CLOSE"}}, "others"},
      {{{kOutput, 7, "HEAT_COOL_VALVE_MOD"}}, "mechanical, others"},
      {{{kOutput, 7, "COOLING_VALVE_MOD"}}, "mechanical, others"},
      {{{kOutput, 7, "COOLING_1"}}, "cooling, mechanical, others"},
      {{{kOutput, 6, "REVERSING_VALVE"}}, "cooling, mechanical, reversing, others"},
      {{{kOutput, 6, "UNASSIGNED"}, {kOutput, 7, "FRESH_AIR_DAMPER_MOD"}}, "others"}}},
    {"fFanValve",
     {{"heat time", "txtHeat lblHeatSec"},
      {"cool time", "txtCool"},
      {"heat minimum", "txtMinHeatValue"},
      {"cool minimum", "txtCoolValue"},
      {"positions", "fraPosition"},
      {"fan speed", "txtFanSpeed"},
      {"fan state", "fraState optState txtThresHold"}},
     {{{}, ""},
      // Half of the pair is enough; output 7 is not looked at.
      {{{kOutput, 1, "HEAT_VALVE_CLOSE"}}, "heat time, heat minimum, positions"},
      {{{kOutput, 1, "HEAT_COOL_VALVE_OPEN"}}, "heat time, cool time, heat minimum, cool minimum, positions"},
      {{{kOutput, 1, "UNASSIGNED"}, {kOutput, 7, "COOL_VALVE_OPEN"}}, ""},
      {{{kOutput, 7, "HEAT_COOL_VALVE_MOD"}}, "heat minimum, cool minimum, positions"},
      {{{kOutput, 7, "COOLING_VALVE_MOD"}}, "cool minimum, positions"},
      {{{kOutput, 6, "FAN_SPEED_MOD"}}, "cool minimum, positions, fan speed"},
      {{{kInput, 2, "FAN_STATE"}}, "cool minimum, positions, fan speed, fan state"}}},
    {"fPID",
     {{"temperature", "txtPIDTemp txtPIDTempDisch"},
      {"CO2", "txtCO2Level lblCo"},
      {"humidity", "txtHumidity lblHumid"},
      {"pressure", "txtPressure lblPress lblPressure lblPressD"}},
     {{{}, "temperature"},
      {{{kOutput, 7, "BYPASS_DAMPER_MOD"}}, "temperature, pressure"},
      {{{kOutput, 6, "FRESH_AIR_DAMPER_MOD"}}, "temperature, CO2, pressure"},
      {{{kOutput, 5, "HUMIDIFIER_ON_OFF"}}, "temperature, CO2, humidity, pressure"},
      {{{kOutput, 5, "DEHUMIDIFIER_ON_OFF"}}, "temperature, CO2, humidity, pressure"},
      {{{kOutput, 7, "UNASSIGNED"}}, "temperature, CO2, humidity"}}},
    {"fGeneral",
     {{"damper", "txtOutdoor"},
      {"pressure", "txtDuctPressure"},
      {"humidity off", "txtHumidityMin"},
      {"emergency", "optEmergency"},
      {"temperature", "optTemp"},
      {"free cooling", "fraMix fraCo2 fraEcono"},
      {"humidity", "txtHumidity"},
      {"bypass", "txtBypassTime"}},
     {{{}, "bypass"},
      {{{kOutput, 1, "FRESH_AIR_DAMPER_MOD"}}, "damper, free cooling, bypass"},
      {{{kOutput, 2, "BYPASS_DAMPER_MOD"}}, "damper, pressure, free cooling, bypass"},
      {{{kOutput, 3, "DEHUMIDIFIER_MOD"}}, "damper, pressure, free cooling, bypass"},
      {{{kOutput, 3, "HUMIDIFIER_MOD"}}, "damper, pressure, free cooling, humidity, bypass"},
      {{{kOutput, 3, "DEHUMIDIFIER_ON_OFF"}},
       "damper, pressure, humidity off, free cooling, humidity, bypass"},
      {{{kInput, 4, "EMERGENCY_CONTACT"}, {kInput, 5, "RETURN_TEMP"}},
       "damper, pressure, humidity off, emergency, temperature, free cooling, humidity, bypass"}}},
};

struct Functions : tests::ToolTest {
  std::string Usable(const PageFunctions& page) {
    std::string usable;
    for (const auto& [group, names] : page.groups) {
      const auto controls = base::Split(names, " ");
      const bool first = AllUsable(std::string(page.name) + "." + controls[0]);
      for (const std::string& name : controls) {
        for (const ui::Control* control : Page(page.name).Group(name))
          EXPECT_EQ(control->Usable(), first) << control->Name();
      }
      if (first) usable += (usable.empty() ? "" : ", ") + group;
    }
    return usable;
  }
};

TEST_F(Functions, DecideWhatCanBeUsed) {
  for (const PageFunctions& page : kPages) {
    SCOPED_TRACE(page.name);
    if (!program.Window()) Open(tests::kUnassigned);
    for (int output = 7; output > 0; --output) AssignOutput(output, "UNASSIGNED");
    Click("cmdApply");
    for (const Step& step : page.steps) {
      for (const auto& [connector, number, function] : step.choices) {
        connector == kInput ? AssignInput(number, function) : AssignOutput(number, function);
      }
      EXPECT_EQ(Usable(page), step.usable) << "as soon as chosen";
      const auto calls = building.Faults().Total();
      ChoosePage(page.name);
      EXPECT_EQ(Usable(page), step.usable) << "when shown";
      EXPECT_EQ(building.Faults().Total(), calls) << "the host is asked nothing";
      Click("cmdApply");
      EXPECT_EQ(Usable(page), step.usable) << "when read again";
    }
  }
}

}  // namespace
