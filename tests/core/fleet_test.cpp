// Copying one configuration to many units: what each line tells, what each unit holds, and that nothing is
// left open, whatever the host does meanwhile.
#include <filesystem>
#include <map>
#include <set>

#include "base/files.h"
#include "fleet/fleet.h"
#include "tool_test.h"

namespace {

using automation::Access;
using automation::Error;
using automation::Object;
using automation::Value;
using testing::HasSubstr;
using testing::StartsWith;

bool IsWrite(Access access, std::string_view member) { return access == Access::kPut && member == "Value"; }

/// What goes wrong in the sessions of one unit: asked before each call and after it, with its number.
using UnitFault = std::function<void(bool after, int call, Access access, std::string_view member)>;
using UnitFaults = std::map<std::string, UnitFault, std::less<>>;

/// A host that serves each session apart: which unit it is shows when the unit is asked for by its name.
class UnitTarget : public automation::Target {
 public:
  struct Session {
    std::string unit;
    int calls = 0;
  };
  UnitTarget(UnitFaults& faults, std::shared_ptr<Session> session, Object inner)
      : faults_(faults), session_(std::move(session)), inner_(std::move(inner)) {}

  Value Invoke(Access access, std::string_view member, std::span<const Value> arguments) override {
    if (session_->unit.empty() && member == "Item" && std::holds_alternative<std::string>(arguments[0].Get()))
      session_->unit = arguments[0].AsText();
    const auto fault = faults_.find(session_->unit);
    const bool may = fault != faults_.end();
    const int call = may ? ++session_->calls : 0;
    if (may) fault->second(false, call, access, member);
    Value answer = inner_.GetTarget()->Invoke(access, member, arguments);
    if (may) fault->second(true, call, access, member);
    const auto* object = std::get_if<Object>(&answer.Get());
    if (!object || !*object) return answer;
    return Object(std::make_shared<UnitTarget>(faults_, session_, *object));
  }

 private:
  UnitFaults& faults_;
  std::shared_ptr<Session> session_;
  Object inner_;
};

struct FleetTest : tests::ToolTest {
  FleetTest() {
    throughHost = [this](std::string_view id, const Object& object) {
      if (id != "MVPlugInLib.ObjectServer") return object;
      return Object(std::make_shared<UnitTarget>(faults, std::make_shared<UnitTarget::Session>(), object));
    };
  }
  configuration::Desk& Desk() { return Companion<configuration::Desk>(); }
  fleet::fCopy& Window() { return Companion<fleet::Fleet>().CopyWindow(); }
  /// Opens the window, does `work` in it and closes it.
  void InWindow(const std::function<void()>& work) {
    loop.whileOpen = [this, work] {
      work();
      In<ui::Button>(Window(), "cmdClose").Click();
    };
    ChooseEntry("Copy to units...");
  }
  void Press(const char* button) { EXPECT_TRUE(In<ui::Button>(Window(), button).Click()) << button; }
  /// "state: remark".
  std::string LineOf(const std::string& unit) {
    for (const auto& row : In<ui::ListView>(Window(), "lvwUnits").Rows()) {
      if (row.cells[0] == unit) return row.cells[2] + (row.cells[3].empty() ? "" : ": " + row.cells[3]);
    }
    return "no line";
  }
  void Tick(const char* list, const std::string& key, bool on) {
    auto& view = In<ui::ListView>(Window(), list);
    for (std::size_t i = 0; i < view.Rows().size(); ++i) {
      const auto& row = view.Rows()[i];
      const bool another = row.key != key && row.cells[0] != key;
      EXPECT_TRUE(another || (row.tick == ui::ListView::Tick::kOn) == on || view.TurnTick(i));
    }
  }
  /// Another client has the unit open for as long as the answer lives.
  Object OpenElsewhere(const std::string& unit) const {
    const Object network = building.ObjectServer()
                               .Call("Connect", building.NetworkName(), building.IpAddress(), building.Port())
                               .AsObject();
    network.Call("OpenSession", building.NetworkName(), false, "another", 1, "tool");
    network.Child("AppDevices").Child("Item", unit);
    return network;
  }
  std::string Gains() { return Stored(tests::kAssigned, 30, "UCPTspaceTempPIDparam#SI", 4); }

