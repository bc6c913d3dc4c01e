#include "base/record.h"
#include "tool_test.h"

namespace {

using GeneralTest = tests::ToolTest;

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
               {"20", "1e39", "WriteValue/General: UCPTextraConfig: \"1e39\""},
               {"abc", "20", "WriteValue/General: UCPTminOutdoorAir: \"abc\""}};  // the host is asked first
  Open(tests::kAssigned);
  for (const auto& item : cases) {
    const std::string before = Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1);
    Type("fGeneral.txtOutdoor", item.minimum);
    Type("fGeneral.txtOutdoorMax", item.maximum);
    const std::size_t told = Messages().size();
    Page("fGeneral").SetFocused(nullptr);  // the last refusal put the cursor there
    Click("cmdApply");
    if (item.fault.empty()) {
      EXPECT_EQ(Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1), "20.0");
      continue;
    }
    ASSERT_GT(Messages().size(), told);
    EXPECT_THAT(Messages()[told], testing::StartsWith(item.fault));
    EXPECT_EQ(Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1), before) << item.minimum;
    EXPECT_EQ(Text("fGeneral.txtOutdoor"), item.minimum);
    Main().Flags().writeError = false;
    EXPECT_FALSE(Page("fGeneral").WriteValue());
    EXPECT_TRUE(Main().Flags().writeError) << item.minimum;
  }
  Type("fGeneral.txtOutdoor", "21");
  AssignOutput(6, "UNASSIGNED");  // without the damper its boxes are out of reach, and the rule with them
  Click("cmdApply");
  EXPECT_EQ(Stored(tests::kAssigned, 27, "UCPTminOutdoorAir", 1), "21.0");
}

}  // namespace
