// What only all pages together can show: one save over all of them, the option record that they share, and
// the two unit systems.
#include <map>

#include "base/record.h"
#include "base/text.h"
#include "tool_test.h"

namespace {

constexpr int kRoofTopProperties = 52;
constexpr const char* kDevice = tests::kAssigned;

/// A change of one field of a page, and the calls that the page's own algorithm asks for to save it.
struct PageSave {
  const char* page;
  void (*change)(tests::Tool& tool);
  std::uint64_t formats;     // set before writing
  std::uint64_t precisions;  // set before reading what is there
  std::uint64_t values;      // read, written, and those that were changed read again after the commit
  std::uint64_t objects;     // properties that filling the page did not need
};
const PageSave kSaves[] = {
    {"fHardwareInput", [](tests::Tool& tool) { tool.AssignInput(6, "OCC_CONTACT"); }, 6, 0, 13, 0},
    {"fControlOutput", [](tests::Tool& tool) { tool.AssignOutput(5, "DEHUMIDIFIER_ON_OFF"); }, 14, 0, 57, 7},
    {"fHeatCool", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fHeatCool.chkMechAndEco").Click(); }, 12,
     11, 25, 0},
    {"fFanValve", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fFanValve.chkFan").Click(); }, 8, 7, 17,
     0},
    {"fPID", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fPID.chkPID").Click(); }, 6, 5, 13, 0},
    {"fAlarm", [](tests::Tool& tool) { tool.Type("fAlarm.txtAlarm(0)", "4"); }, 10, 10, 21, 0},
    {"fGeneral", [](tests::Tool& tool) { tool.Find<ui::OptionButton>("fGeneral.optEcono(1)").Click(); }, 11,
     10, 23, 0},
    {"fOptions", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fOptions.chkFrost").Click(); }, 6, 5, 13,
     0},
    {"fNetworkInput", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fNetworkInput.chkInput(0)").Click(); },
     24, 24, 51, 0},
    {"fNetworkOutput", [](tests::Tool& tool) { tool.Type("fNetworkOutput.txtNvo(0)", "30"); }, 5, 29, 59, 0},
};

struct AllPages : tests::ToolTest {
  /// Every value of the rooftop object as the store holds it, by number.
  std::map<int, std::string> RoofTop() {
    std::map<int, std::string> values;
    auto& properties = Main().Device().RoofTopProperties;
    for (int number = 1; number <= kRoofTopProperties; ++number) {
      values[number] = Stored(kDevice, number, properties[number].Object().Text("Name").c_str(), -1);
    }
    return values;
  }
  std::vector<std::string> ValuePages() {
    std::vector<std::string> names;
    for (const auto& entry : Main().Pages().Table()) {
      if (entry.showsDeviceValues) names.emplace_back(entry.pageClass);
    }
    return names;
  }

  void ChangeOneFieldOnEachPage() {
    for (const PageSave& save : kSaves) save.change(*this);
  }
};

TEST_F(AllPages, OnePageThatRefusesKeepsAllBackUntilItIsCorrected) {
  OpenPage(kDevice, "fHeatCool");
  const auto before = RoofTop();
  ChangeOneFieldOnEachPage();
  const std::string limit = Text("fAlarm.txtAlarm(8)");
  Type("fAlarm.txtAlarm(8)", "30");  // above the supply setpoint, so two pages refuse
  for (const char* button : {"cmdApply", "cmdOK"}) {
    building.Faults().StartCounting();
    Click(button);
    EXPECT_EQ(RoofTop(), before);
    EXPECT_TRUE(LastMessage().ends_with("/Main: The configuration settings were not applied"))
        << LastMessage();
    EXPECT_TRUE(Main().Visible());
    EXPECT_EQ(building.Faults().Count("Network.CancelTransaction"), 1u);
    EXPECT_EQ(building.Faults().Count("Network.CommitTransaction"), 0u);
    for (const std::string& name : ValuePages())
      EXPECT_TRUE(Main().Pages().FindPage(name)->IsChanged()) << name;
  }

  Type("fAlarm.txtAlarm(8)", limit);
  Click("cmdApply");
  EXPECT_EQ(LastMessage(), tests::kApplied);
  EXPECT_NE(RoofTop(), before);
}

TEST_F(AllPages, SwitchingUnitsToAndFroMovesNoValueAlsoWhenSaved) {
  OpenPage(kDevice, "fHeatCool");
  for (const char* boxes : {"fHeatCool.txtSetPoint", "fAlarm.txtAlarm", "fPID.txtPIDTemp"}) {
    for (int i = 0; i < 6; ++i) {
      const std::string box = std::string(boxes) + "(" + std::to_string(i) + ")";
      Type(box, base::ReplaceAll(Text(box), ".000", ".123"));
    }
  }
  Click("cmdApply");
  ASSERT_EQ(LastMessage(), tests::kApplied);
  const auto stored = RoofTop();
  std::map<std::string, std::string> shown;
  for (int turn = 0; turn < 10; ++turn) {
    for (const char* unit : {"optUnit(1)", "optUnit(0)"}) {
      Find<ui::OptionButton>(unit).Click();
      for (const std::string& name : ValuePages()) {
        for (ui::Control* control : Main().Pages().FindPage(name)->Controls()) {
          const std::string key = std::string(unit) + name + "." + control->Name();
          const auto [known, first] = shown.emplace(key, control->Text());
          EXPECT_EQ(known->second, control->Text()) << key << " turn " << turn;
          // An edit that changes nothing has the whole page written.
          auto* box = dynamic_cast<ui::TextBox*>(control);
          if (box && box->Usable()) box->Type(" " + box->Text());
        }
      }
      Click("cmdApply");
      ASSERT_EQ(LastMessage(), tests::kApplied);
    }
  }
  EXPECT_EQ(RoofTop(), stored);
}

TEST_F(AllPages, OldMarkersAreAdjustedWithTheNextSaveAndToldOnce) {
  const struct {
    std::string page, box;
    std::vector<std::size_t> fields;
    std::string notice;
  } cases[] = {
      {"fGeneral",
       "txtBypassTime",
       {55, 50},  // and the reversing valve goes back to normally cool
       "WriteValue/General: The Fresh Air flow was set to damper position. See User Guide for more details."},
      {"fOptions",
       "txtInput",
       {58},
       "WriteValue/Options: The Optimum Start algorithm was updated and options were adjusted accordingly. "
       "See User Guide for more details."}};
  Open(tests::kPressure);
  const auto options = [this] { return base::Record(Stored(tests::kPressure, 48, "UCPTobjectOptions", 0)); };
  for (const auto& item : cases) {
    EXPECT_TRUE(Main().Pages().FindPage(item.page)->IsChanged());
    for (const std::size_t field : item.fields) EXPECT_EQ(options().Field(field), "1") << field;
  }
  Type("fPID.txtPIDTemp(0)", "abc");
  Click("cmdApply");
  for (const auto& item : cases) EXPECT_EQ(std::ranges::count(Messages(), item.notice), 0) << "refused";
  Type("fPID.txtPIDTemp(0)", "1");
  for (int save = 0; save < 2; ++save) {
    Click("cmdApply");
    for (const auto& item : cases) {
      EXPECT_FALSE(Main().Pages().FindPage(item.page)->IsChanged());
      for (const std::size_t field : item.fields) EXPECT_EQ(options().Field(field), "0") << field;
      EXPECT_EQ(std::ranges::count(Messages(), item.notice), 1);
      Unlock(item.page);
      Type(item.page + "." + item.box, "61");
    }
  }
}

TEST_F(AllPages, UnitsStandInTheCaptions) {
  const std::tuple<const char*, const char*, const char*> captions[] = {
      {"fHeatCool.lblUnits(9)", "°C", "°F"},         {"fHeatCool.lblBtu", "KJ/kg", "BTU/lb"},
      {"fPID.lblUnit(5)", "% / °C", "% / °F"},       {"fPID.lblDeadBandUnit(1)", "°C", "°F"},
      {"fPID.lblPressure(2)", "% / Pa", "%/ \" WC"}, {"fPID.lblPressD", "Pa", "\" WC"},
      {"fAlarm.lblCelsius(5)", "°C", "°F"},          {"fAlarm.lblUnitP(2)", "Pa", "\" WC"},
      {"fGeneral.lblAirUnit", "°C", "°F"},           {"fGeneral.lblPressUnit(0)", "Pa", "\" WC"},
      {"fOptions.lblMaxOffsetUnit", "°C", "°F"},     {"fNetworkOutput.lblDeltaUnit(0)", "°C", "°F"},
      {"fNetworkOutput.lblDeltaUnit(1)", "%", "%"}};
  Open(kDevice);
  for (const bool imperial : {false, true}) {
    if (imperial) Find<ui::OptionButton>("optUnit(1)").Click();
    for (const auto& [label, metric, us] : captions) EXPECT_EQ(Text(label), imperial ? us : metric) << label;
    EXPECT_EQ(Find("fPID.txtPIDTemp(0)").AccessibleName(),
              std::string("Space Temperature, Proportional Gain, ") + (imperial ? "% / °F" : "% / °C"));
  }
}

TEST(PageSaves, CallTheHostForWhatThePageNeedsAndNothingElse) {
  for (const PageSave& save : kSaves) {
    tests::Tool tool;
    tool.OpenPage(kDevice, "fHeatCool");
    tool.Main().Companions().front()->SaveBegins();  // what a backup needs beside the pages is asked for once
    save.change(tool);
    tool.building.Faults().StartCounting();
    tool.Click("cmdOK");
    std::map<std::string, std::uint64_t, std::less<>> expected = {{"Network.BeginTransaction", 1},
                                                                  {"Network.CommitTransaction", 1},
                                                                  {"Property.Value", save.values},
                                                                  {"Property.formatName", save.formats}};
    if (save.precisions > 0) expected["Property.Precision"] = save.precisions;
    if (save.objects > 0) expected["Collection.Item"] = save.objects;
    EXPECT_EQ(tool.building.Faults().Counts(), expected) << save.page;
  }
}

}  // namespace
