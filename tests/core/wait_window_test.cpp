#include "tool_test.h"

namespace {

using namespace std::chrono_literals;

struct WaitWindow : tests::ToolTest {
  bool Overdue(std::chrono::milliseconds elapsed) { return program.CallOverdue("Value", elapsed); }
  std::string Text(const char* control) { return program.Waiting().Find(control)->Text(); }
  bool Shown() { return program.Waiting().Visible(); }
};

TEST_F(WaitWindow, WhoWaitsIsAskedAgainAfterTwiceTheTimeCancelGivesUpThisCallAlone) {
  EXPECT_FALSE(Overdue(5s));
  EXPECT_TRUE(Shown());
  EXPECT_EQ(Text("lblMessage"), "The host has not answered \"Value\" for 5 seconds.");
  ClickIn(program.Waiting(), "cmdWait");
  EXPECT_FALSE(Shown());
  EXPECT_FALSE(Overdue(9'900ms));
  EXPECT_FALSE(Shown());
  EXPECT_FALSE(Overdue(10s));
  EXPECT_TRUE(Shown());
  program.CallOver();
  EXPECT_FALSE(Shown());
  EXPECT_FALSE(Overdue(5s));  // another call starts anew
  EXPECT_TRUE(Shown());

  ClickIn(program.Waiting(), "cmdCancel");
  EXPECT_TRUE(Overdue(6s));
  EXPECT_TRUE(program.Busy()) << "nothing else is begun until the call has ended";
  EXPECT_EQ(Text("lblMessage"), "Canceled; waiting for the host's program to answer or end.");
  EXPECT_FALSE(program.Waiting().Find("cmdWait")->Usable());
  program.CallOver();
  EXPECT_FALSE(program.Busy());
  EXPECT_FALSE(Overdue(5s));
  for (const char* button : {"cmdWait", "cmdCancel"})
    EXPECT_TRUE(program.Waiting().Find(button)->Usable()) << button;
}

// The host that is silent is the one that has the translations.
TEST_F(WaitWindow, SpeaksTheLanguageInUseWithoutAskingTheHost) {
  building.Language().Put("Language", "German");
  Open(tests::kAssigned);
  const auto calls = building.Faults().Total();
  EXPECT_FALSE(Overdue(5s));
  EXPECT_EQ(program.Waiting().Title(), "Der Host antwortet nicht");
  EXPECT_EQ(Text("cmdWait"), "&Warten");
  EXPECT_EQ(Text("lblMessage"), "Der Host hat seit 5 Sekunden nicht auf „Value“ geantwortet.");
  EXPECT_EQ(building.Faults().Total(), calls);
}

}  // namespace
