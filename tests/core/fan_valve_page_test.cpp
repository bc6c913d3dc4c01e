#include "tool_test.h"

namespace {

struct FanValveTest : tests::ToolTest {
  bool Enabled(const std::string& name) { return AllUsable("fFanValve." + name); }
};

TEST_F(FanValveTest, ControlsFollowTheChosenFunctionsBeforeTheyAreSaved) {
  Open(tests::kUnassigned);
  const tests::Groups groups = {{"heat time", "txtHeat lblHeatSec"}, {"cool time", "txtCool"},
                                {"heat minimum", "txtMinHeatValue"}, {"cool minimum", "txtCoolValue"},
                                {"positions", "fraPosition"},        {"fan speed", "txtFanSpeed"}};
  using enum tests::Connector;
  const tests::FunctionStep steps[] = {
      {{{kOutput, 1, "UNASSIGNED"}}, ""},
      {{{kOutput, 1, "HEAT_VALVE_CLOSE"}},
       "heat time, heat minimum, positions"},  // half of the pair is enough
      {{{kOutput, 1, "HEAT_COOL_VALVE_OPEN"}}, "heat time, cool time, heat minimum, cool minimum, positions"},
      {{{kOutput, 1, "UNASSIGNED"}}, ""},
      {{{kOutput, 7, "COOL_VALVE_OPEN"}}, ""},  // output 7 is not looked at
      {{{kOutput, 7, "HEAT_COOL_VALVE_MOD"}}, "heat minimum, cool minimum, positions"},
      {{{kOutput, 7, "COOLING_VALVE_MOD"}}, "cool minimum, positions"},
      {{{kOutput, 6, "FAN_SPEED_MOD"}}, "cool minimum, positions, fan speed"}};
  CheckSteps("fFanValve", groups, steps);
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
  building.Faults().Fail({.once = false});
  ChoosePage("fFanValve");
  EXPECT_TRUE(Enabled("fraState"));
  EXPECT_TRUE(Messages().empty()) << "the host is asked nothing, so nothing can fail here";
}

}  // namespace
