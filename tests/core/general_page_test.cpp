#include "tool_test.h"

namespace {

using GeneralTest = tests::ToolTest;

TEST_F(GeneralTest, DamperPositionsMustBeInOrderWhileThereIsADamper) {
  const std::string number = "WriteValue/General: Damper positions must be a number.";
  const std::string order =
      "WriteValue/General: The maximum damper position must be a number greater than or equal to the minimum "
      "damper position.";
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"20", "20", ""},
      {"21", "20", order},
      {"20.5", "20.4", order},
      {"20", "abc", number},
      {"20", "1e39", "WriteValue/General: UCPTextraConfig: \"1e39\""},
      {"abc", "20", "WriteValue/General: UCPTminOutdoorAir: \"abc\""}};  // the host is asked first
  const auto stored = [this] { return Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1); };
  Open(tests::kAssigned);
  for (const auto& [minimum, maximum, fault] : cases) {
    const std::string before = stored();
    Type("fGeneral.txtOutdoor", minimum);
    Type("fGeneral.txtOutdoorMax", maximum);
    const std::size_t told = Messages().size();
    Page("fGeneral").SetFocused(nullptr);  // the last refusal put the cursor there
    Click("cmdApply");
    if (fault.empty()) {
      EXPECT_EQ(stored(), "20.0");
      continue;
    }
    ASSERT_GT(Messages().size(), told);
    EXPECT_THAT(Messages()[told], testing::StartsWith(fault));
    EXPECT_EQ(stored(), before) << minimum;
    EXPECT_EQ(Text("fGeneral.txtOutdoor"), minimum);
    Main().Flags().writeError = false;
    EXPECT_FALSE(Page("fGeneral").WriteValue());
    EXPECT_TRUE(Main().Flags().writeError) << minimum;
  }
  Type("fGeneral.txtOutdoor", "21");
  AssignOutput(6, "UNASSIGNED");  // without the damper its boxes are out of reach, and the rule with them
  Click("cmdApply");
  EXPECT_EQ(stored(), "21.0");
}

TEST_F(GeneralTest, APositionHalfwayBetweenTwoThatCanBeShownStaysUntilTheOtherOneIsTyped) {
  Open(tests::kAssigned);
  Store(27, "UCPTminOutdoorAir", "20.25");
  Click("cmdRefresh");
  ASSERT_EQ(Text("fGeneral.txtOutdoor"), "20.2");
  for (const auto& [box, typed, stored] : {std::tuple("fGeneral.txtBypassTime", "61", "20.25"),
                                           std::tuple("fGeneral.txtOutdoor", "20.3", "20.30")}) {
    Type(box, typed);
    Save();
    EXPECT_EQ(Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 2), stored);
  }
}

}  // namespace
