// What a save is told to have become is what the device holds: random edits on random pages, saved while the
// host loses its answer before or after the commit, refuses it, rounds what it takes, or lets another client
// write in between.
#include "base/record.h"
#include "random_contents.h"
#include "tool_test.h"

namespace {

using automation::Access;
using automation::Object;
using automation::Value;

enum class Ending { kWell, kLostAfter, kLostBefore, kRefused, kOtherClient, kRounded, kRoundedLost, kCount };

struct Plan {
  Ending ending = Ending::kWell;
  bool committed = false;
  std::function<bool(std::string_view member)> refuses;
  std::function<void()> otherClient;  // runs after the commit, where there is another client
  Object network;
};

/// Stands before every object of the host.
class EndingTarget : public automation::Target {
 public:
  EndingTarget(Plan& plan, Object inner) : plan_(plan), inner_(std::move(inner)) {}

  Value Invoke(Access access, std::string_view member, std::span<const Value> arguments) override {
    if (plan_.refuses && plan_.refuses(member)) Refuse();
    if (member == "CommitTransaction") return Commit(arguments);
    if (member == "BeginTransaction") plan_.network = inner_;
    std::vector<Value> passed(arguments.begin(), arguments.end());
    const bool rounds = plan_.ending == Ending::kRounded || plan_.ending == Ending::kRoundedLost;
    if (rounds && access == Access::kPut && member == "Value")
      passed[0] = Value(Rounded(passed[0].AsText(), inner_.Text("Value")));
    const Value answer = inner_.GetTarget()->Invoke(access, member, passed);
    const auto* object = std::get_if<Object>(&answer.Get());
    return object && *object ? Value(Object(std::make_shared<EndingTarget>(plan_, *object))) : answer;
  }

 private:
  [[noreturn]] static void Refuse() {
    throw automation::Error(automation::kApplicationDefined, "The host refuses.");
  }
  Value Commit(std::span<const Value> arguments) {
    const Ending ending = plan_.ending;
    if (ending == Ending::kRefused) Refuse();
    if (ending == Ending::kLostBefore) throw automation::Error(0x800706BA, "The RPC server is unavailable.");
    plan_.ending = Ending::kWell;
    inner_.GetTarget()->Invoke(Access::kCall, "CommitTransaction", arguments);
    plan_.committed = true;
    if (ending == Ending::kOtherClient) plan_.otherClient();
    if (ending == Ending::kWell || ending == Ending::kRounded) return {};
    throw automation::Error(0x800706BE, "The remote procedure call failed.");
  }

  /// A device that takes tenths.
  static std::string Rounded(const std::string& text, const std::string& present) {
    base::Record record(text);
    const base::Record before(present);
    for (std::size_t i = 0; i < record.Count(); ++i) {
      if (i < before.Count() && record.Field(i) == before.Field(i)) continue;
      const auto number = base::Numbers().Parse(record.Field(i));
      const bool real = number && record.Field(i).find('.') != std::string_view::npos;
      if (real) record.Set(i, base::Numbers().Text(*number, 1));
    }
    return record.Join();
  }

  Plan& plan_;
  Object inner_;
};

struct SaveTruth : tests::ToolTest {
  SaveTruth() {
    throughHost = [this](std::string_view programId, const Object& object) {
      return programId == "MVPlugInLib.ObjectServer" ? Object(std::make_shared<EndingTarget>(plan, object))
                                                     : object;
    };
    plan.otherClient = [this] {
      Store(30, "UCPTspaceTempPIDparam#SI", (otherGain + " 0.5 7 700 0 0").c_str());
    };
  }
  std::string Device() const { return building.StoredDevice(kDevice); }

