#include <gtest/gtest.h>

#include "base/record.h"
#include "tool_test.h"

namespace {

using tests::ToolTest;

std::string Indexed(const std::string& name, int index) {
  return "fPID." + name + "(" + std::to_string(index) + ")";
}

TEST_F(ToolTest, PidBoxesShowAndSaveTheFieldsOfTheirLoops) {
  const struct {
    std::string box;
    int number;
    const char* format;
    int precision;
  } loops[] = {{"txtPIDTemp", 30, "UCPTspaceTempPIDparam#SI", 4},
               {"txtPIDTempDisch", 31, "UCPTdischargeTempPIDparam#SI", 4},
               {"txtCO2Level", 32, "UCPTCO2PIDparam", 4},
               {"txtPressure", 33, "UCPTpressurePIDparam#SI", 2},
               {"txtHumidity", 34, "UCPThumidityPIDparam", 2}};
  Open(tests::kPressure);
  Main().Pages().FindPage("fPID")->FillValue();
  EXPECT_EQ(Main().Flags().lastFilledPage, 5);
  Unlock("fPID");
  std::vector<std::string> expected;
  for (const auto& loop : loops) {
    base::Record record(Stored(tests::kPressure, loop.number, loop.format, loop.precision));
    for (std::size_t i = 0; i < 6; ++i) {
      EXPECT_EQ(Text(Indexed(loop.box, static_cast<int>(i))), record.Field(i)) << loop.box << i;
      record.Set(i, base::Numbers().Text(static_cast<double>(i) + loop.number / 100.0, loop.precision));
      Type(Indexed(loop.box, static_cast<int>(i)), std::string(record.Field(i)));
    }
    expected.push_back(record.Join());  // the pressure's has a seventh field, which stays
  }
  Click("cmdApply");
  EXPECT_EQ(LastMessage(), tests::kApplied);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(Stored(tests::kPressure, loops[i].number, loops[i].format, loops[i].precision), expected[i]);
  }
  Find<ui::OptionButton>("optUnit(1)").Click();
  const std::string pressure = Text("fPID.txtPressure(1)");
  EXPECT_EQ(pressure.size() - pressure.find('.'), 6u) << "five decimals in imperial units: " << pressure;
}

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
