#include "base/record.h"
#include "faulty_host.h"
#include "tool_test.h"

namespace {

struct OptionsTest : tests::ToolTest {
  std::string Extra(const char* device) { return Stored(device, 52, "UCPTextraConfig", 1); }
  bool Enabled(const std::string& name) { return AllUsable("fOptions." + name); }
  bool Leave(const char* box) { return Find<ui::TextBox>("fOptions." + std::string(box)).Leave(); }
  void ToggleCheck(const char* box) {
    EXPECT_TRUE(Find<ui::CheckBox>("fOptions." + std::string(box)).Click()) << box;
  }
};

TEST_F(OptionsTest, TheCycleTimeFollowsTheDelayAndItsRangeAndTheDemandIsStoredDoubledAndRounded) {
  const std::string twice =
      "The Heating/cooling cycle time cannot be less than 2 times the Heat/Cool change over delay";
  const std::string range =
      "The Heating/cooling cycle time must be higher or equal to 10 and lower or equal to 120";
  const std::tuple<const char*, std::string, std::string> cases[] = {{"30", "59", twice}, {"30", "60", ""},
                                                                     {"2", "9", range},   {"2", "10", ""},
                                                                     {"2", "121", range}, {"2", "120", ""}};
  Open(tests::kAssigned);
  Find<ui::TextBox>("fOptions.txtHeatCool").SetEnabled(false);
  Find<ui::CheckBox>("fOptions.chkAlternate").SetChecked(false);
  ToggleCheck("chkAlternate");
  for (const auto& [delay, cycle, fault] : cases) {
    Type("fHeatCool.txtChngeOverDelay", delay);
    Type("fOptions.txtHeatCool", cycle);
    prompts.asked.clear();
    EXPECT_TRUE(Leave("txtHeatCool"));
    EXPECT_EQ(prompts.Last().text, fault) << cycle;
    const std::string before = Extra(tests::kAssigned);
    const std::size_t told = Messages().size();
    Click("cmdApply");
    EXPECT_EQ(base::Record(Extra(tests::kAssigned)).Field(0) == cycle, fault.empty()) << cycle;
    if (fault.empty()) continue;
    EXPECT_EQ(Extra(tests::kAssigned), before);
    EXPECT_EQ(Messages()[told], "WriteValue/Options: " + fault);
  }
  Type("fOptions.txtHeatCool", "9");
  ToggleCheck("chkAlternate");
  EXPECT_FALSE(Enabled("txtHeatCool"));
  prompts.asked.clear();
  Leave("txtHeatCool");
  EXPECT_TRUE(prompts.asked.empty());  // the rule is silent for what cannot be edited

  Store(52, "UCPTextraConfig", "60 45 100.0 120 0");
  Page("fOptions").FillValue();
  EXPECT_EQ(Text("fOptions.txtChangeOver"), "22.5");
  Find<ui::CheckBox>("fOptions.chkAlternate").SetChecked(false);
  ToggleCheck("chkAlternate");
  Click("cmdApply");
  EXPECT_EQ(base::Record(Extra(tests::kAssigned)).Field(1), "44");

  const std::string refusal = "The change over minimum demand msut be between 0 and 100%";
  const std::pair<const char*, bool> texts[] = {{"0", true},      {"100", true},   {"100.4", true},
                                                {"100.6", false}, {"101", false},  {"-1", false},
                                                {"99999", false}, {"1e30", false}, {"", false}};
  for (const auto& [text, accepted] : texts) {
    Type("fOptions.txtChangeOver", text);
    prompts.asked.clear();
    EXPECT_EQ(Leave("txtChangeOver"), accepted) << text;
    EXPECT_EQ(prompts.Last().text, accepted ? "" : *text ? refusal : "Invalid value for this field");
  }
}

TEST_F(OptionsTest, AValueThatCannotBeShownIsNamed) {
  tests::FailurePlan plan;
  throughHost = tests::FailingBy(plan);
  Open(tests::kAssigned);
  shell::ISubForm& page = Page("fOptions");
  plan.Arm(tests::Failure::kOtherText, {}, false);
  page.FillValue();
  plan.otherText = "60 x 100.0 120 0";
  // The type of the occupancy command is read last, the demand before it.
  const std::tuple<int, tests::Failure, const char*> cases[] = {
      {1, tests::Failure::kOtherText, "FillValue/Options: UCPTextraConfig: \"x\""},
      {0, tests::Failure::kShortRecord, "FillValue/Options: nviOccCmd: SCPTnvType "}};
  const int calls = plan.seen;
  for (const auto& [before, failure, told] : cases) {
    plan.Arm(failure, {calls - before}, false);
    page.FillValue();
    EXPECT_THAT(LastMessage(), testing::StartsWith(told));
  }
}

TEST_F(OptionsTest, GroupsFollowTheirCheckBoxesAndTheTypeOfTheOccupancyCommand) {
  Open(tests::kUnassigned);
  const std::pair<const char*, const char*> groups[] = {
      {"chkAlternate", "txtChangeOver"}, {"chkTerminal", "optTerminal"}, {"chkEnable", "txtAt"}};
  for (const auto& [box, group] : groups) {
    const bool checked = Find<ui::CheckBox>("fOptions." + std::string(box)).Checked();
    EXPECT_EQ(Enabled(group), checked) << box;
    ToggleCheck(box);
    EXPECT_EQ(Enabled(group), !checked) << box;
  }
  Page("fOptions").FillValue();
  EXPECT_FALSE(Enabled("txtStartTime"));  // type 109 is the standard one; the name test says the opposite
}

}  // namespace
