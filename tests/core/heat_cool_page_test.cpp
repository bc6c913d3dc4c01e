#include "faulty_host.h"
#include "tool_test.h"

namespace {

const std::string kRefused = "WriteValue/Heating and cooling: ";
const std::string kSetpointRule =
    kRefused + "The heating setpoint must be lower or equal than the cooling setpoint";
const std::string kMaximumRule =
    kRefused + "The Maximum Discharge Air Setpoint must be lower than the Alarm High Limit.";
const std::string kMinimumRule =
    kRefused + "The Minimum Discharge Air Setpoint must be higher than the Alarm Low Limit.";
constexpr const char* kNotApplied = "Apply/Main: The configuration settings were not applied";

using Log = std::vector<std::string>;
using Edits = std::vector<std::pair<std::string, std::string>>;

struct HeatCoolTest : tests::ToolTest {
  std::string Of(const std::string& control) { return "fHeatCool." + control; }
  std::string Setpoint(int i) { return Of("txtSetPoint(" + std::to_string(i) + ")"); }
  std::string StoredSetpoints() { return Stored(tests::kAssigned, 3, "SCPTsetPnts#SI", 3); }
  /// What Apply logged.
  Log Apply() {
    const std::size_t before = Messages().size();
    Click("cmdApply");
    const Log log = Messages();
    return {log.begin() + static_cast<std::ptrdiff_t>(before), log.end()};
  }
};

TEST_F(HeatCoolTest, BeforeAPageIsSelectedNothingIsCheckedOrWritten) {
  Open(tests::kAssigned);
  const std::string stored = StoredSetpoints();
  Type(Setpoint(3), "30");
  EXPECT_EQ(Apply(), Log{tests::kApplied});
  EXPECT_EQ(StoredSetpoints(), stored);
  ChoosePage("fPID");  // any page
  Type(Setpoint(3), "30");
  EXPECT_EQ(Apply(), (Log{kSetpointRule, kNotApplied}));
}

TEST_F(HeatCoolTest, RulesBetweenFieldsAndWithTheAlarms) {
  const auto alarms = [](const char* low, const char* high, const char* minimum, const char* maximum) {
    return Edits{{"fAlarm.txtAlarm(8)", low},
                 {"fAlarm.txtAlarm(9)", high},
                 {"fHeatCool.txtMinDischCool", minimum},
                 {"fHeatCool.txtMaxDischHeat", maximum}};
  };
  const std::string noNumber = kRefused + "SCPTsetPnts: \"";
  const std::pair<Edits, Log> cases[] = {
      {{{Setpoint(0), "22"}, {Setpoint(3), "22"}}, {}},
      {{{Setpoint(0), "22"}, {Setpoint(3), "22.5"}}, {kSetpointRule}},
      {{{Setpoint(2), "16"}, {Setpoint(5), "16.001"}}, {kSetpointRule}},
      {{{Setpoint(0), "12"}, {Setpoint(1), "12"}, {Setpoint(2), "12"}},
       {kSetpointRule, kSetpointRule, kSetpointRule}},
      // An empty cooling setpoint skips its pair; the device does not take it.
      {{{Setpoint(0), ""}, {Setpoint(3), "99"}}, {noNumber}},
      {{{Setpoint(1), "20"}, {Setpoint(4), ""}}, {noNumber}},
      // Supply limits are compared as whole numbers, halves to the even one; equal ones are refused.
      {alarms("8", "35", "13", "35"), {kMaximumRule}},
      {alarms("8", "35", "13", "34.6"), {kMaximumRule}},
      {alarms("8", "35", "13", "34.4"), {}},
      {alarms("8", "34.5", "13", "33.5"), {kMaximumRule}},
      {alarms("8", "35.5", "13", "34.5"), {}},
      {alarms("12", "55", "12.5", "40"), {kMinimumRule}},
      {alarms("12", "55", "12.6", "40"), {}},
      {alarms("12", "35", "12", "35"), {kMaximumRule}},  // its warning holds the other rule back
  };
  for (const auto& [edits, refusals] : cases) {
    tests::Tool tool;
    tool.OpenPage(tests::kAssigned, "fHeatCool");
    for (const auto& [box, text] : edits) tool.Type(box, text);
    const std::string stored = tool.Stored(tests::kAssigned, 3, "SCPTsetPnts#SI", 3);
    tool.Click("cmdApply");
    const std::string what = edits[0].second + " and " + edits.back().second;
    const Log log = tool.Messages();
    ASSERT_EQ(log.size(), refusals.size() + 1) << what;
    for (std::size_t i = 0; i < refusals.size(); ++i) EXPECT_THAT(log[i], testing::StartsWith(refusals[i]));
    EXPECT_EQ(log.back(), refusals.empty() ? tests::kApplied : kNotApplied) << what;
    if (refusals.empty()) continue;
    EXPECT_EQ(tool.Stored(tests::kAssigned, 3, "SCPTsetPnts#SI", 3), stored) << what;
    for (const auto& [box, text] : edits) EXPECT_EQ(tool.Text(box), text) << what;
    // Crossed setpoints are no unsaved edit any more, after any other failure the edits are.
    EXPECT_EQ(tool.Page("fHeatCool").IsChanged(), refusals[0] != kSetpointRule) << what;
  }
}

TEST_F(HeatCoolTest, AWarningAboutTheMaximumHoldsBackBothRulesUntilItsBoxIsEntered) {
  OpenPage(tests::kAssigned, "fHeatCool");
  Type("fAlarm.txtAlarm(9)", "35");
  Type(Of("txtMaxDischHeat"), "35");
  Type(Of("txtMinDischCool"), "8");
  EXPECT_EQ(Apply(), (Log{kMaximumRule, kNotApplied}));
  EXPECT_EQ(Apply(), (Log{tests::kApplied})) << "neither rule; the alarms page takes equal values";
  Find<ui::TextBox>(Of("txtMinDischCool")).Enter();
  Type(Of("txtMinDischCool"), "7.6");
  EXPECT_EQ(Apply(), (Log{tests::kApplied})) << "its own box does not bring the minimum back";
  Find<ui::TextBox>(Of("txtMaxDischHeat")).Enter();
  Type(Of("txtMaxDischHeat"), "30");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Apply(), (Log{kMinimumRule, kNotApplied})) << "its own warning does not hold it back";
  }
  auto& minimum = Find<ui::TextBox>(Of("txtMinDischCool"));
  minimum.Type("abc");
  EXPECT_TRUE(minimum.Leave()) << "but it lets the person go";

  // A box with no number in it is refused once each time that it is entered.
  for (const char* name : {"txtMaxDischHeat", "txtMinDischCool"}) {
    auto& box = Find<ui::TextBox>(Of(name));
    for (std::size_t entered = 1; entered <= 2; ++entered) {
      prompts.asked.clear();
      box.Enter();
      box.Type("abc");
      EXPECT_FALSE(box.Leave()) << name;
      EXPECT_TRUE(box.Leave()) << name << ": its warning lets the person go";
      EXPECT_EQ(prompts.asked.size(), 1u);
    }
  }
}

