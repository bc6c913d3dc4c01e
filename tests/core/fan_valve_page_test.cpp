#include "base/record.h"
#include "tool_test.h"

namespace {

struct FanValveTest : tests::ToolTest {
  bool Enabled(const std::string& name) { return AllUsable("fFanValve." + name); }
};

TEST_F(FanValveTest, BoxesAndOptionsAreSavedAndNothingElse) {
  Open(tests::kAssigned);
  const tests::BoxCase cases[] = {
      {"txtHeat", 23, "UCPTheatValveDriveTime", 1, "61.5", "61.5"},
      {"txtCool", 24, "UCPTcoolValveDriveTime", 1, "62", "62.0"},
      {"txtMinHeatValue", 25, "UCPTheatValveMinPos", 3, "11", "11.000"},
      {"txtCoolValue", 26, "UCPTcoolValveMinPos", 3, "12.5", "12.500"},
      {"txtFanPeriod", 22, "UCPTminFanOnOffPeriod", 0, "7", "7"},
      {"txtFanSpeed", 28, "UCPTminFanSpeed", 3, "33", "33.000"},
      {"txtThresHold", 29, "UCPTfanCurrentThreshold", 1, "1.5", "1.5"},
  };
  Unlock("fFanValve");  // a disabled box is written all the same
  base::Record options(Stored(tests::kAssigned, 48, "UCPTobjectOptions", 0));
  TypeInto("fFanValve", cases);
  Find<ui::CheckBox>("fFanValve.chkFan").Click();
  Find<ui::OptionButton>("fFanValve.optState(0)").Click();
  ApplyAndCheck(cases);
  options.Set(63, options.Field(63) == "1" ? "0" : "1");
  options.Set(53, "0");
  EXPECT_EQ(Stored(tests::kAssigned, 48, "UCPTobjectOptions", 0), options.Join());
}

TEST_F(FanValveTest, ControlsFollowTheChosenFunctionsBeforeTheyAreSaved) {
  Open(tests::kUnassigned);
  const struct {
    int output;
    const char* function;
    bool heatTime, coolTime, heatMinimum, coolMinimum, fanSpeed;
  } steps[] = {
      {1, "UNASSIGNED", false, false, false, false, false},
      {1, "HEAT_VALVE_CLOSE", true, false, true, false, false},  // one half of the pair is enough
      {1, "HEAT_COOL_VALVE_OPEN", true, true, true, true, false},
      {1, "UNASSIGNED", false, false, false, false, false},
      {7, "COOL_VALVE_OPEN", false, false, false, false, false},  // output 7 is not looked at
      {7, "HEAT_COOL_VALVE_MOD", false, false, true, true, false},
      {7, "COOLING_VALVE_MOD", false, false, false, true, false},
      {6, "FAN_SPEED_MOD", false, false, false, true, true},
  };
  for (const auto& step : steps) {
    AssignOutput(step.output, step.function);
    ChoosePage("fFanValve");  // the page decides again when it comes into view
    const std::pair<const char*, bool> expected[] = {
        {"txtHeat", step.heatTime},         {"lblHeatSec", step.heatTime},
        {"txtCool", step.coolTime},         {"txtMinHeatValue", step.heatMinimum},
        {"txtCoolValue", step.coolMinimum}, {"fraPosition", step.heatMinimum || step.coolMinimum},
        {"txtFanSpeed", step.fanSpeed}};
    for (const auto& [name, enabled] : expected)
      EXPECT_EQ(Enabled(name), enabled) << step.function << " " << name;
  }
}

TEST_F(FanValveTest, TheInputStateIsForAFanStateByCurrent) {
  tests::Tool other;
  other.Open(tests::kUnassigned);
  EXPECT_FALSE(other.AllUsable("fFanValve.txtThresHold"));
  Open(tests::kPressure);  // input 2 is FAN_STATE with a linear sensor
  EXPECT_TRUE(Enabled("optState"));
  EXPECT_TRUE(Enabled("txtThresHold"));
  AssignInput(2, "UNUSED");
  EXPECT_FALSE(Enabled("optState"));
  EXPECT_FALSE(Enabled("txtThresHold"));
  AssignInput(2, "FAN_STATE");
  ChoosePage("fFanValve");
  EXPECT_TRUE(Enabled("fraState"));
}

}  // namespace
