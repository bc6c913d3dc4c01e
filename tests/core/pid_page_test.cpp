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
  base::Record options(Stored(tests::kPressure, 48, "UCPTobjectOptions", 0));
  options.Set(61, options.Field(61) == "1" ? "0" : "1");
  Main().Pages().FindPage("fGeneral")->EndWriteValue();  // old markers are not this page's matter
  Main().Pages().FindPage("fOptions")->EndWriteValue();
  Find<ui::CheckBox>("fPID.chkPID").Click();
  Click("cmdApply");
  EXPECT_EQ(LastMessage(), tests::kApplied);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(Stored(tests::kPressure, loops[i].number, loops[i].format, loops[i].precision), expected[i]);
  }
  EXPECT_EQ(Stored(tests::kPressure, 48, "UCPTobjectOptions", 0), options.Join());
  Find<ui::OptionButton>("optUnit(1)").Click();
  const std::string pressure = Text("fPID.txtPressure(1)");
  EXPECT_EQ(pressure.size() - pressure.find('.'), 6u) << "five decimals in imperial units: " << pressure;
}

TEST_F(ToolTest, PidLoopsAreUsableByFunctionAsSoonAsChosenAndWhenReadAgain) {
  const struct {
    int output;
    const char* function;
    bool co2, humidity, pressure;
  } steps[] = {{7, "UNASSIGNED", false, false, false},
               {7, "BYPASS_DAMPER_MOD", false, false, true},
               {6, "FRESH_AIR_DAMPER_MOD", true, false, true},
               {5, "HUMIDIFIER_ON_OFF", true, true, true},
               {7, "UNASSIGNED", true, true, false}};
  Open(tests::kUnassigned);
  const auto check = [this](const auto& step) {
    const std::pair<const char*, bool> groups[] = {
        {"txtPIDTemp", true},           {"txtPIDTempDisch", true},
        {"txtCO2Level", step.co2},      {"lblCo", step.co2},
        {"txtHumidity", step.humidity}, {"lblHumid", step.humidity},
        {"txtPressure", step.pressure}, {"lblPress", step.pressure},
        {"lblPressure", step.pressure}, {"lblPressD", step.pressure}};
    for (const auto& [name, enabled] : groups) {
      const auto group = Main().Pages().FindPage("fPID")->Group(name);
      ASSERT_FALSE(group.empty()) << name;
      for (const ui::Control* control : group)
        EXPECT_EQ(control->Enabled(), enabled) << step.function << name;
    }
  };
  for (const auto& step : steps) {
    AssignOutput(step.output, step.function);
    check(step);
  }
  Click("cmdApply");
  check(steps[4]);
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
