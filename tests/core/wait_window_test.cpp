#include "tool_test.h"

namespace {

using namespace std::chrono_literals;

struct WaitWindow : testing::Test {
  bool Overdue(std::chrono::milliseconds elapsed) { return tool.program.CallOverdue("Value", elapsed); }
  std::string Text(const char* control) { return tool.program.Waiting().Find(control)->Text(); }
  bool Shown() { return tool.program.Waiting().Visible(); }
  void Click(const char* name) {
    EXPECT_TRUE(dynamic_cast<ui::Button*>(tool.program.Waiting().Find(name))->Click()) << name;
  }

  tests::Tool tool;
};

TEST_F(WaitWindow, WhoWaitsIsAskedAgainAfterTwiceTheTime) {
  EXPECT_FALSE(Overdue(5s));
  EXPECT_TRUE(Shown());
  EXPECT_EQ(Text("lblMessage"), "The host has not answered \"Value\" for 5 seconds.");
  Click("cmdWait");
  EXPECT_FALSE(Shown());
  EXPECT_FALSE(Overdue(9'900ms));
  EXPECT_FALSE(Shown());
  EXPECT_FALSE(Overdue(10s));
  EXPECT_TRUE(Shown());
  tool.program.CallOver();
  EXPECT_FALSE(Shown());
  EXPECT_FALSE(Overdue(5s));  // another call starts anew
  EXPECT_TRUE(Shown());
}

TEST_F(WaitWindow, CancelGivesUpThisCallAlone) {
  EXPECT_FALSE(Overdue(5s));
  Click("cmdCancel");
  EXPECT_TRUE(Overdue(6s));
  EXPECT_TRUE(tool.program.Busy()) << "nothing else is begun until the call has ended";
  EXPECT_EQ(Text("lblMessage"), "Canceled; waiting for the host's program to answer or end.");
  EXPECT_FALSE(tool.program.Waiting().Find("cmdWait")->Usable());
  tool.program.CallOver();
  EXPECT_FALSE(tool.program.Busy());
  EXPECT_FALSE(Overdue(5s));
  for (const char* button : {"cmdWait", "cmdCancel"})
    EXPECT_TRUE(tool.program.Waiting().Find(button)->Usable()) << button;
}

// The host that is silent is the one that has the translations.
TEST_F(WaitWindow, SpeaksTheLanguageInUseWithoutAskingTheHost) {
  tool.building.Language().Put("Language", "German");
  tool.Open(tests::kAssigned);
  const auto calls = tool.building.Faults().Total();
  EXPECT_FALSE(Overdue(5s));
  EXPECT_EQ(tool.program.Waiting().Title(), "Der Host antwortet nicht");
  EXPECT_EQ(Text("cmdWait"), "&Warten");
  EXPECT_EQ(Text("lblMessage"), "Der Host hat seit 5 Sekunden nicht auf „Value“ geantwortet.");
  EXPECT_EQ(tool.building.Faults().Total(), calls);
}

}  // namespace