  std::size_t Any(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  }
  void EditSomething() {
    for (std::size_t edits = 1 + Any(4); edits > 0; --edits) {
      const auto& page = Main().Pages().Page(Any(Main().Pages().Count()));
      ui::Control* control = page.Controls()[Any(page.Controls().size())];
      const auto shown = base::Numbers().Parse(control->Text());
      if (dynamic_cast<ui::TextBox*>(control) && shown && control->Usable()) {
        // Something near what the box shows, with up to six decimals more than that.
        const auto decimals = static_cast<int>(Any(7));
        const double typed = *shown * std::uniform_real_distribution(0.9, 1.1)(random) +
                             std::uniform_real_distribution(0.0, 0.6)(random);
        Type(page.Name() + "." + control->Name(), base::Numbers().Text(typed, decimals));
      }
      if (auto* check = dynamic_cast<ui::CheckBox*>(control)) check->Click();
      if (auto* option = dynamic_cast<ui::OptionButton*>(control)) option->Click();
    }
  }
  /// The last message about the whole save, without routine and location.
  std::string Told() {
    const auto messages = Messages();
    for (auto row = messages.rbegin(); row != messages.rend(); ++row) {
      for (const char* told : {"applied successfully", "were not applied", "It is not known"}) {
        if (row->find(told) != std::string::npos) return told;
      }
    }
    return {};
  }

  /// OK with a save that does not go well keeps the window and what was typed.
  void ClickOk(const char* told) {
    Click("cmdOK");
    EXPECT_EQ(Told(), told);
    ASSERT_TRUE(program.Window() && Main().Visible());
    EXPECT_EQ(Text("fPID.txtPIDTemp(0)"), "12");
    EXPECT_TRUE(Main().Pages().AnyPageChanged());
  }

