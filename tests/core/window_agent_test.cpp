#include "plugin/window_agent.h"

#include <chrono>
#include <set>

#include "fault_of.h"
#include "tool_test.h"

namespace {

using plugin::CWindowAgent;
using plugin::Sight;
using Found = CWindowAgent::Found;

struct WindowAgent : testing::Test, tests::StandIns {
  WindowAgent() {
    agent.onError = [this](int number, std::string_view className, std::string_view routine,
                           std::string_view message) {
      errors.push_back(std::to_string(number) + " " + std::string(className) + "." + std::string(routine) +
                       ": " + std::string(message));
    };
  }

  CWindowAgent agent{memory, desktop};
  CWindowAgent other{memory, desktop};  // of another process
  std::vector<std::string> errors;
};

using Texts = std::vector<std::string>;

TEST_F(WindowAgent, ANewSectionTakesThePlaceOfTheOpenOneAndRefusalsAreToldByTheErrorEvent) {
  EXPECT_TRUE(agent.OpenAndMapPaged(4, "first"));
  EXPECT_TRUE(agent.OpenAndMapPaged(8, ".se\\co/nd."));
  EXPECT_EQ(memory.OpenNames(), Texts{"second"});
  EXPECT_EQ(agent.MappingName(), "second");
  EXPECT_TRUE(agent.ViewAddress() && agent.MappingHandle());

  EXPECT_TRUE(agent.UnMapFile());
  EXPECT_EQ(agent.MappingName(), "");
  EXPECT_FALSE(agent.ViewAddress() || agent.MappingHandle());
  EXPECT_TRUE(memory.OpenNames().empty() && errors.empty());

  memory.opens = false;
  EXPECT_FALSE(agent.OpenAndMapPaged(4, "name"));
  EXPECT_TRUE(errors.empty());
  agent.WindowHandleInMemory("name", 7);
  EXPECT_EQ(agent.RaisePublished("name"), Found::kNoWindow);
  EXPECT_FALSE(agent.UnMapFile()) << "nothing is open";
  memory.opens = true;
  agent.WindowHandleInMemory("name", 7);
  memory.unmaps = false;
  EXPECT_FALSE(agent.UnMapFile());
  EXPECT_EQ(agent.MappingName(), "name") << "what could not be unmapped is still open";
  EXPECT_EQ(errors, (Texts{"16 CWindowAgent.WindowHandleInMemory: Failed to map file",
                           "16 CWindowAgent.UnMapFile: Failed to UnMapFile",
                           "16 CWindowAgent.UnMapFile: Failed to UnMapFile"}));
}

TEST_F(WindowAgent, EachModeShowsTheWindowInItsWay) {
  other.WindowHandleInMemory("name", 31);
  ASSERT_EQ(agent.RaisePublished("name"), Found::kRaised);  // from now on it keeps that handle
  const std::tuple<std::int16_t, bool, bool, std::string, std::string> cases[] = {
      {1, false, true, "show 5 ", "8"},   {1, true, true, "show 3 ", "8"},
      {2, false, true, "show 9 ", "8"},   {2, true, true, "show 3 ", "8"},
      {3, false, false, "show 9 ", "31"}, {3, true, false, "show 3 ", "31"}};
  for (const auto& [mode, maximise, answer, shown, window] : cases) {
    desktop.acts.clear();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(agent.ShowWindowByHandle(mode, 8, maximise), answer);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(333));
    EXPECT_EQ(desktop.acts,
              (Texts{shown + window, "topmost " + window, "not topmost " + window, "activate " + window}));
  }
  desktop.acts.clear();
  for (const std::int16_t mode : std::initializer_list<std::int16_t>{-1, 0, 4})
    EXPECT_FALSE(agent.ShowWindowByHandle(mode, 8, true)) << mode;
  EXPECT_TRUE(desktop.acts.empty());
}

