// The check-out of outputs: what is overridden and for how long, and that it is put back whatever fails, or
// named until a later start has done so.
#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "checkout/fCheckOut.h"
#include "faulty_host.h"
#include "host/contract.h"
#include "tool_test.h"

namespace {

using checkout::fCheckOut;
using configuration::TextOf;
using testing::HasSubstr;
using tests::Failure;
using Lines = std::vector<std::string>;

/// The whole tool, or one without pages, with the check-out as a person does it.
struct CheckOutTool : tests::Tool {
  using Tool::Tool;

  fCheckOut& Window() { return Companion<fCheckOut>(); }
  bool Press(const char* button) { return In<ui::Button>(Window(), button).Click(); }
  void Write(const char* box, const char* text) { In<ui::TextBox>(Window(), box).Type(text); }
  std::string Says(const char* label) { return Window().Find(label)->Text(); }
  ui::ListView& Steps() { return In<ui::ListView>(Window(), "lvwSteps"); }
  /// Does `work` in the window, and closes it.
  void CheckOut(const std::function<void()>& work) {
    bool opened = false;
    loop.whileOpen = [&] {
      opened = true;
      work();
      Press("cmdClose");
    };
    ChooseEntry("Check out outputs...");
    if (!opened) throw base::Error("not opened: " + LastPrompt());
  }
  std::string Override(int output) {
    return building.StoredText(device, "HardwareOutput" + std::to_string(output), 4, "SNVT_switch");
  }
  std::filesystem::path List() {
    return configuration::UnitFile(program.GetSettings(), Main().Opened, configuration::kOverridden).Path();
  }
  std::string LastPrompt() { return prompts.Last().text; }

