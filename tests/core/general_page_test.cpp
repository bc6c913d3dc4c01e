#include "base/record.h"
#include "tool_test.h"

namespace {

using GeneralTest = tests::ToolTest;

TEST_F(GeneralTest, BoxesShowAndSaveTheirPropertiesInImperialUnits) {
  const tests::BoxCase cases[] = {
      {"txtBypassTime", 15, "SCPTbypassTime", 0, "90", "90"},
      {"txtCO2", 12, "SCPTlimitCO2", 0, "1100", "1100"},
      {"txtDuctPressure", 14, "SCPTmaxDuctStaticPressureSetpoint#US", 4, "1.25", "1.2500"},
      {"txtAirLowLimit", 6, "SCPTmixedAirLowLimitSetpoint#US", 3, "50", "50.000"},
      {"txtMaxPressure", 13, "UCPTmaxSupplyPressure#US", 4, "3", "3.0000"},
      {"txtHumidity", 10, "UCPThumidityLevelSetpoint", 1, "50", "50.0"},
      {"txtHumidityMin", 11, "UCPThumidityCtrlOnOffTime", 1, "4.5", "4.5"},
      {"txtOutdoor", 27, "UCPTminOutdoorAir", 1, "15", "15.0"},
      {"txtFreshAir", 50, "UCPTdamperDriveTime", 1, "75", "75.0"},
  };
  registry.values["SOFTWARE\\LonWorks\\Plugins|Measure"] = "1";
  Open(tests::kAssigned);
  Unlock("fGeneral");
  TypeInto("fGeneral", cases);
  Type("fGeneral.txtOutdoorMax", "85");
  ApplyAndCheck(cases);
  EXPECT_EQ(Stored(tests::kAssigned, 52, "UCPTextraConfig", 1), "60 60 85.0 120 0");
}

TEST_F(GeneralTest, DamperPositionsMustBeInOrderWhileThereIsADamper) {
  const std::string number = "WriteValue/General: Damper positions must be a number.";
  const std::string order =
      "WriteValue/General: The maximum damper position must be a number greater than or equal to the minimum "
      "damper "
      "position.";
  const struct {
    std::string minimum, maximum, fault;
  } cases[] = {{"20", "20", ""},
               {"21", "20", order},
               {"20.5", "20.4", order},
               {"20", "abc", number},
               {"abc", "20", "WriteValue/General: UCPTminOutdoorAir: \"abc\""}};  // the host is asked first
  Open(tests::kAssigned);
  for (const auto& item : cases) {
    const std::string before = Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1);
    Type("fGeneral.txtOutdoor", item.minimum);
    Type("fGeneral.txtOutdoorMax", item.maximum);
    const std::size_t told = Messages().size();
    Main().Pages().FindPage("fGeneral")->SetFocused(nullptr);  // the last refusal put the cursor there
    Click("cmdApply");
    if (item.fault.empty()) {
      EXPECT_EQ(Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1), "20.0");
      continue;
    }
    ASSERT_GT(Messages().size(), told);
    EXPECT_TRUE(Messages()[told].starts_with(item.fault)) << Messages()[told];
    EXPECT_EQ(Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1), before) << item.minimum;
    EXPECT_EQ(Text("fGeneral.txtOutdoor"), item.minimum);
  }
  Type("fGeneral.txtOutdoor", "21");
  AssignOutput(6, "UNASSIGNED");  // without the damper its boxes are out of reach, and the rule with them
  Click("cmdApply");
  EXPECT_EQ(Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1), "21.0");
}

TEST_F(GeneralTest, GroupsFollowTheChosenFunctions) {
  const tests::Groups groups = {
      {"damper", "txtOutdoor"},           {"pressure", "txtDuctPressure"},
      {"humidity off", "txtHumidityMin"}, {"emergency", "optEmergency"},
      {"temperature", "optTemp"},         {"free cooling", "fraMix fraCo2 fraEcono"},
      {"humidity", "txtHumidity"},        {"bypass", "txtBypassTime"}};
  using enum tests::Connector;
  const tests::FunctionStep steps[] = {
      {{}, "bypass"},
      {{{kOutput, 1, "FRESH_AIR_DAMPER_MOD"}}, "damper, free cooling, bypass"},
      {{{kOutput, 2, "BYPASS_DAMPER_MOD"}}, "damper, pressure, free cooling, bypass"},
      {{{kOutput, 3, "HUMIDIFIER_ON_OFF"}}, "damper, pressure, humidity off, free cooling, humidity, bypass"},
      {{{kInput, 4, "EMERGENCY_CONTACT"}, {kInput, 5, "RETURN_TEMP"}},
       "damper, pressure, humidity off, emergency, temperature, free cooling, humidity, bypass"}};
  Open(tests::kUnassigned);
  CheckSteps("fGeneral", groups, steps);
}

}  // namespace
