// The rules over the fields of the virtual building's units, and over a good unit with one thing at a time
// made wrong, in metric and in imperial units.
#include <ranges>

#include "advice/accepted.h"
#include "advice/field_contents.h"
#include "advice/places.h"
#include "advice/rules.h"
#include "tool_test.h"

namespace {

using advice::Advice;
using Contents = std::map<std::string, std::string>;  // by "page.control"

Contents ContentsOf(tests::Tool& tool) {
  std::vector<const fields::Field*> fields = tool.Main().Pending().Fields();
  const fields::Field location = tool.Main().LocationField();
  fields.push_back(&location);
  Contents contents;
  for (const fields::Field* field : fields) contents[field->page + "." + field->name] = field->content();
  return contents;
}

/// "control=content ..." with "metric|imperial" where it depends on the units; a name without an index stands
/// for its whole array. With a page in front the field is new.
void Edit(Contents& contents, const std::string& edits, bool imperial) {
  for (const std::string& edit : base::Split(base::Trim(edits), " ")) {
    if (edit.empty()) continue;
    const auto equals = edit.find('='), bar = edit.find('|');
    const std::string name = edit.substr(0, equals);
    const std::string content = imperial && bar != std::string::npos
                                    ? edit.substr(bar + 1)
                                    : edit.substr(equals + 1, bar - equals - 1);
    int known = 0;
    for (auto& [key, value] : contents) {
      const std::string control = key.substr(key.find('.') + 1);
      if (control != name && !control.starts_with(name + "(")) continue;
      value = content;
      ++known;
    }
    if (name.find('.') != std::string::npos)
      contents[name] = content;
    else
      EXPECT_GT(known, 0) << name;
  }
}

/// Heats, cools, humidifies and takes fresh air without anything to be said against it.
const Contents& GoodUnit(bool imperial) {
  static const std::array<Contents, 2> units = [] {
    tests::Tool tool;
    tool.Open(tests::kAssigned);
    tool.Main().Pending().ReadSettings();
    std::array<Contents, 2> both;
    for (const bool us : {false, true}) {
      if (us) tool.Find<ui::OptionButton>("optUnit(1)").Click();
      both[us] = ContentsOf(tool);
      Edit(both[us],
           "chkOver(2)=0 chkMechAndEco=1 txtSetPoint(3)=20|68 txtSetPoint(4)=18|64.4 txtSetPoint(5)=14|57.2 "
           "txtSetPoint(0)=23|73.4",
           us);
    }
    return both;
  }();
  return units[imperial];
}

std::vector<Advice> Evaluate(const Contents& contents, bool imperial = false, char decimal = '.') {
  const auto find = [&contents](std::string_view page, std::string_view control) {
    const auto found = contents.find(std::string(page) + "." + std::string(control));
    return found == contents.end() ? std::nullopt : std::optional(found->second);
  };
  return advice::Evaluate({find, imperial, base::Numbers(decimal)});
}

/// The names of the rules, "!name" of a fault; "3 name" where one found several cases.
std::string Names(const std::vector<Advice>& found) {
  std::vector<std::string> names;
  for (std::size_t i = 0, count = 1; i < found.size(); ++i, ++count) {
    if (i + 1 < found.size() && found[i + 1].rule == found[i].rule) continue;
    names.push_back((count > 1 ? std::to_string(count) + " " : "") +
                    (found[i].rule->severity == advice::Severity::kFault ? "!" : "") +
                    std::string(found[i].rule->name));
    count = 0;
  }
  return base::Join(names, ", ");
}

struct State {
  std::string edits;
  const char* found;
};

const std::string kNoHeating = "cboOutput(1)=UNASSIGNED cboOutput(6)=UNASSIGNED ";
const std::string kNoCooling = "cboOutput(2)=UNASSIGNED cboOutput(3)=UNASSIGNED ";
const std::string kNoDamper = "cboOutput(5)=UNASSIGNED optEcono=1 ";
const std::string kFanOnly = "cboOutput=UNASSIGNED cboOutput(0)=FAN_ON_OFF ";
const std::string kHeatValve = "cboOutput(3)=HEAT_VALVE_OPEN cboOutput(4)=HEAT_VALVE_CLOSE ";
const std::string kCoolValve = "cboOutput(3)=COOL_VALVE_OPEN cboOutput(4)=COOL_VALVE_CLOSE ";
const std::string kBothValve = "cboOutput(3)=HEAT_COOL_VALVE_OPEN cboOutput(4)=HEAT_COOL_VALVE_CLOSE ";

std::string NoInput(int i) {
  const std::string index = "(" + std::to_string(i) + ")=";
  return "cboInput" + index + "UNUSED UCPTsensorType" + index + "DISCONNECTED ";
}
/// The second input with another function.
std::string Input(const std::string& function, const std::string& sensor, const std::string& type) {
  return "cboInput(1)=" + function + " UCPTsensorType(1)=" + sensor + " nvoHwInput2(1)=" + type + " ";
}

/// Nobody controls a temperature: not measured, without gains and without a bypass.
const std::string kUnserved =
    NoInput(0) + NoInput(2) +
    "txtnvi(19)=0 txtnvi(17)=0 txtPIDTemp(0)=0 txtPIDTempDisch(0)=0 txtBypassTime=0 ";
const char* const kServesNobody = "!not-measured, 2 !loop-without-gain, not-measured-hint, no-bypass";

// What would be wrong of a unit that has what is lacking here.
const State kLacking[] = {
    {kUnserved, kServesNobody},
    {kUnserved + kNoHeating, kServesNobody},
    {kUnserved + kNoCooling + kNoDamper, kServesNobody},
    {kUnserved + kFanOnly, ""},
    {"txtSetPoint(3)=23.5|74.3 txtSetPoint(4)=24|75.2 txtMaxDischHeat=55|131 txtPIDTemp(1)=20|36 "
     "txtStartTime=0 chkOptimum(1)=0 chkAlternate=1 txtHeatCool=1 txtChngeOverDelay=3.9 " +
         kCoolValve + kNoHeating,
     ""},
    {"txtSetPoint(3)=23.5|74.3 txtSetPoint(2)=23|73.4 txtMinDischCool=8|46.4 txtAirLowLimit=5|41 "
     "txtPIDTemp(1)=20|36 txtStartTime=0 chkOptimum(2)=0 chkAlternate=1 txtHeatCool=29 " +
         kNoCooling + kNoDamper,
     ""},
    {"txtnvi(22)=0 chkMechAndEco=0 txtChngeOverDelay=3.9 " + kNoCooling + kHeatValve, ""},
    {NoInput(3) + "txtnvi(12)=0 txtnvi(9)=0 chkFreshAir=0 txtOutdoor=60.1 txtOutdoorMax=60 " +
         "txtAirLowLimit=13.1|55.58 " + kNoDamper,
     ""},
};

// The state that just does not do it stands beside those that do.
const State kOutputs[] = {
    {"", ""},
    {"chkOver(2)=1 cboONOFF(2)=1 txtValue(2)=500", "!output-in-manual"},
    {"chkOver(5)=1 txtValue(5)=0 chkOver(6)=1 txtValue(6)=100", "2 !output-in-manual"},
    {"chkOver(5)=1 txtValue(5)=-0.1 chkOver(6)=1 txtValue(6)=100.1",
     "2 !output-in-manual, 2 !override-no-position"},
    {"cboOutput(3)=UNASSIGNED chkOver(3)=1 chkOutput(1)=0", "override-of-nothing, no-local-hardware"},
    {"cboOutput(3)=OF_ANOTHER_TOOL chkOver(3)=1 chkOutput(3)=0 UCPThardwareSignalType(6)=ANALOG_0_10V "
     "txtValue(5)=-0.1",
     ""},
    {"UCPThardwareSignalType(1)=PWM chkOutput(1)=0 UCPThardwareSignalType(6)=DIGITAL",
     "2 !hardware-cannot-drive"},
    {"cboOutput(3)=UNASSIGNED chkOutput(3)=0 UCPThardwareSignalType(3)=PWM", ""},
    {"cboOutput=UNASSIGNED", "nothing-assigned"},
};

const State kInputs[] = {
    {"UCPTsensorType(0)=DISCONNECTED", "!input-without-sensor"},
    {Input("FAN_STATE", "LINEAR", "SNVT_amp") + "nvoHwInput1(0)=SNVT_temp_f UCPTsensorType(3)=TRANS_TABLE",
     ""},
    {Input("FAN_STATE", "TRANS_TABLE", "SNVT_amp"), "sensor-unusual"},
    {"UCPTsensorType(0)=LINEAR nvoHwInput4(3)=SNVT_temp_p cboInput(1)=UNUSED txtLocation=",
     "sensor-unusual, variable-type-unusual, sensor-of-nothing, no-location"},
};

const State kMeasurements[] = {
    {NoInput(0) + NoInput(1) + "txtnvi(10)=0", ""},
    {NoInput(0) + "txtnvi(19)=", "!not-measured"},
    {NoInput(0) + "txtnvi(19)=?", ""},
    {NoInput(0) + "txtnvi(19)=0 optTemp=1", ""},
    {NoInput(0) + "txtnvi(19)=0 optAverage=1", ""},
    {NoInput(0) + "txtnvi(19)=0 optAverage=1 chkEnable=0", "!not-measured"},
    {NoInput(1) + "txtnvi(10)=0 optTemp=1", "!not-measured"},
    {NoInput(1) + "txtnvi(10)=0 optTemp=1 " + kFanOnly, ""},
    {NoInput(1) + "txtnvi(10)=0 optTemp=1 " + kNoHeating, "!not-measured"},
    {NoInput(1) + "txtnvi(10)=0 optTemp=1 " + kNoCooling + kNoDamper, "!not-measured"},
    {NoInput(4) + "txtnvi(20)=0", "!not-measured"},
    {NoInput(4) + "txtnvi(20)=0 txtHumidity(0)=0 cboOutput(4)=DEHUMIDIFIER_ON_OFF",
     "!not-measured, !loop-without-gain"},
    {NoInput(4) + "txtnvi(20)=0 txtHumidity(0)=0 cboOutput(4)=UNASSIGNED", ""},
    {"txtnvi(22)=0 txtnvi(4)=0", "!not-measured, not-measured-hint"},
    {"txtnvi(22)=0 txtnvi(4)=0 optEcono=1", "not-measured-hint"},
    {"txtnvi(22)=0 txtnvi(4)=0 " + Input("OUTDOOR_ENTHALPY", "LINEAR", "SNVT_enthalpy"), "not-measured-hint"},
    {"cboOutput(6)=FAN_SPEED_MOD txtnvi(14)=0", ""},
    {"cboOutput(6)=FAN_SPEED_MOD txtnvi(14)=0 txtnvi(18)=0 txtPressure(0)=0",
     "!not-measured, !loop-without-gain"},
    {"cboOutput(6)=BYPASS_DAMPER_MOD txtnvi(14)=0 txtnvi(18)=0 txtPressure(0)=0",
     "!not-measured, !loop-without-gain"},
    {"cboOutput(6)=HEAT_COOL_VALVE_MOD txtnvi(8)=0 txtnvi(2)=0", "!not-measured"},
    {NoInput(3) + "txtnvi(12)=0 txtnvi(9)=0 txtnvi(13)=0 txtnvi(22)=0", "4 not-measured-hint"},
    {NoInput(3) + "txtnvi(12)=0 txtCO2=0 txtnvi(13)=0 cboOutput(0)=UNASSIGNED", ""},
    {"txtnvi(19)=0 txtnvi(13)=0 cboOutput(6)=HEAT_COOL_VALVE_MOD txtnvi(8)=0 " +
         Input("FAN_STATE", "DIGITAL", "SNVT_switch"),
     ""},
};

const State kSetpoints[] = {
    {"txtSetPoint(3)=20.22|68.396", ""},
    {"txtSetPoint(3)=20.25|68.45", "setpoints-close"},
    {"txtSetPoint(3)=22|71.6", "setpoints-close"},
    {"txtSetPoint(3)=22.05|71.69", "!setpoints-crossed"},
    {"txtSetPoint(3)=23.5|74.3", "!setpoints-crossed"},
    {"txtSetPoint(3)=23.5|74.3 " + kNoCooling, "!setpoints-crossed"},  // with outdoor air
    {"txtSetPoint(3)=23.5|74.3 cboOutput(6)=HEAT_COOL_VALVE_MOD " + kNoCooling + kNoDamper,
     "!setpoints-crossed"},
    {"txtSetPoint(3)=23.5|74.3 cboOutput(1)=REVERSING_VALVE cboOutput(6)=UNASSIGNED", "!setpoints-crossed"},
    {"txtSetPoint(1)=23|73.4 txtSetPoint(4)=20|68 txtSetPoint(5)=?", ""},
    {"txtSetPoint(4)=20.1|68.18 txtSetPoint(2)=22.9|73.22", "2 !setback-tighter"},
    {"txtSetPoint(2)=23|73.4", "setback-small"},
    {"txtSetPoint(2)=25.7|78.26 txtSetPoint(5)=14.5|58.1", "2 setback-small"},
    {"txtSetPoint(2)=25.77|78.386 txtSetPoint(5)=14.45|58.01", ""},
};

const State kEconomizer[] = {
    {"cboOutput(5)=UNASSIGNED", "economizer-without-damper"},
    {"cboOutput(5)=UNASSIGNED cboOutput(4)=ECONOMIZER_ENABLE txtCO2Level(0)=0", ""},
    {"cboOutput(5)=UNASSIGNED " + kNoCooling, ""},
    {"chkMechAndEco=0 txtfreeCoolDegree=24.1|75.38 txtfreeCooling=65.4|28.117 optEcono=1", ""},
    {"txtfreeCoolDegree=24.1|75.38 txtfreeCooling=65.4|28.117 txtOutdoor=60.1 txtOutdoorMax=60 "
     "txtAirLowLimit=13.1|55.58 chkMechAndEco=0 chkFreshAir=0",
     "!damper-positions, economizer-temperature, economizer-enthalpy, economizer-alone, damper-stays-open, "
     "mixed-air-limit"},
    {"txtfreeCoolDegree=24|75.2 txtfreeCooling=65.12|27.997 txtOutdoor=60 txtOutdoorMax=60 "
     "txtAirLowLimit=13|55.4",
     ""},
};

const State kAlarms[] = {
    {"txtMaxDischHeat=54.9|130.82 txtMinDischCool=8.1|46.58 txtAirLowLimit=5|41 txtAlarm(1)=0.1 "
     "txtAlarm(2)=34.9|94.82 txtAlarm(5)=39.9|103.82 txtAlarm(13)=499|2.003 txtAlarm(16)=69.9",
     ""},
    {"txtMaxDischHeat=55|131 txtMinDischCool=8|46.4 txtAirLowLimit=5|41 txtAlarm(2)=35|95 "
     "txtAlarm(5)=40|104 txtAlarm(13)=500|2.007 txtAlarm(16)=70",
     "2 !supply-outside-alarm, 4 !alarm-limits-crossed"},
    {"txtAlarm(8)=55|131", "!supply-outside-alarm, !alarm-limits-crossed"},
    {"txtAlarm(8)=55|131 fAlarm.txtAlarm(23)=1", ""},  // a record with one more field than usual
    {"txtAlarm(5)=40|104 txtnvi(9)=0", "not-measured-hint"},
    {"txtAlarm(5)=40|104 txtnvi(9)=0 " + Input("MIXED_AIR_TEMP", "STD_THERMISTOR", "SNVT_temp_p"),
     "!alarm-limits-crossed"},
    {"txtAlarm(1)=0 txtAlarm(4)=0 txtAlarm(7)=0 txtAlarm(10)=0 txtAlarm(12)=0 txtAlarm(15)=0 txtAlarm(18)=0 "
     "txtAlarm(20)=0 txtAlarm(21)=0 txtAlarm(22)=0",
     "9 alarm-without-delay"},
    {"txtAlarm(21)=0 " + Input("AUXILIARY_ALARM", "DIGITAL", "SNVT_switch"), "alarm-without-delay"},
};

const State kLoops[] = {
    {"txtPIDTemp(0)=0 txtPIDTempDisch(0)=0 txtCO2Level(0)=0 txtHumidity(0)=0 txtPressure(0)=0",
     "4 !loop-without-gain"},
    {"txtCO2Level(0)=0 txtnvi(12)=0 " + NoInput(3), "not-measured-hint"},
    {"txtPIDTemp(0)=-1 txtPIDTemp(2)=-1 txtPIDTemp(4)=-1", "3 !loop-negative-gain"},
    {"txtPIDTemp(3)=0 txtPIDTemp(2)=0 txtPIDTemp(1)=1.5|2.7 txtCO2Level(0)=0 txtCO2=0", ""},
    {"txtPIDTemp(3)=0 txtPIDTemp(1)=1.53|2.754", "!loop-integral-time, loop-dead-band"},
    {"txtPIDTemp(1)=1.5|2.7 txtSetPoint(3)=23.5|74.3", "!setpoints-crossed"},  // said once
};

const State kTiming[] = {
    {"txtCoolOn=59.9 txtCoolOFF=59.9", "2 !cooling-time-short"},
    {"txtCoolOFF=60", "cooling-rest-short"},
    {"txtCoolOFF=299.9", "cooling-rest-short"},
    {"txtCoolOn=1 txtCoolOFF=60 cboOutput(2)=UNASSIGNED", ""},
    {kHeatValve + "txtChngeOverDelay=4 txtCool=500", ""},
    {kHeatValve + "txtChngeOverDelay=3.9", "changeover-short"},
    {kCoolValve + "txtChngeOverDelay=4 txtHeat=500", ""},
    {kCoolValve + "txtChngeOverDelay=3.9", "changeover-short"},
    {kBothValve + "txtChngeOverDelay=3.9", "2 changeover-short"},
    {kHeatValve + "txtHeat=0 txtCool=0 txtFreshAir=0", "!no-drive-time"},
    {kCoolValve + "txtHeat=0 txtCool=0 txtFreshAir=0", "!no-drive-time"},
    {kBothValve + "txtHeat=0 txtCool=0", "2 !no-drive-time"},
    {kHeatValve + "txtHeat=0.1 cboOutput(6)=FAN_SPEED_MOD txtFanSpeed=60", ""},
    {"cboOutput(4)=FRESH_AIR_DAMPER_OPEN cboOutput(5)=UNASSIGNED txtFreshAir=0", "!no-drive-time"},
    {"txtHeat=0 txtCool=0 txtFreshAir=0 txtCoolOn=60 txtFanSpeed=0 txtStartTime=1 txtAt(0)=0 txtHeatCool=29 "
     "txtBypassTime=1",
     ""},
    {"txtStartTime=0 chkOptimum=0 txtAt(1)=0 txtAt(3)=0 chkAlternate=1 txtHeatCool=30", ""},
    {"cboOutput(6)=FAN_SPEED_MOD txtFanSpeed=0", "fan-minimum"},
    {"cboOutput(6)=FAN_SPEED_MOD txtFanSpeed=0.1 txtAt(1)=-1 chkEnable=0", ""},
    {"cboOutput(6)=FAN_SPEED_MOD txtFanSpeed=60.1", "fan-minimum"},
    {"txtStartTime=0 chkOptimum(1)=0", "!optimum-start"},
    {"txtStartTime=0 chkOptimum(2)=0", "!optimum-start"},
    {"txtAt(0)=0 txtAt(1)=0", "!averaging-weights"},
    {"txtAt(0)=-1", "!averaging-weights"},
    {"txtAt(1)=-1", "!averaging-weights"},
    {"txtAt(3)=0 optAverage=1", "!averaging-weights"},
    {"chkAlternate=1 txtHeatCool=29", "!alternation-short"},
};

const State kNetwork[] = {
    {"txtNvo(0)=0 txtNvo(12)=0 txtNvo(14)=0 txtnciSndHrtBt=0", "4 no-heartbeat"},
    {"txtNvo(6)=0 cboOutput(0)=UNASSIGNED txtNvo(12)=0 txtOutput(12)=61 cboOutput(6)=UNASSIGNED", ""},
    {"txtNvo(0)=0.5 txtOutput(6)=60 txtOutput(14)=60 txtnciMinSendTime=60 txtnvi(0)=60", ""},
    {"txtOutput(6)=60.1 txtOutput(14)=60.1 txtnciMinSendTime=60.1", "3 !throttle-too-long"},
    {"txtOutput(6)=60.1 txtNvo(6)=0", "no-heartbeat"},
    {"txtnvi(0)=59.9 txtnvi(22)=0.1", "2 receive-time-short"},
};

const std::span<const State> kGroups[] = {kLacking,    kOutputs, kInputs, kMeasurements, kSetpoints,
                                          kEconomizer, kAlarms,  kLoops,  kTiming,       kNetwork};

TEST(Advice, SpeaksOfWhatIsWrongAndOfNothingElse) {
  for (const bool imperial : {false, true}) {
    for (const auto& [edits, found] : kGroups | std::views::join) {
      Contents contents = GoodUnit(imperial);
      Edit(contents, edits, imperial);
      EXPECT_EQ(Names(Evaluate(contents, imperial)), found)
          << (imperial ? "imperial: " : "metric: ") << edits;
    }
  }
}

TEST(Advice, HasNoRuleThatNeverSpeaks) {
  std::string found;
  for (const State& state : kGroups | std::views::join) found += state.found + std::string(", ");
  for (const auto table : advice::kTables) {
    for (const advice::Check& check : table())
      EXPECT_NE(found.find(std::string(check.rule.name) + ","), std::string::npos) << check.rule.name;
  }
}

TEST(Advice, SaysNothingOfWhatIsNotKnownAndReadsNumbersInTheNotationOfThePersonAndOfTheHost) {
  EXPECT_EQ(Names(Evaluate({})), "");
  Contents contents = GoodUnit(false);
  for (auto& [name, content] : contents) {
    if (name.find(".txt") != std::string::npos) content = "not a number";
  }
  EXPECT_EQ(Names(Evaluate(contents)), "");
  contents = GoodUnit(false);
  Edit(contents, "txtSetPoint(3)=22,5 txtSetPoint(0)=23.2", false);
  EXPECT_EQ(Names(Evaluate(contents, false, ',')), "!setpoints-crossed");
}

TEST(Advice, ThatWasAcceptedComesBackWhenAFieldConcernedChanges) {
  const auto with = [](const std::string& edits, bool imperial) {
    Contents contents = GoodUnit(imperial);
    Edit(contents, edits, imperial);
    return Evaluate(contents, imperial).at(0);
  };
  const Advice close = with("txtSetPoint(3)=21.505|70.709", false);
  const std::vector accepted = {advice::Accept(close, "A", "2026-11-22T14:05:00Z", "a museum"),
                                advice::Accept(close, "B", "2026-11-23T14:05:00Z", "a museum")};
  const advice::Accepted* held = advice::AcceptanceOf(with("txtSetPoint(3)=21.505|70.709", true), accepted);
  ASSERT_TRUE(held) << "other units are no change";
  EXPECT_EQ(held->who, "B");
  EXPECT_FALSE(advice::Holds(accepted[0], with("txtSetPoint(3)=21.51", false)));
  const auto manual = advice::Accept(with("chkOver(4)=1", false), {}, {}, {});
  EXPECT_TRUE(advice::Holds(manual, with("chkOver(4)=1", true)));
  EXPECT_FALSE(advice::Holds(manual, with("chkOver(4)=1 cboOutput(4)=DEHUMIDIFIER_ON_OFF", false)));
  for (const char* gain :
       {"txtPIDTemp(0)=-25|-13.8889", "cboOutput(6)=FAN_SPEED_MOD txtPressure(0)=-0.12|-29.89067",
        "cboOutput(6)=FAN_SPEED_MOD txtAlarm(13)=501|2.0113"})
    EXPECT_TRUE(advice::Holds(advice::Accept(with(gain, false), {}, {}, {}), with(gain, true))) << gain;
  const std::string unmeasured = NoInput(0) + "txtnvi(19)=";
  const auto nothing = advice::Accept(with(unmeasured + "0", false), {}, {}, {});
  EXPECT_FALSE(advice::Holds(nothing, with(unmeasured, false)));
  Advice other = close;
  other.fields.pop_back();
  EXPECT_FALSE(advice::Holds(accepted[0], other));
  EXPECT_FALSE(advice::Holds(accepted[0], with("chkFreshAir=0", false)));
}

using AdviceOnUnits = tests::ToolTest;

std::vector<Advice> AdviceOn(tests::Tool& tool, bool imperial = false) {
  const advice::FieldContents contents(tool.Main().Pending().Fields(), tool.Main().Selections());
  return advice::Evaluate({std::cref(contents), imperial, base::Numbers()});
}

TEST_F(AdviceOnUnits, IsWhatAPersonWouldSay) {
  const std::pair<const char*, const char*> units[] = {
      {tests::kAssigned, "!output-in-manual, setpoints-close, setback-small, economizer-alone"},
      {tests::kUnassigned, "nothing-assigned"},
      {tests::kPressure, "!output-in-manual, setpoints-close, setback-small"}};
  for (const auto& [unit, names] : units) {
    tests::Tool tool(building);
    tool.Open(unit);
    for (const bool imperial : {false, true}) {
      if (imperial) tool.Find<ui::OptionButton>("optUnit(1)").Click();
      EXPECT_EQ(Names(AdviceOn(tool, imperial)), names) << unit;
    }
  }
}

TEST_F(AdviceOnUnits, FollowsEditsAndSensorsThatThePageHasReadAndIsSaidInTheLanguage) {
  Open(tests::kAssigned);
  const std::vector<Advice> found = AdviceOn(*this);
  // Boxes of variables are known by their place alone.
  for (std::size_t i = 0; i < advice::kReceivedVariables.size(); ++i) {
    EXPECT_EQ(Main().Pending().Find("fNetworkInput", advice::At("txtnvi", i))->caption().row,
              advice::kReceivedVariables[i]);
  }
  Type("fHeatCool.txtSetPoint(3)", "22.5");
  AssignInput(2, "UNUSED");
  EXPECT_EQ(Names(AdviceOn(*this)),
            "!output-in-manual, !setpoints-crossed, sensor-of-nothing, economizer-alone");
  const Advice crossed = AdviceOn(*this)[1];
  EXPECT_EQ(crossed.fields[0].page + "." + crossed.fields[0].control, "fHeatCool.txtSetPoint(3)");
  Main().Pending().ReadSettings();
  Main().Prompts().Take(*Main().Pending().Find("fHardwareInput", "UCPTsensorType(1)"), "DISCONNECTED");
  EXPECT_EQ(Names(AdviceOn(*this)), "!output-in-manual, !setpoints-crossed, economizer-alone");

  const shell::Strings& strings = program.GetStrings();
  EXPECT_EQ(TextOf(found.at(0), strings), "Output 3 (COOLING_1) is in manual: ON.");
  EXPECT_EQ(TextOf(found.at(1), strings),
            "Occupied/Bypass: heating at 21.500 °C is less than 2.8 °C below cooling at 22.500 °C.");
  UseLanguage("German");
  EXPECT_EQ(TextOf(found.at(2), strings),
            "Unbelegt: Heizen ist mit 16.500 °C um weniger als 5.6 °C gegenüber 21.500 °C abgesenkt.");
}

}  // namespace