  const char* device = tests::kAssigned;
};

struct CheckOutTest : testing::Test, CheckOutTool {
  CheckOutTest() : CheckOutTool(Options()) {}
  void TearDown() override {
    std::filesystem::remove_all(std::filesystem::path(Documents()) / "KV-TARN" / "Notes");
  }
};

TEST_F(CheckOutTest, LeadsThroughTheStepsAndKeepsWhatWasSeen) {
  Open(device);
  const std::string before = building.StoredDevice(device);
  EXPECT_EQ(Override(3), "100.0 1") << "was overridden before";
  Lines steps, overridden;
  CheckOut([&] {
    for (const auto& row : Steps().Rows())
      steps.push_back(base::Join({row.cells[0], row.cells[1], row.cells[2]}, " "));
    for (std::size_t i = 0; i < Steps().Rows().size(); ++i) {
      const int output = Steps().Rows()[i].cells[0].back() - '0';
      EXPECT_TRUE(Press("cmdStart"));
      EXPECT_TRUE(std::filesystem::exists(List()));
      overridden.push_back(Override(output));
      if (i == 0) {
        EXPECT_EQ(Says("lblStep"), "Output 1, FAN_ON_OFF, switches ON.");
        EXPECT_FALSE(Press("cmdStart"));
        Steps().ChooseRows({4});
        EXPECT_EQ(Steps().Selection(), std::vector<std::size_t>{0}) << "no other step while one stands";
        Write("txtRemark", "Belt is loose");
      }
      EXPECT_TRUE(Press(i == 0 ? "cmdNo" : i == 1 ? "cmdSkip" : "cmdYes"));
      EXPECT_EQ(building.StoredDevice(device), before) << i;
      EXPECT_FALSE(std::filesystem::exists(List()));
    }
  });
  EXPECT_EQ(steps.size(), 16u);
  EXPECT_EQ(steps[1], "Output 1 FAN_ON_OFF OFF");
  EXPECT_EQ(Lines(steps.end() - 3, steps.end()),
            (Lines{"Output 7 HEATING_MOD 0 %", "Output 7 HEATING_MOD 50 %", "Output 7 HEATING_MOD 100 %"}));
  EXPECT_EQ(Lines(overridden.begin() + 8, overridden.begin() + 13),
            (Lines{"100.0 1", "0.0 0", "0.0 1", "50.0 1", "100.0 1"}));
  // A second look replaces the first; the notes are in the next window, in files and in the record.
  CheckOut([&] {
    EXPECT_EQ(Steps().Rows()[0].cells[4], "Belt is loose");
    Press("cmdStart");
    Press("cmdYes");
  });
  const auto notes =
      configuration::UnitFile(program.GetSettings(), Main().Opened, configuration::kNotes).Read();
  const auto& lines = notes.at(configuration::kCheckOut);
  ASSERT_EQ(lines.size(), 16u);
  EXPECT_EQ(TextOf(lines[0], "result") + TextOf(lines[0], "remark"), "moved");
  EXPECT_EQ(TextOf(lines[1], "result") + " by " + TextOf(lines[1], "who"), "skipped by installer");
}

TEST_F(CheckOutTest, HoldsTheOtherHalfOfAnActuatorOff) {
  device = tests::kPressure;
  Open(device);
  CheckOut([&] {
    Steps().ChooseRows({2});
    EXPECT_EQ(Says("lblStep"),
              "Output 2, HEAT_VALVE_CLOSE, switches ON. HEAT_VALVE_OPEN stays OFF meanwhile.");
    Press("cmdStart");
    EXPECT_EQ(Override(1) + ", " + Override(2), "0.0 0, 100.0 1");
  });
  EXPECT_EQ(Override(1) + ", " + Override(2), "0.0 -1, 0.0 -1") << "closing puts back";
}

TEST_F(CheckOutTest, GoesBackByItselfWhenTheTimeIsOver) {
  Open(device);
  auto time = std::chrono::steady_clock::now();
  Window().Outputs().now = [&time] { return time; };
  CheckOut([&] {
    for (const char* wrong : {"", "4", "3601", "7.5", "soon"}) {
      Write("txtLimit", wrong);
      Press("cmdStart");
      EXPECT_EQ(Override(1), "0.0 -1") << wrong;
    }
    EXPECT_EQ(LastPrompt(), "The time limit is a whole number of seconds from 5 to 3600.");
    Write("txtLimit", "60");
    Press("cmdStart");
    time += std::chrono::seconds(59);
    loop.Tick();
    EXPECT_EQ(Override(1), "100.0 1");
    EXPECT_THAT(Says("lblState"), HasSubstr("in 1 sec"));
    time += std::chrono::seconds(1);
    loop.Tick();
    EXPECT_EQ(Override(1), "0.0 -1");
    EXPECT_TRUE(Press("cmdYes")) << "the answer is still due";
  });
  CheckOut([&] { EXPECT_EQ(Says("txtLimit"), "60"); });
}

TEST_F(CheckOutTest, BeginsOnlyWhereItMayAndLetsNothingElseBeginMeanwhile) {
  CheckOutTool without(building, std::span<const shell::PageEntry>());
  without.Open(tests::kUnassigned);
  EXPECT_THROW(without.CheckOut([] {}), base::Error);
  EXPECT_EQ(without.LastPrompt(), "No output with a function drives its local hardware.");
  const auto refusal = [this] {
    EXPECT_THROW(CheckOut([] {}), base::Error);
    return LastPrompt();
  };
  Open(device);
  const std::string before = building.StoredDevice(device);
  ChooseEntry("Locked");
  EXPECT_EQ(refusal(), "The window is locked. Unlock it to check the outputs.");
  ChooseEntry("Locked");
  Type("fPID.txtPIDTemp(0)", "30");
  EXPECT_EQ(refusal(), "There are changes that are not applied. Apply them or take them back first.");
  Click("cmdRefresh");
  // Without a list on the disk nothing is overridden.
  std::filesystem::create_directories(List() / "in the way");
  EXPECT_THAT(refusal(), HasSubstr("cannot be read"));
  std::filesystem::remove_all(List());
  CheckOut([&] {
    std::filesystem::create_directories(List() / "in the way");
    Press("cmdStart");
    EXPECT_THAT(LastPrompt(), HasSubstr("cannot be written"));
    EXPECT_EQ(building.StoredDevice(device), before);
    std::filesystem::remove_all(List());
    Press("cmdStart");
    const std::string stands = building.StoredDevice(device);
    Find<ui::Button>("cmdRefresh").Click();
    EXPECT_FALSE(Main().Close());
    EXPECT_THROW(api.Call("SendCommand", 0, 0, ""), automation::Error);
    EXPECT_EQ(building.StoredDevice(device), stands);
    EXPECT_NE(Main().onQueryEnd(), "");
    loop.Tick();
    EXPECT_EQ(Override(1), "0.0 -1") << "the user signs out, and no call leaves when the session ends";
    EXPECT_EQ(Window().defaultButton, nullptr) << "Enter behind a remark overrides nothing again";
    Press("cmdNo");
    Press("cmdStart");
    Main().onSessionEnd();
    EXPECT_EQ(Override(1), "0.0 -1") << "without being asked";
  });
}

TEST_F(CheckOutTest, IsRefusedByADeviceThatDoesNotKeepItAndEndsWithTheSession) {
  Open(device);
  const std::string before = building.StoredDevice(device);
  const automation::Object objects = Main().ObjectServer.Child("Device").Child("LonMarkObjects");
  const automation::Object property =
      objects.Child("Item", "HardwareOutput1").Child("ConfigProperties").Child("Item", 4);
  const auto atCommit = [this](const std::function<void()>& work) {
    building.Faults().Fail({.member = "Network.CommitTransaction", .instead = work});
  };
  CheckOut([&] {
    atCommit([&] { property.Put("Value", "0.0 -1"); });
    Press("cmdStart");
    EXPECT_EQ(LastPrompt(), "The output was not overridden: the device holds 0.");
    EXPECT_FALSE(Press("cmdYes"));
    building.Faults().Fail({.member = "Property.formatName", .instead = [this] { Main().onQueryEnd(); }});
    Press("cmdStart");
    loop.Tick();
    EXPECT_EQ(Override(1), "0.0 -1") << "asked while it was read";
    Press("cmdSkip");
    bool signedOut = false;
    atCommit([&] {
      signedOut = true;
      Main().onSessionEnd();
    });
    Press("cmdStart");
    EXPECT_TRUE(signedOut);
    EXPECT_EQ(building.StoredDevice(device), before) << "signed out while it was written";
  });
}

// What was put back is only pending while the transaction is open.
TEST_F(CheckOutTest, IsNotForgottenWhenTheTransactionThatPutsBackCannotBeEnded) {
  Open(device);
  CheckOut([&] {
    Press("cmdStart");
    building.Faults().Fail({.member = "Network.CommitTransaction", .instead = [this] {
                              building.Faults().Fail({.member = "Network.CancelTransaction", .once = false});
                              throw automation::Error(automation::kApplicationDefined, "The host refuses.");
                            }});
    Press("cmdYes");
  });
  EXPECT_THAT(LastPrompt(), HasSubstr("COULD NOT BE PUT BACK"));
  EXPECT_TRUE(std::filesystem::exists(List()));
}

struct Planned {
  tests::FailurePlan plan;  // outlives the tool
};

/// Without pages, over a host that fails as planned.
struct TroubledTool : Planned, CheckOutTool {
  explicit TroubledTool(const simulator::Building& existing)
      : CheckOutTool(existing, std::span<const shell::PageEntry>()) {
    throughHost = [this](std::string_view id, const automation::Object& object) {
      return id == host::kObjectServerId ? tests::FaultyTarget::Wrap(plan, object) : object;
    };
    Open(device);
  }
};

/// The next start asks where something is left, and puts it back.
void ExpectPutBack(const simulator::Building& building, const std::string& before, const std::string& where) {
  const bool left = building.StoredDevice(tests::kAssigned) != before;
  TroubledTool next(building);
  next.prompts.answers = {ui::Answer::kYes};
  next.loop.Tick();
  EXPECT_EQ(building.StoredDevice(next.device), before) << where;
  EXPECT_FALSE(std::filesystem::exists(next.List())) << where;
  EXPECT_EQ(next.prompts.asked.size(), left ? 1u : 0u) << where;
}

/// One check-out of the first output with a failing call; then a start without a failure. Answers how many
/// calls were made.
int FailOnce(const simulator::Building& building, Failure failure, int call, bool forever) {
  const std::string where = "way " + std::to_string(static_cast<int>(failure)) + ", call " +
                            std::to_string(call) + (forever ? " on" : "");
  const std::string before = building.StoredDevice(tests::kAssigned);
  int seen = 0;
  {
    TroubledTool tool(building);
    tool.CheckOut([&] {
      tool.plan.Arm(failure, {call}, forever);
      tool.Press("cmdStart");
      tool.Press("cmdYes");
      EXPECT_TRUE(forever || building.StoredDevice(tool.device) == before) << where << ": not at once";
    });
    const bool back = building.StoredDevice(tool.device) == before;
    EXPECT_TRUE(forever || (back && tool.plan.open == 0)) << where;
    if (!back) {
      EXPECT_THAT(tool.LastPrompt(), HasSubstr("OF RTU-1 North wing COULD NOT BE PUT BACK")) << where;
      EXPECT_THAT(tool.LastPrompt(), HasSubstr("Output 1, FAN_ON_OFF")) << where;
      EXPECT_TRUE(std::filesystem::exists(tool.List())) << where;
    }
    tool.plan.Disarm();
    seen = tool.plan.seen;
    if (back && !std::filesystem::exists(tool.List())) return seen;
  }
  ExpectPutBack(building, before, where);
  return seen;
}

using CheckOutFaults = CheckOutTest;

TEST_F(CheckOutFaults, AnyCallMayFail) {
  int met = 0;
  for (const Failure failure : tests::kAllFailures) {
    for (const bool forever : {false, true}) {
      for (int call = 1; FailOnce(building, failure, call, forever) >= call && !HasFailure(); ++call) ++met;
    }
  }
  EXPECT_GT(met, 200);
}

using CheckOutKilled = CheckOutTest;

#ifndef _WIN32
/// A process ends at the call, as if it had been killed; the host keeps its values. Answers whether it came
/// so far.
bool KilledAt(const simulator::BuildingOptions& options, int call) {
  const pid_t child = fork();
  if (child == 0) {
    TroubledTool tool{simulator::Building(options)};
    tool.plan.Arm(Failure::kApplicationError, {}, false);
    tool.plan.onCall = [call](int seen) {
      if (seen == call) _exit(9);
    };
    tool.CheckOut([&] {
      tool.Press("cmdStart");
      tool.Press("cmdYes");
    });
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status)) << call;
  return WEXITSTATUS(status) == 9;
}