  static constexpr const char* kDevice = tests::kAssigned;
  Plan plan;
  std::string otherGain;
  std::mt19937 random{tests::Seed()};
};

TEST_F(SaveTruth, IsToldAfterRandomEditsAndEveryKindOfEnding) {
  constexpr int kSaves = 250;
  OpenPage(kDevice, "fHeatCool");
  std::map<std::string, int> told;
  for (int save = 0; save < kSaves && !HasFailure(); ++save) {
    if (save == kSaves / 2) Find<ui::OptionButton>("optUnit(1)").Click();
    Click("cmdRefresh");
    ClearLog();
    EditSomething();
    plan.ending = static_cast<Ending>(save % static_cast<int>(Ending::kCount));
    if (plan.ending == Ending::kOtherClient) {
      otherGain = base::Numbers().ToDouble(Text("fPID.txtPIDTemp(0)")) > 40 ? "3" : "91";
      Type("fPID.txtPIDTemp(0)", "40.5");
    }
    const Ending ending = plan.ending;
    plan.committed = false;
    const std::string before = Device();
    Click("cmdApply");
    plan.ending = Ending::kWell;
    const bool changed = Device() != before;
    const std::string text = Told();
    SCOPED_TRACE("save " + std::to_string(save) + ", ending " + std::to_string(static_cast<int>(ending)) +
                 ": " + testing::PrintToString(Messages()));
    ++told[text];
    if (!plan.committed) {
      EXPECT_EQ(Device(), before);
      // Where nothing was to be changed, the device holds what was written all the same.
      EXPECT_NE(text, "It is not known");
      if (text == "applied successfully") {
        Click("cmdRefresh");
        Click("cmdApply");
        EXPECT_EQ(Device(), before);
      }
    } else if (ending == Ending::kOtherClient) {
      EXPECT_EQ(text, "It is not known");
      EXPECT_THAT(testing::PrintToString(Messages()),
                  testing::HasSubstr("Space Temperature, Proportional Gain: "));
    } else if (ending == Ending::kRoundedLost) {
      EXPECT_TRUE(text != "were not applied" || !changed) << before << "\n" << Device();
    } else {
      EXPECT_EQ(text, "applied successfully");
    }
  }
  for (const char* kind : {"applied successfully", "were not applied", "It is not known"}) {
    EXPECT_GT(told[kind], kSaves / 20) << kind;
  }
}

// What is pending in a transaction that is still open reads as if it were stored.
TEST_F(SaveTruth, IsNotReadInTheTransactionWhoseCommitAndCancelWereRefused) {
  OpenPage(kDevice, "fPID");
  Type("fPID.txtPIDTemp(0)", "12");
  const std::string before = Device();
  for (const bool forGood : {false, true}) {
    plan.refuses = [&, commits = 0, cancels = 0](std::string_view member) mutable {
      if (member == "CommitTransaction") return ++commits == 1;
      if (member == "CancelTransaction") return forGood || (commits && ++cancels == 1);
      return forGood && commits && member == "BeginTransaction";
    };
    ClickOk(forGood ? "It is not known" : "were not applied");
  }
  plan.refuses = nullptr;
  Click("cmdApply");
  EXPECT_EQ(Told(), "applied successfully");
  EXPECT_NE(Device(), before);
}

TEST_F(SaveTruth, WhatAnOpenTransactionHoldsIsNoChangeBySomebodyElse) {
  OpenPage(kDevice, "fPID");
  Type("fPID.txtPIDTemp(0)", "11");
  Click("cmdApply");
  Type("fPID.txtPIDTemp(0)", "12");
  plan.refuses = [commits = 0](std::string_view member) mutable {
    if (member == "CommitTransaction") ++commits;
    return commits && member.ends_with("Transaction");
  };
  ClickOk("It is not known");
  plan.refuses = nullptr;
  const std::size_t asked = prompts.asked.size();
  ChooseEntry("Take back the last save...");
  EXPECT_EQ(prompts.asked.size(), asked) << prompts.Last().text;
}

TEST_F(SaveTruth, StaysUnknownWhenTheDeviceCannotBeReadBack) {
  OpenPage(kDevice, "fPID");
  Type("fPID.txtPIDTemp(0)", "12");
  building.Faults().Fail({.member = "Network.CommitTransaction", .instead = [this] {
                            building.Faults().Fail({.member = "Property.Value", .once = false});
                            throw automation::Error(0x800706BE, "The remote procedure call failed.");
                          }});
  ClickOk("It is not known");
}

TEST_F(SaveTruth, WhatTheDeviceHoldsOtherwiseIsNamed) {
  OpenPage(kDevice, "fPID");
  Type("fPID.txtPIDTemp(0)", "30.25");
  Type("fPID.txtPIDTemp(1)", "0.7");
  plan.ending = Ending::kRounded;
  Click("cmdApply");
  EXPECT_THAT(Messages(), testing::ElementsAre("Apply/Main: Space Temperature, Proportional Gain: 30.25 was "
                                               "written, the device holds 30.2",
                                               tests::kApplied));
}

// The precision of the other unit system stays on the properties when a change of units fails.
TEST_F(SaveTruth, ASaveAfterAFailedChangeOfUnitsRoundsNoNeighbour) {
  Open(kDevice);
  Store(33, "UCPTpressurePIDparam#SI", "0.1234 12.5678 0.0511 60 0.0123 5 0");
  Store(14, "SCPTmaxDuctStaticPressureSetpoint#SI", "251.234");
  Click("cmdRefresh");
  for (const auto& [box, number, text] :
       {std::tuple("fPID.txtPIDTemp(0)", 33, "UCPTpressurePIDparam#SI"),
        std::tuple("fGeneral.txtBypassTime", 14, "SCPTmaxDuctStaticPressureSetpoint#SI")}) {
    const std::string before = Stored(kDevice, number, text, 9);
    building.Faults().Fail({.member = "NetworkVariable.MvFormatType"});  // on a later page
    Find<ui::OptionButton>("optUnit(1)").Click();
    ASSERT_TRUE(Find<ui::OptionButton>("optUnit(0)").Selected());
    Type(box, "61");
    Save();
    EXPECT_EQ(Stored(kDevice, number, text, 9), before);
  }
}

TEST_F(SaveTruth, ATransactionThatIsNotOursIsLeftAlone) {
  OpenPage(kDevice, "fPID");
  Type("fPID.txtPIDTemp(0)", "41");
  plan.network.Call("BeginTransaction");  // as the object manager does
  // The building's own refusal, and what other hosts raise.
  for (const std::uint32_t code : {0u, 0x800A0005u, 1001u, 0x80004005u, automation::kInvalidArgument}) {
    if (code) building.Faults().Fail({.member = "Network.BeginTransaction", .code = code});
    Click("cmdApply");
    EXPECT_EQ(LastMessage(), "Apply/Main: The configuration settings were not applied") << code;
  }
  plan.network.Call("CommitTransaction");  // still open
  Save();
}

}  // namespace
