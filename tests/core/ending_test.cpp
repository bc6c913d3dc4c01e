// How the program ends, and that nothing is freed under a call or a question that is still open.
#include "fault_of.h"
#include "faulty_host.h"
#include "tool_test.h"

namespace {

using tests::Tool;
using tests::ToolTest;

void LetGo(Tool& tool) {
  if (!tool.api) return;
  tool.api.Put("Visible", false);
  tool.api = {};
  for (int i = 0; i < 3; ++i) tool.loop.Tick();
}

std::string Command(const automation::Object& api) {
  return tests::ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); });
}

TEST(Ending, AQuestionFromAnywhereHoldsItUpAndKeepsOtherCommandsOut) {
  const std::pair<const char*, std::function<void(Tool&)>> cases[] = {
      {"a page's question", [](Tool& tool) { tool.AssignInput(6, "SPACE_ENTHALPY"); }},
      {"a page's refusal", [](Tool& tool) { tool.AssignOutput(3, "HEATING_2"); }},
      {"a box that is left",
       [](Tool& tool) {
         tool.Type("fPID.txtPIDTemp(0)", "abc");
         tool.Find<ui::TextBox>("fPID.txtPIDTemp(0)").Leave();
       }},
      {"the main window", [](Tool& tool) { tool.Find<ui::OptionButton>("optUnit(1)").Click(); }},
      {"the log", [](Tool& tool) { Tool::ClickIn(tool.Main().Logger(), "BtnCmd(1)"); }},
      {"the language page",
       [](Tool& tool) {
         tool.loop.whileOpen = [&tool] {
           tool.prompts.whileAsked();
           tool.Main().LanguagePage().Window().Close();
         };
         tool.Main().LanguagePage().Open();
       }},
  };
  for (const auto& [where, act] : cases) {
    SCOPED_TRACE(where);
    Tool tool;
    tool.Open(tests::kAssigned);
    bool asked = false;
    tool.prompts.whileAsked = [&] {
      asked = true;
      tool.building.Faults().StartCounting();
      tool.Find<ui::Button>("cmdRefresh").Click();
      EXPECT_EQ(tool.building.Faults().Count("Network.BeginTransaction"), 0u);
      EXPECT_THAT(Command(tool.api), testing::HasSubstr("The configuration tool is busy."));
      LetGo(tool);
      EXPECT_FALSE(tool.quit);
    };
    tool.fileDialog.whileAsked = tool.prompts.whileAsked;
    tool.prompts.answers = {ui::Answer::kYes};
    act(tool);
    EXPECT_TRUE(asked);
    tool.loop.Tick();
    EXPECT_TRUE(tool.quit);
  }
}

TEST(Ending, FreesNothingUnderACallOfThePages) {
  for (const bool input : {false, true}) {
    tests::FailurePlan plan;
    Tool tool;
    tool.throughHost = tests::FailingBy(plan);
    tool.Open(tests::kUnassigned);
    plan.onCall = [&tool](int) { LetGo(tool); };
    input ? tool.AssignInput(6, "SPACE_HUMIDITY") : tool.AssignOutput(1, "FAN_ON_OFF");
    plan.onCall = nullptr;
    EXPECT_FALSE(tool.api) << input;
    tool.loop.Tick();
    EXPECT_TRUE(tool.quit) << input;
  }
}

