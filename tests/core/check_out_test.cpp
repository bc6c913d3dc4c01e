// The check-out of outputs: what is overridden and for how long, and that it is put back whatever fails, or
// named until a later start has done so.
#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <iostream>

#include "checkout/fCheckOut.h"
#include "faulty_host.h"
#include "host/contract.h"
#include "tool_test.h"

namespace {

using checkout::fCheckOut;
using configuration::TextOf;
using tests::Failure;
using Lines = std::vector<std::string>;

/// The whole tool, or one without pages, with the check-out as a person does it.
struct CheckOutTool : tests::Tool {
  using Tool::Tool;

  fCheckOut& Window() { return Companion<fCheckOut>(); }
  bool Press(const char* button) { return dynamic_cast<ui::Button&>(*Window().Find(button)).Click(); }
  void Write(const char* box, const char* text) {
    dynamic_cast<ui::TextBox&>(*Window().Find(box)).Type(text);
  }
  std::string Says(const char* label) { return Window().Find(label)->Text(); }
  ui::ListView& Steps() { return dynamic_cast<ui::ListView&>(*Window().Find("lvwSteps")); }
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
  std::string LastPrompt() { return prompts.asked.empty() ? "" : prompts.asked.back().text; }

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
        EXPECT_TRUE(Press("cmdNo"));
        EXPECT_EQ(LastPrompt(), "Say in the remark what happened instead.");
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
    EXPECT_NE(Says("lblState").find("in 1 sec"), std::string::npos) << Says("lblState");
    time += std::chrono::seconds(1);
    loop.Tick();
    EXPECT_EQ(Override(1), "0.0 -1");
    EXPECT_TRUE(Press("cmdYes")) << "the answer is still due";
  });
  CheckOut([&] { EXPECT_EQ(Says("txtLimit"), "60"); });
}

TEST_F(CheckOutTest, TakesNoOtherCommandMeanwhileAndBeginsOnlyWhereItMay) {
  Open(device);
  CheckOut([&] {
    Press("cmdStart");
    const std::string stands = building.StoredDevice(device);
    Find<ui::Button>("cmdRefresh").Click();
    EXPECT_FALSE(Main().Close());
    EXPECT_THROW(api.Call("SendCommand", 0, 0, ""), automation::Error);
    EXPECT_EQ(building.StoredDevice(device), stands);
    Main().onSessionEnd();
    EXPECT_EQ(Override(1), "0.0 -1") << "the user signs out";
  });
}

TEST_F(CheckOutTest, BeginsOnlyWhereItMay) {
  const auto refusal = [this] {
    EXPECT_THROW(CheckOut([] {}), base::Error);
    return LastPrompt();
  };
  Open(device);
  ChooseEntry("Locked");
  EXPECT_EQ(refusal(), "The window is locked. Unlock it to check the outputs.");
  ChooseEntry("Locked");
  Type("fPID.txtPIDTemp(0)", "30");
  EXPECT_EQ(refusal(), "There are changes that are not applied. Apply them or take them back first.");
  Click("cmdRefresh");
  // Without a list on the disk nothing is overridden.
  std::filesystem::create_directories(List() / "in the way");
  const std::string before = building.StoredDevice(device);
  refusal();
  EXPECT_NE(LastPrompt().find("cannot be read"), std::string::npos) << LastPrompt();
  EXPECT_EQ(building.StoredDevice(device), before);
  std::filesystem::remove_all(List());
  CheckOut([&] {
    std::filesystem::create_directories(List() / "in the way");
    Press("cmdStart");
    EXPECT_NE(LastPrompt().find("cannot be written"), std::string::npos) << LastPrompt();
    EXPECT_EQ(building.StoredDevice(device), before);
  });
  std::filesystem::remove_all(List());
}

TEST_F(CheckOutTest, HasNothingToDoWithoutFunctions) {
  Open(tests::kUnassigned);
  EXPECT_THROW(CheckOut([] {}), base::Error);
  EXPECT_EQ(LastPrompt(), "No output with a function drives its local hardware.");
}

/// A host at which something happens before it carries out a call, or instead.
class Meddler : public automation::Target {
 public:
  using Before = std::function<bool(automation::Access access, std::string_view member)>;

  static automation::Object Wrap(const automation::Object& inner, const Before& before) {
    return automation::Object(std::make_shared<Meddler>(inner, before));
  }
  Meddler(automation::Object inner, Before before) : inner_(std::move(inner)), before_(std::move(before)) {}