  UnitFaults faults;
};

TEST_F(FleetTest, AUnitGetsWhatIsTickedAndNothingElse) {
  Open(tests::kAssigned);
  building.AddUnit("RTU-9", "Barn");
  const std::string location = building.StoredText("RTU-9", "NodeObject", 2, "SCPTlocation");
  InWindow([&] {
    EXPECT_THAT(LineOf(tests::kNoTemplate), HasSubstr("cannot be copied to: C:\\LonWorks"));
    EXPECT_EQ(LineOf(tests::kAssigned), "no line");
    Press("cmdTickNone");
    EXPECT_FALSE(In<ui::Button>(Window(), "cmdCopy").Usable());
    Tick("lvwUnits", "RTU-9", true);
    const std::string before = building.StoredDevice("RTU-9");
    Press("cmdCompare");
    EXPECT_THAT(LineOf("RTU-9"), HasSubstr("values differ"));
    EXPECT_EQ(building.StoredDevice("RTU-9"), before);
    prompts.answers = {ui::Answer::kCancel};
    Press("cmdCopy");
    EXPECT_EQ(building.StoredDevice("RTU-9"), before) << "not confirmed";
    Press("cmdCopy");
    EXPECT_THAT(LineOf("RTU-9"), StartsWith("done ("));
    EXPECT_EQ(building.StoredText("RTU-9", "NodeObject", 2, "SCPTlocation"), location);
    Press("cmdCopy");
    EXPECT_EQ(LineOf("RTU-9"), "nothing to change");
  });
  ChooseEntry("Locked");
  building.Faults().Fail(
      {.member = "AppDevices.Item", .code = automation::kApplicationDefined, .text = "Busy."});
  InWindow([&] {
    EXPECT_EQ(In<ui::ListView>(Window(), "lvwUnits").Rows().size(), 4u) << "not the own, however refused";
    EXPECT_TRUE(In<ui::Button>(Window(), "cmdCompare").Usable());
    EXPECT_FALSE(In<ui::Button>(Window(), "cmdCopy").Usable());
  });
}

TEST_F(FleetTest, AFileInOtherUnitsAndOnlyWhatIsTicked) {
  Open(tests::kPressure);
  Main().Pending().ReadSettings();
  auto document = Desk().ToFile(Desk().Take(false));
  const auto put = [&document](const char* page, const char* control, const char* content) {
    const_cast<configuration::Entry*>(document.Find(page, control))->content = content;
  };
  put("fPID", "txtPIDTemp(0)", "30.5");
  put("fPID", "txtPIDTemp(1)", "0.6");
  put("fHardwareInput", "UCPTthermistorOffset(1)", "1.5");
  put("fHardwareInput", "UCPTobjectName(1)", "Pump North");
  put("fMain", "txtLocation", "Everywhere");
  const std::string file = Documents() + "/fleet.kvtarn";
  base::ReplaceFile(file, configuration::Write(document));
  Find<ui::OptionButton>("optUnit(1)").Click();  // the file is in the other units
  fileDialog.answer = file;
  InWindow([&] {
    EXPECT_TRUE(In<ui::OptionButton>(Window(), "optSource(1)").Click());
    EXPECT_EQ(In<ui::TextBox>(Window(), "txtFile").Text(), file);
    for (const auto& row : std::vector(In<ui::ListView>(Window(), "lvwPages").Rows()))
      Tick("lvwPages", row.key, false);
    Tick("lvwPages", "fPID", true);
    Press("cmdCopy");
    EXPECT_THAT(LineOf(tests::kAssigned), StartsWith("done"));
    EXPECT_THAT(Gains(), StartsWith("30.5000 0.6000"));
    Tick("lvwPages", "fPID", false);
    EXPECT_EQ(LineOf(tests::kAssigned), "waiting") << "for other pages nothing is known yet";
    Tick("lvwPages", "names", true);
    Press("cmdCopy");
    EXPECT_THAT(prompts.Last().text, StartsWith("Copy what is ticked of " + file + " to "));
    EXPECT_EQ(building.StoredText(tests::kAssigned, "HardwareInput2", 1, "UCPTobjectName"), "Pump North");
    Tick("lvwPages", "settings", true);
    Press("cmdCopy");
    EXPECT_THAT(LineOf(tests::kAssigned), StartsWith("done ("));
    EXPECT_THAT(Gains(), StartsWith("30.5000 0.6000"));
    EXPECT_EQ(base::Trim(building.StoredText(tests::kAssigned, "NodeObject", 2, "SCPTlocation")),
              "Everywhere");
    for (const char* location : {"12", "12.4", "Cellar"}) {
      put("fMain", "txtLocation", location);
      base::ReplaceFile(file, configuration::Write(document));
      Press("cmdBrowse");
      Press("cmdCopy");
      EXPECT_EQ(base::Trim(building.StoredText(tests::kAssigned, "NodeObject", 2, "SCPTlocation")), location);
    }

    put("fPID", "txtPIDTemp(0)", "warm");  // no content of that box
    base::ReplaceFile(file, configuration::Write(document));
    Press("cmdBrowse");
    Tick("lvwPages", "fPID", true);
    Press("cmdCopy");
    EXPECT_EQ(LineOf(tests::kAssigned),
              "refused: Space Temperature, Proportional Gain = warm: this field cannot hold the value");
    base::ReplaceFile(file, "no configuration");
    const auto asked = prompts.asked.size();
    Press("cmdBrowse");
    EXPECT_EQ(prompts.asked.size(), asked + 1);
    EXPECT_EQ(In<ui::TextBox>(Window(), "txtFile").Text(), file) << "the one before stays";
  });
}

TEST_F(FleetTest, AUnitThatDoesNotKeepASaveIsToldWithWhatItHolds) {
  Open(tests::kAssigned);
  Type("fPID.txtPIDTemp(0)", "31");
  Type("fGeneral.txtBypassTime", "95");
  Save();
  const Object source = Main().Device().InputProperties[1][6].Object();
  source.Put("formatName", "UCPTthermistorOffset");
  source.Put("Value", "1.5");
  building.AddUnit("RTU-9", "Barn");
  const Object device = OpenElsewhere("RTU-9").Child("AppDevices").Child("Item", "RTU-9");
  device.Call("AddLmo", 1, "8000AB0C12340001", "t.bin", building.TemplateBytes());
  const auto property = [objects = device.Child("LonMarkObjects")](const char* object, int number,
                                                                   const char* format) {
    const Object found = objects.Child("Item", object).Child("ConfigProperties").Child("Item", number);
    found.Put("formatName", format);
    return found;
  };
  Object lost = property("RoofTopObject", 30, "UCPTspaceTempPIDparam#SI");
  std::string old = lost.Text("Value");
  int begun = 0, refused = 0;
  faults["RTU-9"] = [&](bool after, int, Access, auto member) {
    if (after && member == "CommitTransaction") lost.Put("Value", old);
    if (!after && member == "BeginTransaction" && ++begun == refused)
      throw Error(automation::kApplicationDefined, "Busy.", "Host");
  };
  const testing::Matcher<const std::string&> told =
      testing::AllOf(StartsWith("failed while writing:"), HasSubstr("31 was written, the device holds 25"),
                     testing::Not(HasSubstr("did not confirm")));
  InWindow([&] {
    Press("cmdTickNone");
    Tick("lvwUnits", "RTU-9", true);
    Press("cmdCopy");
    EXPECT_THAT(LineOf("RTU-9"), told);
    fileDialog.answer = Documents() + "/result.csv";
    Press("cmdSave");
    EXPECT_THAT(base::ReadFile(Documents() + "/result.csv", 1 << 20),
                testing::AllOf(HasSubstr(",failed while writing,General Settings,"),
                               testing::Not(HasSubstr("25.0000,31.0000"))))
        << "what it has kept, and nothing else";
    refused = begun + 4;  // after the opening, the first save and its reading
    Press("cmdCopy");
    EXPECT_EQ(begun, refused);
    EXPECT_THAT(LineOf("RTU-9"), told);
    // What no page shows is read back, too.
    lost = property("HardwareInput1", 6, "UCPTthermistorOffset");
    lost.Put("Value", "0");
    old = lost.Text("Value");
    Press("cmdCopy");
    EXPECT_THAT(LineOf("RTU-9"),
                testing::AllOf(StartsWith("failed while writing:"), HasSubstr("UCPTthermistorOffset")));
  });
}

/// A building of many units, of which some go wrong, each in a way of its own.
struct ManyUnits : FleetTest {
  static constexpr int kUnits = 12;
  void Build(int units) {
    for (int i = 0; i < units; ++i) building.AddUnit(Name(i), "Bay " + std::to_string(i));
    source = WithoutLocation(tests::kAssigned);
  }
  static std::string Name(int number) { return "AHU " + std::to_string(1000 + number); }
  void TickFirst(int units) {
    Press("cmdTickNone");
    for (int i = 0; i < units; ++i) Tick("lvwUnits", Name(i), true);
  }
  /// Everything that a unit holds but for its place.
  std::string WithoutLocation(const std::string& unit) const {
    std::vector<std::string> lines = base::Split(building.StoredDevice(unit), "\n");
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("NodeObject.2="); });
    return base::Join(lines, "\n");
  }
  std::string source;
};

