// The window of advice: follows what is typed, says why, goes to the field, speaks the language in use.
#include "advice/fAdvice.h"
#include "tool_test.h"

namespace {

struct AdviceWindowTest : tests::ToolTest {
  advice::fAdvice& Window() { return dynamic_cast<advice::fAdvice&>(*Main().Companions().back()); }
  void ShowWindow() {
    for (const ui::MenuItem& item : Main().menu[1].items) {
      if (item.key == "F9") item.onClick();
    }
  }
  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    for (const auto& row : dynamic_cast<ui::ListView&>(*Window().Find("lvwAdvice")).Rows())
      lines.push_back(std::to_string(row.icon) + " " + row.cells[0] + ": " + row.cells[1]);
    return lines;
  }
};

TEST_F(AdviceWindowTest, FollowsWhatIsTypedAndGoesThere) {
  OpenPage(tests::kAssigned, "fPID");
  ShowWindow();
  ASSERT_TRUE(Window().Visible());
  const auto before = Lines();
  Type("fPID.txtPIDTemp(0)", "0");
  auto after = Lines();
  ASSERT_EQ(after.size(), before.size() + 1) << testing::PrintToString(after);
  EXPECT_EQ(after[0], "48 Outputs: Output 3, Permit override") << "faults come first";
  EXPECT_EQ(after[1], "48 PID: Space Temperature, Proportional Gain");
  auto& list = dynamic_cast<ui::ListView&>(*Window().Find("lvwAdvice"));
  list.Choose(1);
  EXPECT_NE(Window().Find("lblWhy")->Text().find("Why: "), std::string::npos);
  ChoosePage("fAlarm");
  list.Open();
  EXPECT_EQ(Text("lblTitle"), "PID Configuration");
  EXPECT_EQ(Main().Pages().FindPage("fPID")->Focused(), &Find("fPID.txtPIDTemp(0)"));

  program.GetStrings().SetLanguage("German");
  Main().ReInitializeStrings();
  EXPECT_EQ(Lines()[0], "48 Ausgänge: Ausgang 3, Übersteuerung erlaubt");
  Type("fPID.txtPIDTemp(0)", "25");
  EXPECT_EQ(Lines().size(), before.size());
  Type("txtLocation", "");
  EXPECT_EQ(Lines().size(), before.size() + 1);
}

}  // namespace