  automation::Value Invoke(automation::Access access, std::string_view member,
                           std::span<const automation::Value> arguments) override {
    if (!before_(access, member)) return {};
    automation::Value answer = inner_.GetTarget()->Invoke(access, member, arguments);
    const auto* object = std::get_if<automation::Object>(&answer.Get());
    return object && *object ? Wrap(*object, before_) : answer;
  }

 private:
  automation::Object inner_;
  Before before_;
};

TEST_F(CheckOutTest, IsRefusedByADeviceThatDoesNotKeepItAndEndsWithTheSession) {
  bool ignores = false, signsOut = false;
  throughHost = [&](std::string_view id, const automation::Object& object) {
    if (id != host::kObjectServerId) return object;
    return Meddler::Wrap(object, [&](automation::Access access, std::string_view member) {
      if (member == host::kCommitTransaction && std::exchange(signsOut, false)) Main().onSessionEnd();
      return !(ignores && access == automation::Access::kPut && member == host::kValue);
    });
  };
  Open(device);
  const std::string before = building.StoredDevice(device);
  CheckOut([&] {
    ignores = true;
    Press("cmdStart");
    EXPECT_EQ(LastPrompt(), "The output was not overridden: the device holds 0.");
    ignores = false;
    EXPECT_FALSE(Press("cmdYes"));
    signsOut = true;
    Press("cmdStart");
    EXPECT_FALSE(signsOut);
    EXPECT_EQ(building.StoredDevice(device), before) << "signed out while it was written";
  });
}

// What was put back is only pending while the transaction is open.
TEST_F(CheckOutTest, IsNotForgottenWhenTheTransactionThatPutsBackCannotBeEnded) {
  bool refuses = false, open = false;
  throughHost = [&](std::string_view id, const automation::Object& object) {
    if (id != host::kObjectServerId) return object;
    return Meddler::Wrap(object, [&](automation::Access, std::string_view member) {
      const bool begins = member == host::kBeginTransaction;
      const bool ends = member == host::kCommitTransaction || member == host::kCancelTransaction;
      if (refuses && (ends || (begins && std::exchange(open, true))))
        throw automation::Error(automation::kApplicationDefined, "The host refuses.");
      return true;
    });
  };
  Open(device);
  CheckOut([&] {
    Press("cmdStart");
    refuses = true;
    Press("cmdYes");
  });
  EXPECT_NE(LastPrompt().find("COULD NOT BE PUT BACK"), std::string::npos) << LastPrompt();
  EXPECT_TRUE(std::filesystem::exists(List()));
}

/// One check-out of the first output with a failing call; then a start without a failure. Answers how many
/// calls were made.
int FailOnce(const simulator::Building& building, Failure failure, int call, bool forever) {
  const std::string where = "way " + std::to_string(static_cast<int>(failure)) + ", call " +
                            std::to_string(call) + (forever ? " on" : "");
  const std::string before = building.StoredDevice(tests::kAssigned);
  tests::FailurePlan plan;
  bool left = false;
  {
    CheckOutTool tool(building, std::span<const shell::PageEntry>());
    tool.throughHost = [&plan](std::string_view id, const automation::Object& object) {
      return id == host::kObjectServerId ? tests::FaultyTarget::Wrap(plan, object) : object;
    };
    tool.Open(tool.device);
    tool.CheckOut([&] {
      plan.Arm(failure, {call}, forever);
      tool.Press("cmdStart");
      tool.Press("cmdYes");
      EXPECT_TRUE(forever || building.StoredDevice(tool.device) == before) << where << ": not at once";
    });
    const bool back = building.StoredDevice(tool.device) == before;
    EXPECT_TRUE(forever || (back && plan.open == 0)) << where;
    if (!back) {
      EXPECT_NE(tool.LastPrompt().find("OF RTU-1 North wing COULD NOT BE PUT BACK"), std::string::npos)
          << where;
      EXPECT_NE(tool.LastPrompt().find("Output 1, FAN_ON_OFF"), std::string::npos) << where;
      EXPECT_TRUE(std::filesystem::exists(tool.List())) << where;
    }
    plan.Disarm();
    left = !back;
    if (back && !std::filesystem::exists(tool.List())) return plan.seen;
  }
  CheckOutTool next(building, std::span<const shell::PageEntry>());
  next.Open(next.device);
  next.prompts.answers = {ui::Answer::kYes};
  next.loop.Tick();
  EXPECT_EQ(building.StoredDevice(next.device), before) << where;
  EXPECT_FALSE(std::filesystem::exists(next.List())) << where;
  EXPECT_EQ(next.prompts.asked.size(), left ? 1u : 0u) << where << ": asked only where something is left";
  return plan.seen;
}