TEST_F(CheckOutKilled, AtAnyCallTheNextStartPutsBackWhatIsOverridden) {
  simulator::BuildingOptions options = Options();
  options.storeFile = std::filesystem::path(Documents()) / "killed.json";
  const std::string before = simulator::Building(options).StoredDevice(tests::kAssigned);
  int left = 0;
  for (int call = 1; KilledAt(options, call); ++call) {
    const simulator::Building after(options);
    left += after.StoredDevice(tests::kAssigned) != before;
    ExpectPutBack(after, before, "call " + std::to_string(call));
  }
  EXPECT_GT(left, 5);
}
#endif

TEST_F(CheckOutKilled, WhatItLeftIsPutBackFirst) {
  const std::string before = building.StoredDevice(device);
  {
    TroubledTool tool(building);
    // Nothing of its end happens.
    checkout::CheckOut killed(tool.Main().Device(), tool.Main().Context().transactions,
                              {tool.program.GetSettings(), tool.Main().Opened, configuration::kOverridden});
    killed.Start(checkout::ReadSteps(tool.Main().Device()).front(), std::chrono::seconds(60));
  }
  {
    TroubledTool next(building);
    next.prompts.answers = {ui::Answer::kNo, ui::Answer::kNo};
    next.loop.Tick();
    EXPECT_THAT(next.LastPrompt(), HasSubstr("check-out of RTU-1 North wing ended"));
    next.loop.Tick();
    EXPECT_EQ(next.prompts.asked.size(), 1u) << "asked once";
    EXPECT_THROW(next.CheckOut([] {}), base::Error) << "these go first";
    next.Main().Close();
    EXPECT_EQ(next.Override(1), "100.0 1");
  }
  ExpectPutBack(building, before, "the next start");
}

}  // namespace
