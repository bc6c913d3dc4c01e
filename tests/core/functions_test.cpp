// Controls can be used or not by the functions that are chosen for inputs and outputs: at once, when their
// page is shown, and when it is read again from the device.
#include "tool_test.h"

namespace {

/// Functions chosen one after the other, and the groups that can be used then, each by its first name.
enum Connector { kInput, kOutput };
struct Step {
  std::vector<std::tuple<Connector, int, const char*>> choices;
  const char* usable;
};
/// Names of controls and arrays of a page that can be used or not together.
struct PageFunctions {
  const char* name;
  std::vector<const char*> groups;
  std::vector<Step> steps;
};
const PageFunctions kPages[] = {
    {"fHeatCool",
     {"chkHeatStage", "txtCoolOn lblCoolOn lblSec(0) txtCoolOFF lblCoolOFF lblSec(1)",
      "txtMechCoolLL lblMechCool lblUnits(9) fraMech", "txtminHeatPeriod lblHeat lblHeatUnit",
      "FrameRversingValve OptionNormallyCool OptionNormallyHeat",
      "txtSetPoint txtMechCoolDelay chkMechAndEco txtMaxDischHeat txtMinDischCool"},
     {{{}, "txtSetPoint"},
      {{{kOutput, 1, "HEATING_1"}}, "txtminHeatPeriod txtSetPoint"},
      {{{kOutput, 2, "HEATING_MOD"}}, "chkHeatStage txtminHeatPeriod txtSetPoint"},
      {{{kOutput, 1, "HEAT_VALVE_OPEN"}, {kOutput, 3, "HEAT_VALVE_CLOSE"}}, "txtSetPoint"},
      {{{kOutput, 7, "HEAT_COOL_VALVE_MOD"}}, "txtMechCoolLL txtSetPoint"},
      {{{kOutput, 7, "COOLING_VALVE_MOD"}}, "txtMechCoolLL txtSetPoint"},
      {{{kOutput, 7, "COOLING_1"}}, "txtCoolOn txtMechCoolLL txtSetPoint"},
      {{{kOutput, 6, "REVERSING_VALVE"}}, "txtCoolOn txtMechCoolLL FrameRversingValve txtSetPoint"},
      {{{kOutput, 6, "UNASSIGNED"}, {kOutput, 7, "FRESH_AIR_DAMPER_MOD"}}, "txtSetPoint"}}},
    {"fFanValve",
     {"txtHeat lblHeatSec", "txtCool", "txtMinHeatValue", "txtCoolValue", "fraPosition", "txtFanSpeed",
      "fraState optState txtThresHold"},
     {{{}, ""},
      // Half of the pair is enough; output 7 is not looked at.
      {{{kOutput, 1, "HEAT_VALVE_CLOSE"}}, "txtHeat txtMinHeatValue fraPosition"},
      {{{kOutput, 1, "HEAT_COOL_VALVE_OPEN"}}, "txtHeat txtCool txtMinHeatValue txtCoolValue fraPosition"},
      {{{kOutput, 1, "UNASSIGNED"}, {kOutput, 7, "COOL_VALVE_OPEN"}}, ""},
      {{{kOutput, 7, "HEAT_COOL_VALVE_MOD"}}, "txtMinHeatValue txtCoolValue fraPosition"},
      {{{kOutput, 7, "COOLING_VALVE_MOD"}}, "txtCoolValue fraPosition"},
      {{{kOutput, 6, "FAN_SPEED_MOD"}}, "txtCoolValue fraPosition txtFanSpeed"},
      {{{kInput, 2, "FAN_STATE"}}, "txtCoolValue fraPosition txtFanSpeed fraState"}}},
    {"fPID",
     {"txtPIDTemp txtPIDTempDisch", "txtCO2Level lblCo", "txtHumidity lblHumid",
      "txtPressure lblPress lblPressure lblPressD"},
     {{{}, "txtPIDTemp"},
      {{{kOutput, 7, "BYPASS_DAMPER_MOD"}}, "txtPIDTemp txtPressure"},
      {{{kOutput, 6, "FRESH_AIR_DAMPER_MOD"}}, "txtPIDTemp txtCO2Level txtPressure"},
      {{{kOutput, 5, "HUMIDIFIER_ON_OFF"}}, "txtPIDTemp txtCO2Level txtHumidity txtPressure"},
      {{{kOutput, 5, "DEHUMIDIFIER_ON_OFF"}}, "txtPIDTemp txtCO2Level txtHumidity txtPressure"},
      {{{kOutput, 7, "UNASSIGNED"}}, "txtPIDTemp txtCO2Level txtHumidity"}}},
    {"fGeneral",
     {"txtOutdoor", "txtDuctPressure", "txtHumidityMin", "optEmergency", "optTemp", "fraMix fraCo2 fraEcono",
      "txtHumidity", "txtBypassTime"},
     {{{}, "txtBypassTime"},
      {{{kOutput, 1, "FRESH_AIR_DAMPER_MOD"}}, "txtOutdoor fraMix txtBypassTime"},
      {{{kOutput, 2, "BYPASS_DAMPER_MOD"}}, "txtOutdoor txtDuctPressure fraMix txtBypassTime"},
      {{{kOutput, 3, "DEHUMIDIFIER_MOD"}}, "txtOutdoor txtDuctPressure fraMix txtBypassTime"},
      {{{kOutput, 3, "HUMIDIFIER_MOD"}}, "txtOutdoor txtDuctPressure fraMix txtHumidity txtBypassTime"},
      {{{kOutput, 3, "DEHUMIDIFIER_ON_OFF"}},
       "txtOutdoor txtDuctPressure txtHumidityMin fraMix txtHumidity txtBypassTime"},
      {{{kInput, 4, "EMERGENCY_CONTACT"}, {kInput, 5, "RETURN_TEMP"}},
       "txtOutdoor txtDuctPressure txtHumidityMin optEmergency optTemp fraMix txtHumidity txtBypassTime"}}},
};

struct Functions : tests::ToolTest {
  std::string Usable(const PageFunctions& page) {
    std::string usable;
    for (const char* group : page.groups) {
      const auto names = base::Split(group, " ");
      const bool first = AllUsable(std::string(page.name) + "." + names[0]);
      for (const std::string& name : names) {
        for (const ui::Control* control : Page(page.name).Group(name))
          EXPECT_EQ(control->Usable(), first) << control->Name();
      }
      if (first) usable += (usable.empty() ? "" : " ") + names[0];
    }
    return usable;
  }
};

TEST_F(Functions, DecideWhatCanBeUsed) {
  Open(tests::kUnassigned);
  for (const PageFunctions& page : kPages) {
    SCOPED_TRACE(page.name);
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