TEST_F(HeatCoolTest, AnEmptyOptionRecordLeavesOnlyTheOptionsOut) {
  tests::FailurePlan plan;
  throughHost = tests::FailingBy(plan);
  OpenPage(tests::kAssigned, "fHeatCool");
  shell::ISubForm& page = Page("fHeatCool");
  plan.Arm(tests::Failure::kEmptyText, {}, false);
  page.FillValue();
  plan.Arm(tests::Failure::kEmptyText, {plan.seen - 7}, false);  // before the functions of the outputs
  Store(17, "UCPTminHeatPeriod", "9");
  const std::string options = Stored(tests::kAssigned, 48, "UCPTobjectOptions", 0);
  plan.seen = 0;
  page.FillValue();
  EXPECT_EQ(Text(Of("txtminHeatPeriod")), "9");
  EXPECT_FALSE(Find(Of("chkMechAndEco")).Enabled());
  Find<ui::CheckBox>(Of("chkMechAndEco")).SetChecked(true);
  Type(Of("txtChngeOverDelay"), "16");
  Save();
  EXPECT_EQ(Stored(tests::kAssigned, 48, "UCPTobjectOptions", 0), options);
  EXPECT_TRUE(Find(Of("chkMechAndEco")).Enabled()) << "the record could be read again";
}

}  // namespace