TEST_F(ManyUnits, EachLineIsRightWhateverGoesWrongAndASecondRunDoesTheRest) {
  Open(tests::kAssigned);
  Type("fPID.txtPIDTemp(0)", "31");
  Type("fGeneral.txtBypassTime", "95");
  Click("cmdApply");
  building.Limits().clients = 20;
  Build(kUnits);
  const auto atCommit = [](bool afterIt, bool forGood, const Error& error) {
    return [=, wrote = false, dead = false](bool after, int, Access access, auto member) mutable {
      wrote = wrote || IsWrite(access, member);
      const bool now = wrote && after == afterIt && member == "CommitTransaction";
      dead = dead || (forGood && now);
      if (now || dead) throw error;
    };
  };
  const Error lost(0x800706BE, "The remote procedure call failed.");
  faults[Name(2)] = atCommit(false, false, lost);
  faults[Name(3)] = [](bool, int, Access access, auto member) {
    if (IsWrite(access, member))
      throw Error(automation::kApplicationDefined, "31.0000 is out of range.", "Host");
  };
  faults[Name(4)] = atCommit(true, false, lost);
  faults[Name(5)] = [](bool, int call, Access, auto) {
    if (call == 150) throw Error(0x80010002, "Call was canceled by the message filter.");
  };
  faults[Name(6)] = atCommit(false, true, {0x800706BA, "The RPC server is unavailable."});
  std::vector<Object> others;
  for (const int i : {7, 8, 9}) others.push_back(OpenElsewhere(Name(i)));

  InWindow([&] {
    EXPECT_THAT(LineOf("Unit " + std::to_string(4 + 7 + 1)), HasSubstr("is open in another session"));
    Press("cmdCopy");
    EXPECT_THAT(LineOf(Name(0)), StartsWith("done ("));
    EXPECT_THAT(LineOf(Name(2)), testing::AllOf(StartsWith("failed"), HasSubstr("was read back")));
    EXPECT_THAT(LineOf(Name(3)), testing::AllOf(StartsWith("refused:"), HasSubstr("out of range")));
    EXPECT_THAT(LineOf(Name(4)), testing::AllOf(StartsWith("done ("), HasSubstr("was read back")));
    EXPECT_THAT(LineOf(Name(5)), StartsWith("failed while reading:"));
    EXPECT_THAT(LineOf(Name(6)), StartsWith("not known:"));
    for (int i = 0; i < kUnits; ++i) {
      const bool done = i < 2 || i == 4 || i > 9;
      EXPECT_EQ(WithoutLocation(Name(i)) == source, done) << i;
    }
    EXPECT_THAT(In<ui::Label>(Window(), "lblCount").Text(), HasSubstr("1 refused, 2 failed, 1 not known"));

    const auto saved = [](const std::string& file) {
      return base::ReadFile(Documents() + "/" + file, 1 << 20);
    };
    fileDialog.answer = Documents() + "/result of it.html";
    Press("cmdSave");
    EXPECT_THAT(saved("result of it.html"),
                HasSubstr("<a href=\"result%20of%20it%20records/AHU%201000.html\">"));
    EXPECT_THAT(saved("result of it records/AHU 1000.html"),
                testing::AllOf(HasSubstr("31.0000"), testing::Not(HasSubstr("There is no advice"))))
        << "nobody has judged it";
    fileDialog.answer = Documents() + "/result.CSV";
    Press("cmdSave");
    EXPECT_THAT(saved("result.CSV"),
                HasSubstr(",PID,\"Space Temperature, Proportional Gain\",25.0000,31.0000,"));
  });
  others.clear();
  faults.clear();
  InWindow([&] {
    Press("cmdCopy");
    const std::set<int> missing = {2, 3, 5, 6, 7, 8, 9};
    for (int i = 0; i < kUnits; ++i) {
      EXPECT_EQ(LineOf(Name(i)).substr(0, 4), missing.contains(i) ? "done" : "noth") << i;
      EXPECT_EQ(WithoutLocation(Name(i)), source) << i;
    }
  });
}

