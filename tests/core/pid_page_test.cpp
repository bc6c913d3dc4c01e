#include <gtest/gtest.h>

#include "base/record.h"
#include "tool_test.h"

namespace {

using tests::ToolTest;

std::string Indexed(const std::string& name, int index) {
  return "fPID." + name + "(" + std::to_string(index) + ")";
}

TEST_F(ToolTest, PidBoxesShowTheRecordsOfTheirLoops) {
  Open(tests::kPressure);
  const struct {
    const char* box;
    int number;
    const char* format;
    int precision;
  } loops[] = {
      {"txtPIDTemp", 30, "UCPTspaceTempPIDparam#SI", 4},
      {"txtPIDTempDisch", 31, "UCPTdischargeTempPIDparam#SI", 4},
      {"txtCO2Level", 32, "UCPTCO2PIDparam", 4},
      {"txtPressure", 33, "UCPTpressurePIDparam#SI", 2},
      {"txtHumidity", 34, "UCPThumidityPIDparam", 2},
  };
  for (const auto& loop : loops) {
    const base::Record record(Stored(tests::kPressure, loop.number, loop.format, loop.precision));
    for (int i = 0; i < 6; ++i) {
      EXPECT_EQ(Text(Indexed(loop.box, i)), record.Field(static_cast<std::size_t>(i))) << loop.box << i;
    }
  }
  Main().Pages().FindPage("fPID")->FillValue();
  EXPECT_EQ(Main().Flags().lastFilledPage, 5);
}

TEST_F(ToolTest, PidLoopsAreUsableByAssignedFunction) {
  const struct {
    const char* device;
    bool co2;
    bool humidity;
    bool pressure;
  } cases[] = {{tests::kAssigned, true, true, false},
               {tests::kUnassigned, false, false, false},
               {tests::kPressure, false, false, true}};
  for (const auto& item : cases) {
    tests::Tool tool;
    tool.Open(item.device);
    const std::pair<const char*, bool> groups[] = {
        {"txtPIDTemp", true},           {"txtPIDTempDisch", true},
        {"txtCO2Level", item.co2},      {"lblCo", item.co2},
        {"txtHumidity", item.humidity}, {"lblHumid", item.humidity},
        {"txtPressure", item.pressure}, {"lblPress", item.pressure},
        {"lblPressure", item.pressure}, {"lblPressD", item.pressure}};
    for (const auto& [name, enabled] : groups) {
      const auto group = tool.Main().Pages().FindPage("fPID")->Group(name);
      ASSERT_FALSE(group.empty()) << name;
      for (const ui::Control* control : group)
        EXPECT_EQ(control->Enabled(), enabled) << item.device << control->Name();
    }
  }
}

TEST_F(ToolTest, PidHumidityIsForADehumidifierToo) {
  OpenPage(tests::kUnassigned, "fHardwareOutput");
  AssignOutput(1, "DEHUMIDIFIER_ON_OFF");
  ChoosePage("fPID");
  EXPECT_TRUE(Find<ui::TextBox>("fPID.txtHumidity(0)").Enabled());
}

TEST_F(ToolTest, PidUnitsFollowTheUnitSystem) {
  Open(tests::kPressure);
  EXPECT_EQ(Text("fPID.lblUnit(5)"), "% / °C");
  EXPECT_EQ(Text("fPID.lblPressure(0)"), "% / Pa");
  EXPECT_EQ(Text("fPID.lblPressD"), "Pa");
  Find<ui::OptionButton>("optUnit(1)").Click();
  EXPECT_EQ(Text("fPID.lblUnit(0)"), "% / °F");
  EXPECT_EQ(Text("fPID.lblDeadBandUnit(1)"), "°F");
  EXPECT_EQ(Text("fPID.lblPressure(2)"), "%/ \" WC");
  EXPECT_EQ(Text("fPID.lblPressD"), "\" WC");
  const std::string pressure = Text("fPID.txtPressure(1)");
  EXPECT_EQ(pressure.size() - pressure.find('.'), 6u) << "five decimals in imperial units: " << pressure;
}

TEST_F(ToolTest, PidWriteChangesNothingButWhatWasTyped) {
  Open(tests::kAssigned);
  const int numbers[] = {30, 31, 32, 33, 34, 48};
  const char* formats[] = {"UCPTspaceTempPIDparam", "UCPTdischargeTempPIDparam", "UCPTCO2PIDparam",
                           "UCPTpressurePIDparam",  "UCPThumidityPIDparam",      "UCPTobjectOptions"};
  std::vector<std::string> before;
  for (int i = 0; i < 6; ++i) before.push_back(Stored(tests::kAssigned, numbers[i], formats[i], 9));
  Find<ui::CheckBox>("fPID.chkPID").Click();
  Type("fPID.txtHumidity(4)", "0.25");
  Click("cmdApply");
  base::Record humidity(before[4]);
  humidity.Set(4, "0.250000000");
  base::Record options(before[5]);
  options.Set(61, options.Field(61) == "1" ? "0" : "1");
  before[4] = humidity.Join();
  before[5] = options.Join();
  for (int i = 0; i < 6; ++i)
    EXPECT_EQ(Stored(tests::kAssigned, numbers[i], formats[i], 9), before[static_cast<std::size_t>(i)])
        << numbers[i];
}

TEST_F(ToolTest, PidKeepsFieldsBeyondTheSixth) {
  Open(tests::kPressure);
  const base::Record before(Stored(tests::kPressure, 33, "UCPTpressurePIDparam", 9));
  ASSERT_GT(before.Count(), 6u);
  Type("fPID.txtPressure(0)", "0.75");
  Click("cmdApply");
  const base::Record after(Stored(tests::kPressure, 33, "UCPTpressurePIDparam", 9));
  EXPECT_EQ(after.Field(0), "0.750000000");
  EXPECT_EQ(after.Field(6), before.Field(6));
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
