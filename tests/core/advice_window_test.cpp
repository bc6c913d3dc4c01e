// The window of advice: follows what is typed, says why, goes to the field, speaks the language in use.
#include "advice/fAdvice.h"
#include "configuration/desk.h"
#include "tool_test.h"

namespace {

struct AdviceWindowTest : tests::ToolTest {
  void TearDown() override {
    std::filesystem::remove_all(std::filesystem::path(Documents()) / "KV-TARN" / "Notes");
  }
  advice::fAdvice& Window() { return Companion<advice::fAdvice>(); }
  ui::ListView& List() { return In<ui::ListView>(Window(), "lvwAdvice"); }
  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    for (const auto& row : List().Rows())
      lines.push_back(row.cells[1] + " " + row.cells[2] + ": " + row.cells[3]);
    return lines;
  }
};

TEST_F(AdviceWindowTest, FollowsWhatIsTypedAndGoesThere) {
  OpenPage(tests::kAssigned, "fPID");
  ChooseEntry("Advice");
  ASSERT_TRUE(Window().Visible());
  const auto before = Lines();
  Type("fPID.txtPIDTemp(0)", "0");
  const auto after = Lines();
  ASSERT_EQ(after.size(), before.size() + 1) << testing::PrintToString(after);
  EXPECT_EQ(after[0], "Fault Outputs: Output 3, Permit override") << "faults come first";
  EXPECT_EQ(after[1], "Fault PID: Space Temperature, Proportional Gain");
  List().Choose(1);
  EXPECT_THAT(Window().Find("lblWhy")->Text(), testing::HasSubstr("Why: "));
  ChoosePage("fAlarm");
  List().Open();
  EXPECT_EQ(Text("lblTitle"), "PID Configuration");
  EXPECT_EQ(Page("fPID").Focused(), &Find("fPID.txtPIDTemp(0)"));

  UseLanguage("German");
  EXPECT_EQ(Lines()[0], "Fehler Ausgänge: Ausgang 3, Übersteuerung erlaubt");
  Type("fPID.txtPIDTemp(0)", "25");
  EXPECT_EQ(Lines().size(), before.size());
  Type("txtLocation", "");
  EXPECT_EQ(Lines().size(), before.size() + 1);
  Main().Device().InputVariables[1]["nvoHwInput1"].ChangeType("SNVT_press_p");  // by another client
  Click("cmdRefresh");
  EXPECT_EQ(Lines().size(), before.size() + 2);
}

TEST_F(AdviceWindowTest, CountsWhatIsOpenAndKeepsWhatIsAccepted) {
  Open(tests::kAssigned);
  const std::string before = Text("cmdAdvice");
  AssignOutput(5, "HUMIDIFIER_MOD");
  EXPECT_TRUE(Text("cmdAdvice").starts_with("2 faults, ")) << "the page has read what its hardware is";
  AssignOutput(5, "HUMIDIFIER_ON_OFF");
  ChooseEntry("Advice");
  EXPECT_EQ(Text("cmdAdvice"), before) << "the settings that no page shows change nothing";
  Type("fPID.txtPIDTemp(0)", "0");
  EXPECT_TRUE(Text("cmdAdvice").starts_with("2 faults, ")) << Text("cmdAdvice");
  const auto accept = [this](std::size_t line, const char* reason) {
    List().Choose(line);
    loop.whileOpen = [&] {
      auto& asked = Window().AcceptWindow();
      In<ui::TextBox>(asked, "txtReason").Type(reason);
      if (!In<ui::Button>(asked, "cmdOK").Click()) asked.Close();
    };
    ClickIn(Window(), "cmdAccept");
  };
  accept(1, "  ");
  EXPECT_EQ(Lines()[1], "Fault PID: Space Temperature, Proportional Gain") << "not without a reason";
  accept(1, "by hand, see D&I sheet");
  EXPECT_EQ(Lines().back(), "Accepted PID: Space Temperature, Proportional Gain");
  List().Choose(List().Rows().size() - 1);
  EXPECT_THAT(Window().Find("lblAccepted")->Text(), testing::EndsWith("by hand, see D&&I sheet"))
      << "no key underlined";
  EXPECT_EQ(Text("cmdAdvice"), before);

  // The review names what is open, and lets it be applied.
  ChooseEntry("Review before applying");
  std::vector<ui::ListView::Row> review;
  loop.whileOpen = [&] {
    review = In<ui::ListView>(Main().ChangesWindow(), "lvwChanges").Rows();
    ClickIn(Main().ChangesWindow(), "cmdApply");
  };
  Save();
  ASSERT_EQ(review.size(), 2u) << "one fault, one change";
  EXPECT_EQ(review[0].cells[0] + "|" + review[0].cells[5], "Outputs|Output 3 (COOLING_1) is in manual: ON.");

  // The record knows it, and the next time, in other units too; another value opens it again.
  const auto lines = Window().AdviceOn(Companion<configuration::Desk>().Take(false));
  const auto line = std::ranges::find(lines, "by hand, see D&I sheet", &configuration::AdviceLine::reason);
  ASSERT_NE(line, lines.end());
  EXPECT_TRUE(line->fault);
  EXPECT_EQ(line->who, "installer");
  Window().Loaded();
  EXPECT_EQ(Text("cmdAdvice"), before);
  Find<ui::OptionButton>("optUnit(1)").Click();
  EXPECT_EQ(Text("cmdAdvice"), before);
  Type("fPID.txtPIDTemp(0)", "-1");
  EXPECT_NE(Text("cmdAdvice"), before);
}

}  // namespace
