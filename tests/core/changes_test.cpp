// What is pending: marks and counts, the list of changes, taking back, what a save did, finding, the lock.
#include "shell/changes.h"

#include <chrono>

#include "random_contents.h"
#include "tool_test.h"

namespace {

using fields::Field;
using shell::Change;

struct ChangesTest : tests::ToolTest {
  /// The lines of the list, "Space Temperature, Proportional Gain | 25.0000 | 30 | % / °C | remark".
  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    for (const Change& change : Main().Pending().List())
      lines.push_back(
          base::Join({change.name, change.device, change.present, change.unit, change.reason}, " | "));
    return lines;
  }
  std::string ListCaption(const std::string& page) {
    return std::ranges::find(Find<ui::ListView>("lvwConfig").Rows(), page, &ui::ListView::Row::key)->cells[0];
  }
  auto Edited() {
    return std::ranges::count_if(Main().Pending().List(), [](const Change& change) { return change.field; });
  }
  void Take(const char* page, const char* control, const char* content) {
    Main().Prompts().Take(*Main().Pending().Find(page, control), content);
  }
  ui::Mark MarkOf(const char* control) { return Find(control).GetMark(); }
};

TEST_F(ChangesTest, AreMarkedAtOnceAndUnmarkedWhenTypedBack) {
  OpenPage(tests::kAssigned, "fPID");
  EXPECT_EQ(Text("cmdChanges"), "No changes");
  const std::string gain = Text("fPID.txtPIDTemp(0)");
  ui::Control& box = Find("fPID.txtPIDTemp(0)");
  Type("fPID.txtPIDTemp(0)", "30.5");
  EXPECT_EQ(box.GetMark(), ui::Mark::kChanged);
  EXPECT_EQ(box.ShownTip(), "Device: " + gain + " % / °C");
  Find<ui::CheckBox>("fPID.chkPID").Click();
  Find<ui::OptionButton>("fGeneral.optTemp(1)").Click();
  Take("fNetworkInput", "lblType(0)", "SNVT_tod_event");
  EXPECT_EQ(MarkOf("fPID.chkPID"), ui::Mark::kChanged);
  EXPECT_EQ(MarkOf("fGeneral.optTemp(1)"), ui::Mark::kChanged);
  EXPECT_EQ(MarkOf("fGeneral.optTemp(0)"), ui::Mark::kNone);
  EXPECT_EQ(Text("cmdChanges"), "4 changes on 3 pages");
  EXPECT_EQ(ListCaption("fPID"), "PID (2)");
  EXPECT_EQ(ListCaption("fAlarm"), "Alarm ");
  EXPECT_EQ(Lines().front(), "Space Temperature, Proportional Gain | " + gain + " | 30.5 | % / °C | ");

  Type("fPID.txtPIDTemp(0)", gain.substr(0, gain.find('.')));  // the same number
  EXPECT_EQ(box.GetMark(), ui::Mark::kNone);
  EXPECT_EQ(box.ShownTip(), "");
  Find<ui::CheckBox>("fPID.chkPID").Click();
  Find<ui::OptionButton>("fGeneral.optTemp(0)").Click();
  Take("fNetworkInput", "lblType(0)", "SNVT_occupancy");
  EXPECT_EQ(MarkOf("fGeneral.optTemp(0)"), ui::Mark::kNone);
  EXPECT_EQ(Edited(), 0) << testing::PrintToString(Lines());
}