TEST(CheckOutFaults, AnyCallMayFail) {
  const simulator::Building building(tests::Tool::Options());
  int met = 0;
  for (const Failure failure : tests::kAllFailures) {
    for (const bool forever : {false, true}) {
      for (int call = 1; FailOnce(building, failure, call, forever) >= call && !testing::Test::HasFailure();
           ++call)
        ++met;
    }
  }
  std::cout << "  " << met << " failures\n";
  EXPECT_GT(met, 200);
  std::filesystem::remove_all(std::filesystem::path(tests::Tool::Documents()) / "KV-TARN" / "Notes");
}

#ifndef _WIN32
/// A process ends at the call, as if it had been killed; the host keeps its values. Answers whether it came
/// so far.
bool KilledAt(const simulator::BuildingOptions& options, int call) {
  const pid_t child = fork();
  if (child == 0) {
    const simulator::Building building(options);
    CheckOutTool tool(building, std::span<const shell::PageEntry>());
    tests::FailurePlan plan;
    tool.throughHost = [&plan](std::string_view id, const automation::Object& object) {
      return id == host::kObjectServerId ? tests::FaultyTarget::Wrap(plan, object) : object;
    };
    tool.Open(tool.device);
    plan.Arm(Failure::kApplicationError, {}, false);
    plan.onCall = [call](int seen) {
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

TEST(CheckOutKilled, AtAnyCallTheNextStartPutsBackWhatIsOverridden) {
  simulator::BuildingOptions options = tests::Tool::Options();
  options.storeFile = std::filesystem::path(tests::Tool::Documents()) / "killed.json";
  const std::string before = simulator::Building(options).StoredDevice(tests::kAssigned);
  int left = 0;
  for (int call = 1; KilledAt(options, call); ++call) {
    const simulator::Building building(options);
    const bool overridden = building.StoredDevice(tests::kAssigned) != before;
    left += overridden;
    CheckOutTool next(building, std::span<const shell::PageEntry>());
    next.Open(next.device);
    next.prompts.answers = {ui::Answer::kYes};
    next.loop.Tick();
    EXPECT_EQ(next.prompts.asked.empty(), !overridden) << call;
    EXPECT_EQ(building.StoredDevice(next.device), before) << call;
    ASSERT_FALSE(std::filesystem::exists(next.List())) << call;
  }
  EXPECT_GT(left, 5);
}
#endif

TEST(CheckOutKilled, WhatItLeftIsPutBackFirst) {
  const simulator::Building building(tests::Tool::Options());
  const auto overridden = [&building] {
    return building.StoredText(tests::kAssigned, "HardwareOutput1", 4, "SNVT_switch");
  };
  auto tool = std::make_unique<CheckOutTool>(building);
  const auto start = [&] {
    tool.reset();  // the host has one session for a unit
    tool = std::make_unique<CheckOutTool>(building);
    tool->Open(tool->device);
  };
  start();
  const std::string before = building.StoredDevice(tool->device);
  {  // killed: nothing of its end happens
    checkout::CheckOut killed(tool->Main().Device(), tool->Main().Context().transactions,
                              {tool->program.GetSettings(), tool->Main().Opened, configuration::kOverridden});
    killed.Start(checkout::ReadSteps(tool->Main().Device()).front(), std::chrono::seconds(60));
  }
  start();
  tool->prompts.answers = {ui::Answer::kNo, ui::Answer::kNo};
  tool->loop.Tick();
  EXPECT_NE(tool->LastPrompt().find("check-out of RTU-1 North wing ended"), std::string::npos);
  tool->loop.Tick();
  EXPECT_EQ(tool->prompts.asked.size(), 1u) << "asked once";
  EXPECT_THROW(tool->CheckOut([] {}), base::Error) << "these go first";
  tool->Main().Close();
  EXPECT_EQ(overridden(), "100.0 1");

  start();
  const auto shown = [&] { return tool->Find<ui::CheckBox>("fControlOutput.chkOver(0)").Checked(); };
  EXPECT_TRUE(shown());
  tool->prompts.answers = {ui::Answer::kYes};
  tool->loop.Tick();
  EXPECT_EQ(building.StoredDevice(tool->device), before);
  EXPECT_FALSE(shown()) << "read again";
  EXPECT_FALSE(std::filesystem::exists(tool->List()));
}

}  // namespace