TEST(Ending, ComesWhenNobodyUsesTheProgramAnyMore) {
  const auto open = [](Tool& tool) { tool.Open(tests::kAssigned); };
  const auto hide = [](Tool& tool) { tool.api.Put("Visible", false); };
  const auto release = [](Tool& tool) { tool.api = {}; };
  const auto close = [](Tool& tool) { tool.Main().Close(); };
  const auto second = [](Tool& tool) {
    automation::Object(std::make_shared<plugin::PlugInApi>(tool.program));
  };
  const auto otherClass = [](Tool& tool) { tool.program.outstanding = [] { return 1; }; };
  const auto hostDied = [](Tool& tool) { tool.program.ClientsGone(); };
  const auto diesInALoad = [&](Tool& tool) {
    tool.loop.onTurn = [&tool] {
      tool.program.ClientsGone();
      tool.loop.Tick();
    };
    open(tool);
    EXPECT_EQ(tool.Main().Pages().Count(), tool.table.size()) << "it is loaded to its end";
    EXPECT_FALSE(tool.quit);
  };
  const std::tuple<const char*, std::vector<std::function<void(Tool&)>>, bool> cases[] = {
      {"held without a window", {}, false},
      {"let go without a window", {release}, true},
      {"let go of a visible window", {open, release}, false},
      {"let go, then closed", {open, release, close}, true},
      {"held and closed", {open, close}, true},
      {"hidden and held", {open, hide}, false},
      {"hidden and let go", {open, LetGo}, true},
      {"one of two objects let go", {second}, false},
      {"an object of another class is held", {otherClass, release}, false},
      {"the host's process died, its object never released", {hostDied}, true},
      {"it died in the middle of a load", {diesInALoad}, true},
      {"another client came after that", {hostDied, open, hide}, false},
  };
  for (const auto& [what, acts, ends] : cases) {
    Tool tool;
    for (const auto& act : acts) act(tool);
    for (int i = 0; i < 2; ++i) tool.loop.Tick();
    EXPECT_EQ(tool.quit, ends) << what;
  }
}

TEST(Ending, ComesToAServerWhoseClientNeverCame) {
  tests::StandIns around;
  for (const bool came : {false, true}) {
    bool quit = false;
    const shell::Platform platform = around.Bare();
    plugin::Program program(platform, around.memory, around.desktop, plugin::BuildDescription({}),
                            shell::Settings(), {}, [&] { quit = true; });
    if (came) program.outstanding = [] { return 1; };
    around.loop.Tick();
    EXPECT_EQ(quit, !came);
  }
}

TEST_F(ToolTest, ASecondObjectOfTheProcessSharesTheWindow) {
  Open(tests::kAssigned);
  const automation::Object second(std::make_shared<plugin::PlugInApi>(program));
  EXPECT_TRUE(second.Get("Visible").AsBool());
  second.Put("DeviceName", tests::kPressure);
  EXPECT_THAT(Command(second), testing::HasSubstr("The configuration window is open on RTU-1 North wing."));
  for (const char* name : {"NetworkName", "NetworkIpAddress", "NetworkIpPort"})
    second.Put(name, api.Get(name));
  second.Put("DeviceName", "rtu-1 NORTH wing");
  const auto calls = building.Faults().Total();
  EXPECT_EQ(Command(second), "no error");
  EXPECT_EQ(building.Faults().Total(), calls) << "its window is there";
}

TEST(Ending, ARefusedStartKeepsTheReasonInSightAndNothingElseAndCanBeRepeated) {
  for (const bool repeated : {false, true}) {
    Tool tool;
    tool.building.Faults().Fail({.member = "Property.Precision", .text = "The device does not answer."});
    tool.Open(tests::kAssigned);
    EXPECT_EQ(tool.Main().Tag(), "Refuse to start");
    {
      Tool other(tool.building);
      other.Open(tests::kAssigned);
      EXPECT_FALSE(other.Main().Refused()) << "the device is free";
    }
    tool.Main().onActivate();  // the window becomes active for the first time
    logger::fMessage& log = tool.Main().Logger();
    EXPECT_TRUE(!tool.Main().Visible() && log.Visible());
    const auto messages = tool.Messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_THAT(messages[0], testing::StartsWith("FillValue/Heating and cooling: SCPTsetPnts: "));
    EXPECT_THAT(messages[0], testing::HasSubstr("The device does not answer."));
    EXPECT_EQ(messages[1], "Load/Main: The page \"Heating-Cooling\" could not be loaded.");
    tool.loop.Tick();
    EXPECT_FALSE(tool.quit);
    if (repeated) {
      EXPECT_EQ(Command(tool.api), "no error");
      EXPECT_TRUE(!tool.Main().Refused() && tool.Main().Visible() && log.Visible());
    }
    log.Close();
    tool.loop.Tick();
    EXPECT_EQ(tool.quit, !repeated);
  }
}

}  // namespace