// Also what the pages themselves change when they are saved.
TEST_F(ChangesTest, ListWhatTheSaveChangesWhateverIsEdited) {
  tests::RandomContents random;
  OpenPage(tests::kPressure, "fHeatCool");
  const auto contents = [this] {
    std::map<std::string, std::pair<const Field*, std::string>> all;
    for (const Field* field : Main().Pending().Fields()) {
      if (field->applies()) all[field->page + "." + field->name] = {field, field->content()};
    }
    return all;
  };
  int applied = 0;
  for (int round = 0; round < 60; ++round) {
    if (round == 30) {
      Find<ui::OptionButton>("optUnit(1)").Click();
      UseLanguage("German");
    }
    Click("cmdRefresh");
    const auto before = contents();
    const auto& fields = Main().Pending().Fields();
    for (int edits = 0; edits < 5; ++edits) {
      const Field& field = *fields[random.Any(fields.size())];
      Main().Prompts().Take(field, random.Of(field));
    }
    std::map<std::string, std::string> listed;
    SCOPED_TRACE(testing::PrintToString(Lines()));
    for (const Change& change : Main().Pending().List()) {
      const std::string page = change.control->GetForm().Name();
      const Field* field = change.field ? change.field : Main().Pending().Find(page, change.control->Name());
      if (field) listed[page + "." + field->name] = change.present;
    }
    Click("cmdApply");
    if (LastMessage().find("Apply/Main") == std::string::npos || Edited() > 0) continue;
    ++applied;
    const base::Numbers numbers;
    for (const auto& [name, now] : contents()) {
      const auto& [field, content] = now;
      const auto then = before.find(name);
      const auto change = listed.find(name);
      if (change == listed.end()) {
        EXPECT_TRUE(then == before.end() || SameContent(*field, numbers, then->second.second, content))
            << name << " became " << content << " unannounced";
      } else if (field->kind == fields::Kind::kText) {
        EXPECT_EQ(numbers.Parse(field->shown(content)).value_or(0), numbers.Parse(change->second).value_or(0))
            << name << " was announced as " << change->second;
      }
    }
  }
  EXPECT_GT(applied, 15);
}

TEST_F(ChangesTest, TakenBackLeaveNothingToBeSaved) {
  OpenPage(tests::kUnassigned, "fHeatCool");
  Click("cmdRefresh");
  const std::string stored = building.StoredDevice(tests::kUnassigned);
  const std::size_t unasked = Main().Pending().List().size();
  AssignOutput(1, "HEATING_1");
  AssignOutput(2, "HEATING_2");
  Type("fPID.txtPIDTemp(0)", "30.5");
  Type("fPID.txtPIDTemp(1)", "abc");
  Find<ui::CheckBox>("fPID.chkPID").Click();
  EXPECT_EQ(Edited(), 7);

  // What cannot be taken back alone says why.
  ui::Form& outputs = Page("fControlOutput");
  outputs.onContextMenu(*outputs.Find("cboOutput(0)")).items.at(0).onClick();
  ASSERT_EQ(prompts.asked.size(), 1u);
  EXPECT_THAT(prompts.asked[0].text, testing::HasSubstr("HEATING_2 selected, HEATING_1 must remain"));
  ChoosePage("fPID");
  Click("cmdTakeBack");
  EXPECT_EQ(Edited(), 4) << testing::PrintToString(Lines());
  EXPECT_FALSE(Page("fPID").IsChanged());
  EXPECT_FALSE(Find("cmdTakeBack").Visible());

  Click("cmdChanges");
  auto& window = Main().ChangesWindow();
  auto& list = In<ui::ListView>(window, "lvwChanges");
  ASSERT_EQ(list.Rows().size(), 4u + unasked);
  list.ChooseRows({0, 1, 2, 3});
  ClickIn(window, "cmdTakeBack");  // the second first, or it is refused
  EXPECT_EQ(prompts.asked.size(), 1u);
  EXPECT_EQ(Edited(), 0);
  EXPECT_FALSE(Page("fControlOutput").IsChanged());
  building.Faults().Fail({.member = "Network.BeginTransaction", .once = false});
  Click("cmdApply");
  EXPECT_EQ(LastMessage(), "") << "nothing is to be saved";
  EXPECT_EQ(building.StoredDevice(tests::kUnassigned), stored);
}