TEST_F(ManyUnits, EveryCallThatFailsLeavesAUnitWhollyOldOrWhollyNewAndSaysWhich) {
  Open(tests::kAssigned);
  AssignOutput(7, "UNASSIGNED");
  Type("fPID.txtPIDTemp(0)", "31");
  Type("fPID.txtPIDTemp(2)", "0.8");
  Click("cmdApply");
  Build(3);
  const Error errors[] = {{0x800706BA, "The RPC server is unavailable."},
                          {automation::kApplicationDefined, "The host refuses.", "Host"}};
  int failed = 0;
  for (int call = 1; call > 0; call += 97) {
    building.RemoveUnit(Name(1));
    building.AddUnit(Name(1), "Bay");
    const std::string old = WithoutLocation(Name(1));
    bool reached = false;
    const bool lost = call % 2 == 0;
    faults[Name(1)] = [&](bool after, int number, Access, auto) {
      if (number == call && after == lost && !std::exchange(reached, true))
        throw errors[lost ? 0 : call / 2 % 2];
    };
    std::string line, stored;
    InWindow([&] {
      TickFirst(3);
      Press("cmdCopy");
      line = LineOf(Name(1));
      stored = WithoutLocation(Name(1));
      EXPECT_THAT(LineOf(Name(2)), testing::AnyOf(StartsWith("done"), "nothing to change"));
    });
    if (!reached) break;
    ++failed;
    SCOPED_TRACE(std::to_string(call) + " " + line);
    EXPECT_TRUE(stored == old || stored == source);
    const bool saysDone = line.starts_with("done");
    EXPECT_TRUE(saysDone ? stored == source : stored == old || line.starts_with("not known"));
    EXPECT_TRUE(saysDone || line.find(": ") != std::string::npos) << "no reason";
    faults.clear();
  }
  EXPECT_GT(failed, 5);
  EXPECT_THAT(building.Log(), testing::Not(testing::Contains(HasSubstr("within a transaction"))));
  for (const auto& device : building.Devices()) {
    if (device.name == tests::kAssigned) continue;
    EXPECT_NO_THROW(OpenElsewhere(device.name)) << device.name;
  }
}

