// How the program ends, and that nothing is freed under a call or a question that is still open.
#include "fault_of.h"
#include "tool_test.h"

namespace {

using tests::Tool;
using tests::ToolTest;

/// Stands before the host's objects and lets something happen while a call of the tool is under way.
class BusyHost : public automation::Target {
 public:
  BusyHost(automation::Object inner, const std::function<void()>& duringCall)
      : inner_(std::move(inner)), duringCall_(duringCall) {}

  automation::Value Invoke(automation::Access access, std::string_view member,
                           std::span<const automation::Value> arguments) override {
    automation::Value answer = inner_.GetTarget()->Invoke(access, member, arguments);
    if (duringCall_) duringCall_();
    const auto* object = std::get_if<automation::Object>(&answer.Get());
    return object && *object ? automation::Object(std::make_shared<BusyHost>(*object, duringCall_)) : answer;
  }

 private:
  automation::Object inner_;
  const std::function<void()>& duringCall_;
};

void LetGo(Tool& tool) {
  if (!tool.api) return;
  tool.api.Put("Visible", false);
  tool.api = {};
  for (int i = 0; i < 3; ++i) tool.loop.Tick();
}

void LeaveBox(Tool& tool) {
  auto& box = tool.Find<ui::TextBox>("fPID.txtPIDTemp(0)");
  box.Enter();
  box.Type("abc");
  box.Leave();
}

std::string Command(const automation::Object& api) {
  return tests::ErrorOf([&] { api.Call("SendCommand", 0, 0, ""); });
}

const std::string kBusy =
    tests::Raised("The configuration tool is busy. Please try again when it has finished.");

TEST(Ending, AQuestionFromAnywhereHoldsItUpAndKeepsOtherCommandsOut) {
  const struct {
    const char* where;
    std::function<void(Tool&)> act;
  } cases[] = {
      {"a page's question", [](Tool& tool) { tool.AssignInput(6, "SPACE_ENTHALPY"); }},
      {"a page's refusal", [](Tool& tool) { tool.AssignOutput(3, "HEATING_2"); }},
      {"a box that is left", LeaveBox},
      {"the main window", [](Tool& tool) { tool.Find<ui::OptionButton>("optUnit(1)").Click(); }},
      {"the log",
       [](Tool& tool) { dynamic_cast<ui::Button*>(tool.Main().Logger().Find("BtnCmd(1)"))->Click(); }},
      {"the language page",
       [](Tool& tool) {
         tool.loop.whileOpen = [&tool] {
           tool.prompts.whileAsked();
           tool.Main().LanguagePage().Window().Close();
         };
         tool.Main().LanguagePage().Open();
       }},
  };
  for (const auto& item : cases) {
    Tool tool;
    tool.Open(tests::kAssigned);
    bool asked = false;
    tool.prompts.whileAsked = [&] {
      asked = true;
      tool.building.Faults().StartCounting();
      tool.Find<ui::Button>("cmdRefresh").Click();
      EXPECT_EQ(tool.building.Faults().Count("Network.BeginTransaction"), 0u) << item.where;
      EXPECT_EQ(Command(tool.api), kBusy) << item.where;
      LetGo(tool);
      EXPECT_FALSE(tool.quit) << item.where;
    };
    tool.fileDialog.whileAsked = tool.prompts.whileAsked;
    tool.prompts.answers = {ui::Answer::kYes};
    item.act(tool);
    EXPECT_TRUE(asked) << item.where;
    tool.loop.Tick();
    EXPECT_TRUE(tool.quit) << item.where;
  }
}

TEST(Ending, FreesNothingUnderACallOfThePages) {
  const std::pair<const char*, std::function<void(Tool&)>> cases[] = {
      {"an output", [](Tool& tool) { tool.AssignOutput(1, "FAN_ON_OFF"); }},
      {"an input", [](Tool& tool) { tool.AssignInput(6, "SPACE_HUMIDITY"); }},
  };
  for (const auto& [what, act] : cases) {
    std::function<void()> duringCall;
    Tool tool;
    tool.throughHost = [&](std::string_view, const automation::Object& object) {
      return automation::Object(std::make_shared<BusyHost>(object, duringCall));
    };
    tool.Open(tests::kUnassigned);
    bool called = false;
    duringCall = [&] {
      LetGo(tool);
      called = true;
    };
    act(tool);
    EXPECT_TRUE(called) << what;
    tool.loop.Tick();
    EXPECT_TRUE(tool.quit) << what;
    duringCall = nullptr;
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
  const struct {
    const char* what;
    std::vector<std::function<void(Tool&)>> acts;
    bool ends;
  } cases[] = {
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
      {"another client came after that", {hostDied, open, hide}, false},
  };
  for (const auto& item : cases) {
    Tool tool;
    for (const auto& act : item.acts) act(tool);
    for (int i = 0; i < 2; ++i) tool.loop.Tick();
    EXPECT_EQ(tool.quit, item.ends) << item.what;
  }
}

TEST(Ending, ComesToAServerWhoseClientNeverCame) {
  tests::StandIns around;
  const shell::Platform platform = around.Bare();
  for (const bool came : {false, true}) {
    bool quit = false;
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
  EXPECT_EQ(
      Command(second),
      tests::Raised("The configuration window is open on RTU-1 North wing. Please close it before another "
                    "device is configured."));
  for (const char* name : {"NetworkName", "NetworkIpAddress", "NetworkIpPort"})
    second.Put(name, api.Get(name));
  second.Put("DeviceName", "rtu-1 NORTH wing");
  const auto calls = building.Faults().Total();
  EXPECT_EQ(Command(second), "no error");
  EXPECT_EQ(building.Faults().Total(), calls) << "its window is there";
}

TEST_F(ToolTest, ARefusedStartKeepsNothingButItsLog) {
  building.Faults().Fail({.member = "Property.Precision"});
  Open(tests::kAssigned);
  EXPECT_TRUE(Main().Refused());
  building.Faults().Clear();
  Tool other(building);
  other.Open(tests::kAssigned);
  EXPECT_FALSE(other.Main().Refused()) << "the device is free";
}

TEST_F(ToolTest, ARefusedStartCanBeRepeatedWhileItsLogIsUp) {
  building.Faults().Fail({.member = "Property.Precision"});
  Open(tests::kAssigned);
  Main().onActivate();
  logger::fMessage& log = Main().Logger();
  building.Faults().Clear();
  EXPECT_EQ(Command(api), "no error");
  EXPECT_FALSE(Main().Refused());
  EXPECT_TRUE(Main().Visible() && log.Visible());
  log.Close();
  loop.Tick();
  EXPECT_FALSE(quit);
}

}  // namespace