TEST_F(ChangesTest, WhatThePageRoundsByItselfIsListedForAsLongAsItIsEdited) {
  OpenPage(tests::kAssigned, "fOptions");
  Store(52, "UCPTextraConfig", "60 45 100.0 120 0");
  Page("fOptions").FillValue();
  EXPECT_EQ(Text("cmdChanges"), "No changes");
  Type("fOptions.txtInput", "301");
  EXPECT_THAT(Lines(), testing::Contains(testing::EndsWith(" | 22.5 | 22 |  | Is stored as a whole number")));
  Click("cmdTakeBack");
  EXPECT_EQ(Text("cmdChanges"), "No changes");
}

TEST_F(ChangesTest, WhatWasRefusedIsFoundAtItsBox) {
  OpenPage(tests::kUnassigned, "fAlarm");
  Type("fPID.txtPIDTemp(0)", "30.5");
  Type("fPID.txtPIDTemp(3)", "-5");  // the host quotes it
  Click("cmdApply");
  EXPECT_EQ(MarkOf("fPID.txtPIDTemp(3)"), ui::Mark::kRefused);
  EXPECT_THAT(Find("fPID.txtPIDTemp(3)").ShownTip(), testing::HasSubstr("outside the range"));
  EXPECT_EQ(MarkOf("fPID.txtPIDTemp(0)"), ui::Mark::kChanged);
  EXPECT_EQ(ListCaption("fPID"), "PID (2) !");
  EXPECT_EQ(Text("cmdChanges"), "2 changes on 1 page, 1 refused");
  EXPECT_EQ(Page("fPID").Focused(), &Find("fPID.txtPIDTemp(3)"));
  Type("fPID.txtPIDTemp(3)", "600");
  EXPECT_EQ(MarkOf("fPID.txtPIDTemp(3)"), ui::Mark::kChanged);

  // The host does not say which: all that were changed. Then a rule of a page.
  building.Faults().Fail({.member = "Property.Value", .call = 2, .code = 0x800A0006});
  Click("cmdApply");
  EXPECT_EQ(MarkOf("fPID.txtPIDTemp(0)"), ui::Mark::kRefused);
  EXPECT_EQ(MarkOf("fPID.txtPIDTemp(3)"), ui::Mark::kRefused);
  EXPECT_EQ(MarkOf("fPID.txtPIDTemp(1)"), ui::Mark::kNone);
  Click("cmdRefresh");
  EXPECT_EQ(MarkOf("fPID.txtPIDTemp(0)"), ui::Mark::kNone);
  AssignOutput(3, "HEAT_VALVE_OPEN");
  Click("cmdApply");
  EXPECT_EQ(MarkOf("fControlOutput.cboOutput(2)"), ui::Mark::kRefused);
}

TEST_F(ChangesTest, AreNoLongerRefusedOnceAnotherSaveBegins) {
  OpenPage(tests::kAssigned, "fPID");
  Type("fHeatCool.txtSetPoint(3)", "25");
  Click("cmdApply");
  EXPECT_EQ(MarkOf("fHeatCool.txtSetPoint(3)"), ui::Mark::kRefused);
  Type("fHeatCool.txtSetPoint(0)", "26");
  Type("fPID.txtPIDTemp(3)", "-5");
  Click("cmdApply");
  EXPECT_EQ(MarkOf("fHeatCool.txtSetPoint(3)"), ui::Mark::kChanged);
  EXPECT_EQ(Page("fPID").Focused(), &Find("fPID.txtPIDTemp(3)"));
}

