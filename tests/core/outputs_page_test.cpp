#include <algorithm>

#include "editor.h"
#include "host/output_functions.h"
#include "newer_building.h"
#include "pages/io/assignment_rules.h"
#include "tool_test.h"

namespace {

using pages::OutputFunctions;

constexpr const char* kTwice = "This output is already selected, please select another one.";

// The text that the user sees, "" when the change is accepted.
std::string Refused(const OutputFunctions& functions, std::size_t index, const std::string& next) {
  const auto refusal = pages::CheckAssignment({functions, index, functions[index], next});
  if (!refusal) return "";
  return refusal->InWords(shell::Strings([] { return automation::Object(); }));
}

TEST(AssignmentRules, RefuseInTheirOrderWithTheirTexts) {
  const auto first = [](const std::string& lower, const std::string& higher) {
    return "You have to select the " + lower + " before selecting " + higher;
  };
  const auto still = [](const std::string& lower, const std::string& higher) {
    return "You still have " + higher + " selected, " + lower + " must remain selected.";
  };
  const std::string noCooling = "You have to select COOLING before selecting REVERSING_VALVE";
  const std::string lastCooling =
      "You have REVERSING_VALVE selected you need to select at least one COOLING before selecting "
      "REVERSING_VALVE";
  const std::string damperOpen =
      "You already select FRESH_AIR_DAMPER_OPEN or FRESH_AIR_DAMPER_CLOSE, FRESH_AIR_DAMPER_MOD cannot be "
      "selected.";
  const std::string damperMod =
      "You already select FRESH_AIR_DAMPER_MOD, FRESH_AIR_DAMPER_OPEN or FRESH_AIR_DAMPER_CLOSE cannot be "
      "selected.";
  const std::tuple<OutputFunctions, std::size_t, std::string, std::string> cases[] = {
      // Stages go up one by one, in both families.
      {{}, 0, "HEATING_1", ""},
      {{}, 0, "HEATING_2", first("HEATING_1", "HEATING_2")},
      {{"HEATING_1"}, 1, "HEATING_2", ""},
      {{"HEATING_1"}, 0, "HEATING_2", first("HEATING_1", "HEATING_2")},
      {{"COOLING_1", "COOLING_2"}, 2, "COOLING_4", first("COOLING_3", "COOLING_4")},
      {{"HEATING_1"}, 1, "COOLING_2", first("COOLING_1", "COOLING_2")},
      // ... and down one by one, whatever replaces them.
      {{"HEATING_1", "HEATING_2"}, 0, "UNASSIGNED", still("HEATING_1", "HEATING_2")},
      {{"HEATING_1", "HEATING_2"}, 1, "UNASSIGNED", ""},
      {{"HEATING_1", "HEATING_2", "HEATING_3"}, 0, "FAN_ON_OFF", still("HEATING_1", "HEATING_2")},
      {{"COOLING_1", "", "COOLING_3"}, 0, "UNASSIGNED", still("COOLING_1", "COOLING_3")},
      // The same function twice.
      {{"FAN_ON_OFF"}, 1, "FAN_ON_OFF", kTwice},
      {{"UNASSIGNED"}, 1, "UNASSIGNED", ""},
      // The reversing valve stands on cooling.
      {{}, 0, "REVERSING_VALVE", noCooling},
      {{"COOLING_1"}, 0, "REVERSING_VALVE", noCooling},
      {{"COOLING_1"}, 1, "REVERSING_VALVE", ""},
      {{"COOLING_1", "REVERSING_VALVE"}, 0, "UNASSIGNED", lastCooling},
      {{"COOLING_1", "REVERSING_VALVE"}, 1, "UNASSIGNED", ""},
      // Dampers exclude one another both ways.
      {{"FRESH_AIR_DAMPER_OPEN"}, 1, "FRESH_AIR_DAMPER_MOD", damperOpen},
      {{"FRESH_AIR_DAMPER_OPEN"}, 0, "FRESH_AIR_DAMPER_MOD", ""},
      {{"FRESH_AIR_DAMPER_MOD"}, 1, "FRESH_AIR_DAMPER_CLOSE", damperMod},
      {{"FRESH_AIR_DAMPER_CLOSE"}, 1, "FRESH_AIR_DAMPER_OPEN", ""},
      // A function that the tool does not know follows the ordinary rules.
      {{"SOMETHING_NEW"}, 1, "SOMETHING_NEW", kTwice},
  };
  for (const auto& [functions, index, next, refused] : cases)
    EXPECT_EQ(Refused(functions, index, next), refused) << next;
}

/// Hands every assignment on that an accepted change of one output leads to.
template <class Use>
void ForEachAcceptedChange(const OutputFunctions& functions, const Use& use) {
  for (std::size_t output = 0; output < functions.size(); ++output) {
    for (const auto function : host::kOutputFunctions) {
      if (!Refused(functions, output, std::string(function)).empty()) continue;
      OutputFunctions changed = functions;
      changed[output] = function;
      use(changed);
    }
  }
}

TEST(AssignmentRules, NoTwoAcceptedChangesBreakTheStageOrder) {
  const OutputFunctions start = {"COOLING_1", "COOLING_2", "REVERSING_VALVE", "HEATING_1", "", "", ""};
  const std::pair<const char*, const char*> needs[] = {
      {"COOLING_2", "COOLING_1"}, {"HEATING_2", "HEATING_1"}, {"REVERSING_VALVE", "COOLING_1"}};
  int accepted = 0;
  const auto check = [&](const OutputFunctions& end) {
    ++accepted;
    const auto count = [&end](const std::string& name) { return std::ranges::count(end, name); };
    for (const auto& [upper, lower] : needs) {
      EXPECT_TRUE(!count(upper) || count(lower)) << testing::PrintToString(end);
    }
    for (const std::string& name : end) {
      EXPECT_TRUE(name.empty() || name == "UNASSIGNED" || count(name) == 1) << testing::PrintToString(end);
    }
  };
  ForEachAcceptedChange(start, [&](const OutputFunctions& middle) { ForEachAcceptedChange(middle, check); });
  EXPECT_GT(accepted, 1000);
}

TEST(AssignmentRules, NameTheMissingHalfOfAPair) {
  const OutputFunctions functions = {"HEAT_VALVE_OPEN", "COOL_VALVE_CLOSE", "FRESH_AIR_DAMPER_OPEN",
                                     "FRESH_AIR_DAMPER_CLOSE", "HEAT_COOL_VALVE_CLOSE"};
  const char* const needsClose = "You should choose 'Close' if 'Open' was selected.";
  const char* const needsOpen = "You should choose 'Open' if 'Close' was selected.";
  EXPECT_THAT(pages::UnpairedFunctions(functions),
              testing::ElementsAre(testing::FieldsAre(0u, needsClose), testing::FieldsAre(1u, needsOpen),
                                   testing::FieldsAre(4u, needsOpen)));
}

TEST(OutputFunctions, BelongToASignalClass) {
  EXPECT_EQ(host::GetOutputSignalClass("heating_mod"), host::SignalClass::kModulating);
  EXPECT_EQ(host::GetOutputSignalClass("MIN_FRESH_AIR_ENABLE"), host::SignalClass::kOnOff);
  for (const char* name : {"UNASSIGNED", "", "NEW_MOD", "HEATING_5"}) {
    EXPECT_EQ(host::GetOutputSignalClass(name), host::SignalClass::kNone) << name;
  }
}

struct OutputsTest : tests::ToolTest {
  std::string Output(const char* name, int number) {
    return "fControlOutput." + std::string(name) + "(" + std::to_string(number - 1) + ")";
  }
  std::string Function(int number) { return Find<ui::ListBox>(Output("cboOutput", number)).SelectedText(); }
  std::string StoredOutput(int number, int property, const char* format) {
    return building.StoredText(device, "HardwareOutput" + std::to_string(number), property, format);
  }
  std::string StoredFunction(int number) { return StoredOutput(number, 3, "UCPTroofTopOutputType"); }
  bool Enabled(const std::string& name) { return Find(name).Enabled(); }
  /// As the host has it.
  automation::Object PropertyOf(std::size_t number, int property) {
    return Main().Device().OutputProperties[number][property].Object();
  }