TEST_F(ManyUnits, ALookMovesNoSaveAndACopyEndsAfterThePresentUnitWithTheWindowOpenUntilThen) {
  Open(tests::kAssigned);
  InWindow([] {});
  Type("fPID.txtPIDTemp(0)", "31");
  building.Faults().Fail({.member = "Network.CommitTransaction"});
  Click("cmdApply");
  EXPECT_THAT(Gains(), StartsWith("25.0000"));
  Click("cmdApply");
  EXPECT_THAT(Gains(), StartsWith("31.0000"));
  Build(3);
  InWindow([&] {
    faults[Name(1)] = [this](bool after, int call, Access, auto) {
      if (after || call != 100) return;
      EXPECT_FALSE(Window().Close());
      EXPECT_TRUE(Window().Visible());
      EXPECT_TRUE(In<ui::Button>(Window(), "cmdStop").Usable());
      EXPECT_FALSE(In<ui::Button>(Window(), "cmdCopy").Usable());
      EXPECT_THROW(api.Call("SendCommand", 0, 0, ""), Error) << "one thing at a time";
    };
    TickFirst(3);
    Press("cmdCopy");
    EXPECT_THAT(LineOf(Name(1)), StartsWith("done"));
    EXPECT_EQ(LineOf(Name(2)), "waiting");
  });
  Type("fPID.txtPIDTemp(0)", "33");
  Save();
}

}  // namespace
