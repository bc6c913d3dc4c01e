#include <gtest/gtest.h>

#include "base/record.h"
#include "tool_test.h"

namespace {

using tests::ToolTest;

TEST_F(ToolTest, PidHumidityIsForADehumidifierToo) {
  Open(tests::kUnassigned);
  AssignOutput(1, "DEHUMIDIFIER_ON_OFF");
  ChoosePage("fPID");
  EXPECT_TRUE(AllUsable("fPID.txtHumidity"));
}

TEST_F(ToolTest, PidLoopsAreUsableByAssignedFunction) {
  const tests::Groups groups = {{"temperature", "txtPIDTemp txtPIDTempDisch"},
                                {"CO2", "txtCO2Level lblCo"},
                                {"humidity", "txtHumidity lblHumid"},
                                {"pressure", "txtPressure lblPress lblPressure lblPressD"}};
  using enum tests::Connector;
  const tests::FunctionStep steps[] = {
      {{}, "temperature"},
      {{{kOutput, 7, "BYPASS_DAMPER_MOD"}}, "temperature, pressure"},
      {{{kOutput, 6, "FRESH_AIR_DAMPER_MOD"}}, "temperature, CO2, pressure"},
      {{{kOutput, 5, "HUMIDIFIER_ON_OFF"}}, "temperature, CO2, humidity, pressure"},
      {{{kOutput, 7, "UNASSIGNED"}}, "temperature, CO2, humidity"}};
  Open(tests::kUnassigned);
  CheckSteps("fPID", groups, steps);
}

TEST_F(ToolTest, PidRefreshDropsEditsOnlyWhenThereAreSome) {
  Open(tests::kAssigned);
  shell::ISubForm& page = *Main().Pages().FindPage("fPID");
  const std::string stored = Text("fPID.txtPIDTemp(2)");
  const auto calls = building.Faults().Total();
  page.RefreshPage();
  EXPECT_EQ(building.Faults().Total(), calls) << "nothing to read";
  Type("fPID.txtPIDTemp(2)", "99");
  page.RefreshPage();
  EXPECT_EQ(Text("fPID.txtPIDTemp(2)"), stored);
  EXPECT_FALSE(page.IsChanged());
}

}  // namespace