TEST_F(WindowAgent, OnlyAWindowThatIsStillTheOnePublishedIsRaised) {
  EXPECT_EQ(agent.RaisePublished("name"), Found::kNoWindow) << "nothing published";
  EXPECT_TRUE(memory.OpenNames().empty()) << "looking leaves nothing behind";

  other.WindowHandleInMemory("name", 31);
  EXPECT_EQ(agent.RaisePublished("other name"), Found::kNoWindow);
  desktop.sight = Sight::kSilent;
  EXPECT_EQ(agent.RaisePublished("name"), Found::kNoAnswer);
  EXPECT_TRUE(desktop.acts.empty());
  desktop.sight = Sight::kMaximized;
  EXPECT_EQ(agent.RaisePublished("name"), Found::kRaised);
  EXPECT_EQ(agent.WindowHandle(), 31);
  EXPECT_EQ(desktop.acts.front(), "show 3 31") << "a maximised window stays so";

  desktop.acts.clear();
  const std::int32_t mark = desktop.marks[31];
  for (const std::int32_t wrong : {0, mark + 2}) {  // of a window without a mark, or of another name
    desktop.marks[31] = wrong;
    EXPECT_EQ(agent.RaisePublished("name"), Found::kNoWindow);
    EXPECT_EQ(agent.WindowHandle(), 0);
  }
  desktop.marks[31] = mark;
  other.Withdraw();
  EXPECT_EQ(agent.RaisePublished("name"), Found::kNoWindow);
  EXPECT_TRUE(desktop.acts.empty());
}

TEST_F(WindowAgent, DifferentDevicesHaveDifferentShortSectionNames) {
  const auto section = [&](const char* program, const std::string& network, const char* device) {
    EXPECT_TRUE(agent.OpenAndMapPaged(4, plugin::PublishedName(program, network, device)));
    return agent.MappingName();
  };
  std::string umlauts;
  for (int i = 0; i < 200; ++i) umlauts += "\xC3\xBC";
  const std::string names[] = {section("Tool", "Harbour", "RTU-1.1"),  section("Tool", "Harbour", "RTU-11"),
                               section("Tool", "Harbour RTU-1.1", ""), section("Other", "Harbour", "RTU-1.1"),
                               section("Tool!", umlauts, "a"),         section("Tool!", umlauts, "b")};
  EXPECT_THAT(names[0], testing::StartsWith("tool harbour rtu-11 "));
  EXPECT_EQ(section("Tool", "HARBOUR", "\xC3\x9C rtu"), section("Tool", "harbour", "\xC3\xBC RTU"))
      << "in any case";
  EXPECT_EQ(std::set(std::begin(names), std::end(names)).size(), std::size(names));
  EXPECT_LE(names[4].size(), 120u);
}

struct SecondProcess : tests::ToolTest {
  SecondProcess() { first.WindowHandleInMemory(kName, 31); }

  std::string Command() {
    return tests::ErrorOf([this] { api.Call("SendCommand", 0, 0, ""); });
  }

  const std::string kName = plugin::PublishedName(
      "KV-TARN Configuration",
      building.NetworkName() + " at " + building.IpAddress() + ":" + std::to_string(building.Port()),
      tests::kAssigned);
  CWindowAgent first{memory, desktop};
};

TEST_F(SecondProcess, RaisesTheOpenWindowAndEnds) {
  EXPECT_EQ(Command(), "no error");
  EXPECT_EQ(building.Faults().Total(), 0u) << "the host is asked for nothing";
  EXPECT_EQ(desktop.acts.back(), "activate 31");
  EXPECT_EQ(program.Window(), nullptr);
  EXPECT_TRUE(api.Get("Visible").AsBool()) << "the device's window is on the screen";
  api.Put("Visible", true);
  EXPECT_FALSE(quit) << "the host may still ask";
  loop.Tick();
  EXPECT_TRUE(quit) << "although the host still holds the object";
}

TEST_F(SecondProcess, SaysWhyTheOpenWindowCannotBeRaisedAndOpensItsOwnOnceThatOneIsGone) {
  for (const bool denied : {false, true}) {
    memory.denied = denied;
    desktop.sight = denied ? Sight::kNormal : Sight::kSilent;
    EXPECT_EQ(Command(),
              tests::Raised("The configuration window is open on RTU-1 North wing already, " +
                            std::string(denied ? "in a program with other rights." : "but does not answer.") +
                            " Please close it first."));
    EXPECT_EQ(program.Window(), nullptr);
    loop.Tick();
    EXPECT_FALSE(quit) << "the host may try again";
  }
  memory.denied = false;
  EXPECT_EQ(Command(), "no error");
  desktop.marks.clear();
  desktop.acts.clear();
  EXPECT_EQ(Command(), "no error");
  EXPECT_TRUE(desktop.acts.empty());
  EXPECT_TRUE(Main().Visible());
  loop.Tick();
  EXPECT_FALSE(quit) << "it is needed again";
}

}  // namespace