TEST_F(ChangesTest, TheLogSaysWhatASaveDid) {
  OpenPage(tests::kAssigned, "fPID");
  Type("fPID.txtPIDTemp(0)", "30.5");
  Find<ui::CheckBox>("fPID.chkPID").Click();
  Type("fAlarm.txtAlarm(1)", "61");
  Click("cmdApply");
  auto& log = LogList();
  ASSERT_EQ(log.Rows().size(), 2u);
  EXPECT_EQ(log.Rows()[0].cells[2], "3 values were written on 2 pages");
  log.Choose(0);
  log.Open();
  ASSERT_EQ(log.Rows().size(), 5u);
  EXPECT_EQ(log.Rows()[1].cells[2].substr(0, 47), "    PID: Space Temperature, Proportional Gain: ");
  EXPECT_THAT(log.Rows()[1].cells[2], testing::HasSubstr(" -> 30.5 % / °C"));
  EXPECT_THAT(Main().Logger().LogText(), testing::HasSubstr("Use supply air temp only for limitation: "));
  log.Choose(0);
  log.popup.front().onClick();  // clears it, and its details
  EXPECT_EQ(log.Rows().size(), 1u);
  for (int clicks = 0; clicks < 2; ++clicks) Find<ui::CheckBox>("fPID.chkPID").Click();
  Save();
  EXPECT_EQ(log.Rows().size(), 2u) << "nothing was written";
}

TEST_F(ChangesTest, TheLastSaveIsTakenBackToTheLastDigit) {
  OpenPage(tests::kAssigned, "fPID");
  ChooseEntry("Take back the last save...");
  EXPECT_EQ(prompts.Last().text, "Nothing was saved since this window was opened.");
  Store(30, "UCPTspaceTempPIDparam#SI", "25.123456 0.5 7 700 0 0");
  Click("cmdRefresh");
  Unlock("fHeatCool");
  Find<ui::OptionButton>("fHeatCool.OptionNormallyHeat").Click();
  Click("cmdApply");
  const std::string before = building.StoredDevice(tests::kAssigned);
  Type("fPID.txtPIDTemp(0)", "30.5");
  Type("fAlarm.txtAlarm(1)", "44");
  AssignInput(1, "UNUSED");
  Unlock("fOptions");
  Type("fOptions.txtChangeOver", "0");  // stored at twice what is shown
  Find<ui::OptionButton>("fGeneral.optEcono(1)").Click();
  Find<ui::CheckBox>("fControlOutput.chkOver(6)").Click();  // its state is -1, then 1
  Type("fControlOutput.txtValue(6)", "42.5");
  Save();
  ChooseEntry("Take back the last save...");
  EXPECT_EQ(prompts.asked.size(), 1u) << prompts.Last().text;
  EXPECT_EQ(Edited(), 8) << "the valve too, which the general page resets: "
                         << testing::PrintToString(Lines());
  EXPECT_TRUE(Main().ChangesWindow().Visible());
  Save();
  Unlock("fHeatCool");  // saving the general page has reset the valve again, as the list said
  Find<ui::OptionButton>("fHeatCool.OptionNormallyHeat").Click();
  Click("cmdApply");
  EXPECT_EQ(building.StoredDevice(tests::kAssigned), before);

  Type("fPID.txtPIDTemp(0)", "31");
  Click("cmdApply");
  for (int clicks = 0; clicks < 2; ++clicks) Find<ui::CheckBox>("fPID.chkPID").Click();
  Save();  // writes nothing: the one before stays the last
  Store(30, "UCPTspaceTempPIDparam#SI", "32 0.5 7 700 0 0");
  ChooseEntry("Take back the last save...");
  EXPECT_EQ(prompts.Last().text,
            "The device has been changed by somebody else since the last save:\r\n"
            "Space Temperature, Proportional Gain");
  EXPECT_EQ(Text("fPID.txtPIDTemp(0)").substr(0, 2), "31");
}

TEST_F(ChangesTest, AreToldAlsoOfWorkThatFailsHalfway) {
  OpenPage(tests::kAssigned, "fPID");
  const auto fails = [this] {
    Type("fPID.txtPIDTemp(0)", "30.5");
    EXPECT_EQ(Text("cmdChanges"), "No changes");
    throw base::Error("halfway");
  };
  EXPECT_THROW(Main().Pending().Together(fails), base::Error);
  EXPECT_EQ(Text("cmdChanges"), "1 change on 1 page");
}

