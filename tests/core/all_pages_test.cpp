// What only all pages together can show: one save over all of them, the option record that they share, and
// the two unit systems.
#include <map>

#include "base/record.h"
#include "tool_test.h"

namespace {

constexpr const char* kDevice = tests::kAssigned;

/// A change of one field of each page.
const std::pair<const char*, void (*)(tests::Tool& tool)> kChanges[] = {
    {"fHardwareInput", [](tests::Tool& tool) { tool.AssignInput(6, "OCC_CONTACT"); }},
    {"fControlOutput", [](tests::Tool& tool) { tool.AssignOutput(5, "DEHUMIDIFIER_ON_OFF"); }},
    {"fHeatCool", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fHeatCool.chkMechAndEco").Click(); }},
    {"fFanValve", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fFanValve.chkFan").Click(); }},
    {"fPID", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fPID.chkPID").Click(); }},
    {"fAlarm", [](tests::Tool& tool) { tool.Type("fAlarm.txtAlarm(0)", "4"); }},
    {"fGeneral", [](tests::Tool& tool) { tool.Find<ui::OptionButton>("fGeneral.optEcono(1)").Click(); }},
    {"fOptions", [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fOptions.chkFrost").Click(); }},
    {"fNetworkInput",
     [](tests::Tool& tool) { tool.Find<ui::CheckBox>("fNetworkInput.chkInput(0)").Click(); }},
    {"fNetworkOutput", [](tests::Tool& tool) { tool.Type("fNetworkOutput.txtNvo(0)", "30"); }},
};

struct AllPages : tests::ToolTest {
  std::string Device() const { return building.StoredDevice(kDevice); }
};

TEST_F(AllPages, OnePageThatRefusesKeepsAllBackUntilItIsCorrected) {
  OpenPage(kDevice, "fHeatCool");
  const auto before = Device();
  for (const auto& [page, change] : kChanges) change(*this);
  const std::string limit = Text("fAlarm.txtAlarm(8)");
  Type("fAlarm.txtAlarm(8)", "30");  // above the supply setpoint, so two pages refuse
  for (const char* button : {"cmdApply", "cmdOK"}) {
    building.Faults().StartCounting();
    Click(button);
    EXPECT_EQ(Device(), before);
    EXPECT_THAT(LastMessage(), testing::EndsWith("/Main: The configuration settings were not applied"));
    EXPECT_TRUE(Main().Visible());
    EXPECT_EQ(building.Faults().Count("Network.CancelTransaction"), 1u);
    EXPECT_EQ(building.Faults().Count("Network.CommitTransaction"), 0u);
    for (const auto& entry : Main().Pages().Table())
      EXPECT_EQ(Page(entry.pageClass).IsChanged(), entry.showsDeviceValues)
          << entry.pageClass << ": give it a change in kChanges";
  }

  Type("fAlarm.txtAlarm(8)", limit);
  Save();
  EXPECT_NE(Device(), before);
}

TEST_F(AllPages, SwitchingUnitsToAndFroMovesNoValueAlsoWhenSaved) {
  OpenPage(kDevice, "fHeatCool");
  for (const char* boxes : {"fHeatCool.txtSetPoint", "fAlarm.txtAlarm", "fPID.txtPIDTemp"}) {
    for (int i = 0; i < 6; ++i) {
      const std::string box = std::string(boxes) + "(" + std::to_string(i) + ")";
      Type(box, base::ReplaceAll(Text(box), ".000", ".123"));
    }
  }
  Save();
  const auto stored = Device();
  std::map<std::string, std::string> shown;
  for (int turn = 0; turn < 10; ++turn) {
    for (const char* unit : {"optUnit(1)", "optUnit(0)"}) {
      Find<ui::OptionButton>(unit).Click();
      for (const auto& [page, change] : kChanges) {
        for (ui::Control* control : Page(page).Controls()) {
          const std::string key = std::string(unit) + page + "." + control->Name();
          const auto [known, first] = shown.emplace(key, control->Text());
          EXPECT_EQ(known->second, control->Text()) << key << " turn " << turn;
          // An edit that changes nothing has the whole page written.
          auto* box = dynamic_cast<ui::TextBox*>(control);
          if (box && box->Usable()) box->Type(" " + box->Text());
        }
      }
      Save();
    }
  }
  EXPECT_EQ(Device(), stored);
}

TEST_F(AllPages, OldMarkersAreAdjustedWithTheNextSaveAndToldOnce) {
  const std::tuple<std::string, std::string, std::vector<std::size_t>, std::string> cases[] = {
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
  for (const auto& [page, box, fields, notice] : cases) {
    EXPECT_TRUE(Page(page).IsChanged());
    for (const std::size_t field : fields) EXPECT_EQ(options().Field(field), "1") << field;
  }
  Type("fPID.txtPIDTemp(0)", "abc");
  Click("cmdApply");
  for (const auto& [page, box, fields, notice] : cases)
    EXPECT_EQ(std::ranges::count(Messages(), notice), 0) << "refused";
  Type("fPID.txtPIDTemp(0)", "1");
  for (int save = 0; save < 2; ++save) {
    Click("cmdApply");
    for (const auto& [page, box, fields, notice] : cases) {
      EXPECT_FALSE(Page(page).IsChanged());
      for (const std::size_t field : fields) EXPECT_EQ(options().Field(field), "0") << field;
      EXPECT_EQ(std::ranges::count(Messages(), notice), 1);
      Unlock(page);
      Type(page + "." + box, "61");
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
    for (const auto& [label, metric, us] : captions) {
      EXPECT_EQ(Text(label), imperial ? us : metric) << label;
      const std::string room = metric == std::string(us) ? "" : std::string(metric) + "\n" + us;
      EXPECT_EQ(Find(label).Room(), room) << label << ": nothing moves";
    }
    EXPECT_EQ(Find("fPID.txtPIDTemp(0)").AccessibleName(),
              std::string("Space Temperature, Proportional Gain, ") + (imperial ? "% / °F" : "% / °C"));
  }
}

// Of each of its properties the page reads what is stored and writes it; what was changed is read once more.
constexpr std::uint64_t kPairs = 7;  // the outputs' second marks, which only saving asks for

TEST(PageSaves, CallTheHostForThePageThatWasChangedAndNothingElse) {
  for (const auto& [page, change] : kChanges) {
    tests::Tool tool;
    tool.OpenPage(kDevice, "fHeatCool");
    tool.Main().Companions().front()->SaveBegins();  // what a backup needs beside the pages is asked for once
    simulator::Faults& faults = tool.building.Faults();
    faults.StartCounting();
    tool.Page(page).FillValue();
    const auto filled = faults.Counts();
    change(tool);
    faults.StartCounting();
    tool.Click("cmdOK");
    for (const auto& [member, count] : faults.Counts()) {
      const bool once = member.ends_with("Transaction");
      const auto known = filled.contains(member) ? filled.at(member) : once ? 1 : kPairs;
      EXPECT_LE(count, member == "Property.Value" ? 2 * known + 1 : known) << page << ": " << member;
    }
  }
}

}  // namespace