  const char* device = tests::kAssigned;
};

TEST_F(OutputsTest, ARefusedChoiceIsPutBackAndAnAcceptedOneIsSavedAndReadBack) {
  Open(device);
  AssignOutput(3, "UNASSIGNED");  // holds COOLING_1 while output 4 holds COOLING_2
  EXPECT_EQ(Function(3), "COOLING_1");
  ASSERT_EQ(prompts.asked.size(), 1u);
  EXPECT_EQ(prompts.asked[0].text, "You still have COOLING_2 selected, COOLING_1 must remain selected.");
  EXPECT_EQ(prompts.asked[0].icon, ui::Icon::kExclamation);
  EXPECT_FALSE(Main().Pages().AnyPageChanged());
  EXPECT_EQ(Main().Selections().GetSelectedOutputType(2), "COOLING_1");
  program.GetStrings().SetLanguage("German");
  AssignOutput(3, "UNASSIGNED");
  EXPECT_EQ(prompts.Last().text, "Noch gewählt ist COOLING_2, deshalb muss COOLING_1 gewählt bleiben.");

  AssignOutput(4, "REVERSING_VALVE");
  program.GetStrings().SetLanguage("English");
  Save();
  EXPECT_EQ(StoredFunction(3), "COOLING_1");
  EXPECT_EQ(StoredFunction(4), "REVERSING_VALVE");
  EXPECT_EQ(Function(4), "REVERSING_VALVE");
}

TEST_F(OutputsTest, OverridesAreWrittenAsSwitchTexts) {
  Open(device);
  EXPECT_TRUE(Find<ui::CheckBox>(Output("chkOver", 3)).Checked());
  EXPECT_EQ(Find<ui::ListBox>(Output("cboONOFF", 3)).SelectedText(), "ON");
  EXPECT_FALSE(Find(Output("txtValue", 3)).Visible());
  EXPECT_FALSE(Enabled(Output("cboONOFF", 1))) << "not permitted yet";
  Find<ui::ListBox>(Output("cboONOFF", 3)).Choose("OFF");
  Find<ui::CheckBox>(Output("chkOver", 1)).Click();
  Find<ui::ListBox>(Output("cboONOFF", 1)).Choose("ON");
  Find<ui::CheckBox>(Output("chkOver", 7)).Click();
  Type(Output("txtValue", 7), "42.5");
  Click("cmdApply");
  for (const auto& [number, text] :
       {std::pair(1, "100.0 1"), std::pair(2, "0.0 -1"), std::pair(3, "0.0 0"), std::pair(7, "42.5 1")})
    EXPECT_EQ(StoredOutput(number, 4, "SNVT_switch"), text) << number;

  Type(Output("txtValue", 7), "142.5");
  Click("cmdApply");
  EXPECT_THAT(Messages()[Messages().size() - 2], testing::HasSubstr("Output 7: "));
  EXPECT_EQ(StoredOutput(7, 4, "SNVT_switch"), "42.5 1");
  EXPECT_EQ(Text(Output("txtValue", 7)), "142.5");

  AssignOutput(7, "UNASSIGNED");
  EXPECT_EQ(Text(Output("txtValue", 7)), "0.0");
  EXPECT_FALSE(Enabled(Output("chkOver", 7)));
  Click("cmdApply");
  EXPECT_EQ(StoredOutput(7, 4, "SNVT_switch"), "0.0 -1");
}

TEST_F(OutputsTest, AnIncompletePairStopsTheWholeSaveAndTheHardwareDecidesWhatItCanDrive) {
  Open(tests::kUnassigned);  // outputs 1 to 5 digital, 6 and 7 analogue
  device = tests::kUnassigned;
  AssignOutput(1, "HEAT_VALVE_OPEN");
  Type("fPID.txtPIDTemp(0)", "1.5");
  Click("cmdApply");
  EXPECT_EQ(Messages()[0], "WriteValue/Hardware Output: You should choose 'Close' if 'Open' was selected.");
  EXPECT_EQ(StoredFunction(1), "UNASSIGNED");
  EXPECT_EQ(Function(1), "HEAT_VALVE_OPEN");
  AssignOutput(2, "HEAT_VALVE_CLOSE");
  Click("cmdApply");
  EXPECT_EQ(StoredFunction(1), "HEAT_VALVE_OPEN");

  const std::tuple<int, const char*, bool> cases[] = {{1, "FAN_ON_OFF", true},
                                                      {2, "HEATING_MOD", false},
                                                      {6, "FAN_SPEED_MOD", true},
                                                      {7, "HEATING_1", false}};
  for (const auto& [number, function, canDrive] : cases) {
    AssignOutput(number, function);
    EXPECT_EQ(Find<ui::CheckBox>(Output("chkOutput", number)).Checked(), canDrive) << function;
    EXPECT_EQ(Enabled(Output("cmdConfigure", number)), canDrive) << function;
  }
  Find<ui::CheckBox>(Output("chkOutput", 1)).Click();
  EXPECT_FALSE(Enabled(Output("cmdConfigure", 1)));
}

TEST_F(OutputsTest, TheActuatorDialogWritesThroughItsControl) {
  Open(device);
  Click(Output("cmdConfigure", 7));
  EXPECT_THAT(LastMessage(), testing::HasSubstr("\"MVConfigActuator.ctlConfigActuator\" is not registered"));
  EXPECT_TRUE(Main().AcceptsInput()) << "the page stays usable";

  tests::EditorDialog dialog(*this, [this](tests::EditorDialog& open) {
    tests::Editor& editor = *open.editor;
    EXPECT_EQ(editor.initialized, std::vector<std::string>{"RTU-1 North wing 7 PWM"});
    EXPECT_FALSE(Main().AcceptsInput());
    open.complain("No such range.");
    EXPECT_EQ(LastMessage(), "WriteValue/Actuator Configuration: No such range.");
    open.Click("cmdApply");
    EXPECT_EQ(editor.writes, 1) << "whether or not it says that it was changed";
    EXPECT_FALSE(editor.finished);
    open.Click("cmdOK");
  });
  Click(Output("cmdConfigure", 7));
  EXPECT_TRUE(dialog.editor->finished);
  EXPECT_TRUE(controls.alive.empty());
  EXPECT_TRUE(Main().AcceptsInput());
  EXPECT_FALSE(Main().Pages().AnyPageChanged());

  loop.whileOpen = [&] {
    PropertyOf(7, 2).Put("Value", "DIGITAL");  // as the control has written
    dialog.Click("cmdApply");
    dialog.Click("cmdCancel");
  };
  Click(Output("cmdConfigure", 7));
  EXPECT_FALSE(Find<ui::CheckBox>(Output("chkOutput", 7)).Checked());
  EXPECT_TRUE(Main().Pages().AnyPageChanged()) << "the mark is stored with the page";
}

TEST_F(OutputsTest, AnOverrideIsOnOrOffByItsValueAndMeansTheSameWithAnotherKindOfFunction) {
  Open(device);
  for (const auto& [stored, shown] : {std::pair{"0.0 1", "OFF"}, {"100.0 0", "OFF"}, {"0.5 1", "ON"}}) {
    PropertyOf(3, 4).Put("Value", stored);
    Page("fControlOutput").FillValue();
    EXPECT_EQ(Find<ui::ListBox>(Output("cboONOFF", 3)).SelectedText(), shown) << stored;
    EXPECT_TRUE(Find<ui::CheckBox>(Output("chkOver", 3)).Checked()) << stored;
  }

  Find<ui::CheckBox>(Output("chkOver", 1)).Click();
  const std::tuple<const char*, const char*, const char*> steps[] = {{"ON", "FAN_SPEED_MOD", "100.0"},
                                                                     {"0", "FAN_ON_OFF", "OFF"},
                                                                     {"OFF", "FAN_SPEED_MOD", "0.0"},
                                                                     {"35", "FAN_ON_OFF", "ON"}};
  auto& list = Find<ui::ListBox>(Output("cboONOFF", 1));
  for (const auto& [given, function, shown] : steps) {
    if (list.Visible() ? !list.Choose(given) : (Type(Output("txtValue", 1), given), false)) FAIL();
    AssignOutput(1, function);
    EXPECT_EQ(list.Visible() ? list.SelectedText() : Text(Output("txtValue", 1)), shown) << function;
  }
}

TEST_F(OutputsTest, AnOutputThatNobodyTouchedIsWrittenBackAsItWas) {
  Open(device);
  PropertyOf(2, 4).Put("Value", "50.0 1");
  PropertyOf(7, 4).Put("Value", "35.0 0");
  PropertyOf(1, 5).Put("Value", "FALSE");
  const auto stored = [this] {
    std::vector<std::string> texts;
    for (const std::size_t number : {1, 2, 7}) {
      for (const int property : {3, 4, 5, 6}) texts.push_back(PropertyOf(number, property).Text("Value"));
    }
    return texts;
  };
  Click("cmdRefresh");
  EXPECT_TRUE(Find<ui::CheckBox>(Output("chkOutput", 1)).Checked()) << "by the hardware check";
  const auto before = stored();
  AssignOutput(5, "DEHUMIDIFIER_ON_OFF");
  Save();
  EXPECT_EQ(stored(), before);
  Find<ui::CheckBox>(Output("chkOver", 1)).Click();
  Click("cmdApply");
  EXPECT_EQ(StoredOutput(1, 6, "UCPTlocalHardwareFlag"), "1") << "now as the page shows it";
  ChooseEntry("Take back the last save...");
  Save();
  EXPECT_EQ(PropertyOf(1, 5).Text("Value"), "FALSE") << "which the page never showed";
  Find<ui::CheckBox>(Output("chkOver", 1)).Click();
  EXPECT_EQ(Page("fControlOutput").Adjustments().size(), 1u);
  Main().Context().work.InTransaction("OK", "Main", [this] { return Page("fControlOutput").WriteValue(); });
  Page("fControlOutput").EndWriteValue();
  EXPECT_TRUE(Page("fControlOutput").Adjustments().empty()) << "saved, though not read again";
}

TEST_F(OutputsTest, TheFirstOverrideValueIsANumberOfTheUser) {
  tests::Tool tool(building, table, nullptr, ',');
  tool.Open(tests::kUnassigned);
  EXPECT_EQ(tool.Text(Output("txtValue", 7)), "0.0");
  tool.AssignOutput(7, "FAN_SPEED_MOD");
  EXPECT_EQ(tool.Text(Output("txtValue", 7)), "0,0");

  // The building writes points all the same: what it gave may be left, what was typed has to be a number.
  for (std::size_t i = 0; i < tool.Main().Pages().Count(); ++i) {
    for (ui::Control* control : tool.Main().Pages().Page(i).Controls()) {
      auto* box = dynamic_cast<ui::TextBox*>(control);
      if (!box || !box->Enter()) continue;
      EXPECT_TRUE(box->Leave()) << box->Name();
    }
  }
  EXPECT_TRUE(tool.prompts.asked.empty());
  auto& box = tool.Find<ui::TextBox>("fPID.txtPIDTemp(0)");
  for (const auto& [typed, accepted] : {std::pair{"7.5", false}, {"7,5", true}}) {
    box.Type(typed);
    EXPECT_EQ(box.Leave(), accepted) << typed;
  }
}

TEST_F(OutputsTest, WhatTheBuildingWritesWithAPointIsANumberToTheRulesOfEveryPage) {
  tests::Tool tool(building, table, nullptr, ',');
  tool.OpenPage(tests::kPressure, "fPID");
  tool.AssignOutput(6, "FRESH_AIR_DAMPER_MOD");
  tool.AssignOutput(7, "HUMIDIFIER_ON_OFF");
  EXPECT_EQ(tool.Find<ui::ListBox>(Output("cboONOFF", 7)).SelectedText(), "ON") << "of 35.0 %";
  tool.Click("cmdApply");
  EXPECT_EQ(tool.LastMessage(), tests::kApplied);
  // The program fills it in again as the building wrote it.
  const std::string before = tool.Text("fPID.txtPIDTemp(0)");
  tool.Type("fPID.txtPIDTemp(0)", "30");
  tool.Click("cmdApply");
  EXPECT_EQ(tool.Text("fPID.txtPIDTemp(0)"), "30.0000");
  const std::size_t asked = tool.prompts.asked.size();
  tool.ChooseEntry("Take back the last save...");
  EXPECT_TRUE(tool.Find<ui::TextBox>("fPID.txtPIDTemp(0)").Leave());
  EXPECT_EQ(tool.prompts.asked.size(), asked) << tool.prompts.Last().text;
  EXPECT_EQ(tool.Text("fPID.txtPIDTemp(0)"), before);
}

TEST_F(OutputsTest, AFunctionThatTheToolDoesNotKnowIsKept) {
  const tests::NewerBuilding newer(
      {{"\"BYPASS_DAMPER_MOD\"]", "\"BYPASS_DAMPER_MOD\", \"SOLAR_PUMP\"]"},
       {"\"HardwareOutput4.3\": \"COOLING_2\"", "\"HardwareOutput4.3\": \"SOLAR_PUMP\""}});
  building = simulator::Building(newer.Options());
  Open(device);
  EXPECT_EQ(Function(4), "SOLAR_PUMP");
  EXPECT_FALSE(Enabled(Output("chkOver", 4)));
  const std::string over = StoredOutput(4, 4, "SNVT_switch");
  AssignOutput(5, "FAN_SPEED_MOD");
  Save();
  EXPECT_EQ(StoredFunction(5), "FAN_SPEED_MOD");
  EXPECT_EQ(StoredFunction(4), "SOLAR_PUMP");
  EXPECT_EQ(StoredOutput(4, 4, "SNVT_switch"), over);
}

}  // namespace