TEST_F(ChangesTest, AreReviewedBeforeTheSaveWhereThePersonWantsIt) {
  OpenPage(tests::kAssigned, "fPID");
  ChooseEntry("Review before applying");
  Click("cmdApply");  // nothing to be seen
  Type("fPID.txtPIDTemp(0)", "30.5");
  const auto click = [this](const char* button) {
    loop.whileOpen = [this, button] {
      auto& window = Main().ChangesWindow();
      EXPECT_TRUE(window.Visible());
      EXPECT_FALSE(window.Find("cmdTakeBack")->Visible());
      ClickIn(window, button);
    };
  };
  click("cmdClose");
  Click("cmdOK");
  EXPECT_TRUE(Messages().empty());
  EXPECT_TRUE(Main().Visible());
  click("cmdApply");
  Save();
  for (const char* typed : {"31", "30.5"}) Type("fPID.txtPIDTemp(0)", typed);
  Click("cmdApply");  // nothing to be seen either
  EXPECT_FALSE(Main().Pages().AnyPageChanged());
  tests::Tool another;
  another.registry = registry;
  another.OpenPage(tests::kAssigned, "fPID");
  EXPECT_TRUE(another.Main().menu[1].items[5].checked);
}

TEST_F(ChangesTest, AFieldIsFoundByItsCaptionsAndTheDevicesNames) {
  Open(tests::kAssigned);
  UseLanguage("German");
  ChooseEntry("Feld suchen...");
  auto& window = Main().FindWindow();
  ASSERT_TRUE(window.Visible());
  auto& box = In<ui::TextBox>(window, "txtFind");
  const auto& rows = In<ui::ListView>(window, "lvwFound").Rows();
  const auto all = rows.size();
  const std::tuple<const char*, std::size_t, const char*> cases[] = {
      {"totband", 5, "CO2-Gehalt, Totband"},
      {"verstarkung RAUM", 3, "Raumtemperatur, Proportional Verstärkung"},
      {"nviCO2", 3, "Raum und Endgeräte, nviCO2, Typ"},
      {"UCPTspaceTempPID", 6, "Raumtemperatur, Proportional Verstärkung"},
      {"no such field", 0, ""},
      {"", all, "Bypass-Dauer"}};
  for (const auto& [typed, count, path] : cases) {
    const auto start = std::chrono::steady_clock::now();
    box.Type(typed);
    EXPECT_EQ(rows.size(), count) << typed;
    EXPECT_EQ(std::ranges::count(rows, path, [](const auto& row) { return row.cells[1]; }) > 0, count > 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  }
  box.Type("totband co2");
  ClickIn(window, "cmdGoTo");
  EXPECT_FALSE(window.Visible());
  EXPECT_EQ(Page("fPID").Focused(), &Find("fPID.txtCO2Level(1)"));
  ChooseEntry("Feld suchen...");
  ClickIn(window, "cmdClose");
  EXPECT_FALSE(window.Visible());
}

TEST_F(ChangesTest, ALockedWindowShowsEverythingAndTakesNothing) {
  OpenPage(tests::kAssigned, "fPID");
  Type("fPID.txtPIDTemp(0)", "30.5");
  const std::string title = Main().Title();
  ChooseEntry("Locked");
  EXPECT_EQ(Main().Title(), title + " - Locked");
  EXPECT_FALSE(Find<ui::TextBox>("txtLocation").Type("roof"));
  for (const char* control : {"fPID.txtPIDTemp(0)", "cmdApply", "cmdOK"})
    EXPECT_FALSE(Find(control).Usable()) << control;
  Click("cmdChanges");
  for (const char* button : {"cmdTakeBack", "cmdApply"})
    EXPECT_FALSE(Main().ChangesWindow().Find(button)->Usable()) << button;
  Click("cmdRefresh");
  ChoosePage("fAlarm");
  ChooseEntry("Locked");
  EXPECT_TRUE(Find<ui::TextBox>("fPID.txtPIDTemp(0)").Type("31"));
  EXPECT_EQ(Main().Title(), title);
}

}  // namespace
