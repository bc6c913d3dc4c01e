// The values of all pages as one list of fields: which controls are in it, what they are called, and how a
// content is taken.
#include "fields/field.h"

#include "tool_test.h"

namespace {

using fields::Field;
using fields::FieldList;

struct FieldsTest : tests::ToolTest {
  FieldList Fields() { return Main().Pages().Fields(program.GetStrings()); }
  /// By "page.control".
  static const Field& At(const FieldList& list, const std::string& name) {
    const auto point = name.find('.');
    const Field* field = list.Find(name.substr(0, point), name.substr(point + 1));
    if (!field) throw base::Error("no field " + name);
    return *field;
  }
  static std::string Path(const FieldList& list, const std::string& name) {
    const fields::Caption caption = At(list, name).caption();
    return PathOf(caption) + (caption.unit.empty() ? "" : " [" + caption.unit + "]");
  }
};

TEST_F(FieldsTest, EveryValueControlOfThePagesIsInTheListOnce) {
  for (const char* device : {tests::kAssigned, tests::kPressure}) {
    tests::Tool tool;
    tool.Open(device);
    const FieldList list = tool.Main().Pages().Fields(tool.program.GetStrings());
    std::multiset<const ui::Control*> listed;
    std::set<std::pair<std::string, std::string>> paths;
    for (const Field& field : list.All()) {
      const auto* button = dynamic_cast<ui::OptionButton*>(field.control);
      if (button) listed.insert(button->Siblings().begin(), button->Siblings().end());
      if (!button) listed.insert(field.control);
      const std::string path = PathOf(field.caption());
      EXPECT_NE(path, "") << field.name;
      // One that does not apply stands where another one does.
      EXPECT_TRUE(!field.applies() || paths.emplace(field.page, path).second) << field.name << ": " << path;
      EXPECT_EQ(list.Find(field.page, field.name), &field);
    }
    for (std::size_t i = 0; i < tool.Main().Pages().Count(); ++i) {
      const ui::Form& page = tool.Main().Pages().Page(i);
      for (const ui::Control* control : page.Controls()) {
        const bool type = page.Name() == "fNetworkInput" && control->Name().starts_with("lblType(");
        // Flags without a variable and alarm boxes without a field of a record are shown for no function.
        const bool spare = page.Name() != "fControlOutput" && !control->VisibleInFrame();
        const bool expected = type || (fields::IsValue(*control) && !spare);
        EXPECT_EQ(listed.count(control), expected) << page.Name() << "." << control->Name();
        EXPECT_EQ(list.Find(page.Name(), control->Name()) != nullptr, expected) << control->Name();
      }
    }
    EXPECT_EQ(list.Find("fPID", "txtPIDTemp"), nullptr);
  }
}

TEST_F(FieldsTest, AreCalledAndShownAsAPersonReadsThem) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"fPID.txtPIDTemp(0)", "Space Temperature, Proportional Gain [% / °C]",
       "Raumtemperatur, Proportional Verstärkung [% / °F]"},
      {"fPID.chkPID", "Use supply air temp only for limitation",
       "Zulufttemperatur nur zur Begrenzung verwenden"},
      {"fFanValve.txtHeat", "Drive time for floating valves, Heating [sec]",
       "Laufzeit der Dreipunktventile, Heizen [s]"},
      {"fHeatCool.txtSetPoint(5)", "Setpoints, Unoccupied, Heating [°C]", "Sollwerte, Unbelegt, Heizen [°F]"},
      {"fHeatCool.chkMechAndEco", "Use mechanical cooling together with the economizer",
       "Freie Kühlung, Mechanische zusammen mit freier Kühlung nutzen"},
      {"fHeatCool.OptionNormallyHeat", "Reversing valve", "Umkehrventil"},
      {"fGeneral.optTemp(1)", "Temperature control", "Temperaturregelung"},
      {"fGeneral.txtBypassTime", "Bypass Time [min]", "Bypass-Dauer [min]"},
      {"fGeneral.txtHumidity", "Humidity, Setpoint [% RH]", "Feuchte, Sollwert [% r. F.]"},
      {"fAlarm.txtAlarm(14)", "Duct pressure, High limit [Pa]", "Kanaldruck, Obergrenze [\" WC]"},
      {"fControlOutput.txtValue(0)", "Output 1, Override value [%]", "Ausgang 1, Übersteuerungswert [%]"},
      {"fControlOutput.cboONOFF(0)", "Output 1, Override value", "Ausgang 1, Übersteuerungswert"},
      {"fNetworkInput.chkInput(12)", "Space and terminals, nviCO2, Persistent",
       "Raum und Endgeräte, nviCO2, Dauerhaft"},
      {"fNetworkInput.lblType(12)", "Space and terminals, nviCO2, Type", "Raum und Endgeräte, nviCO2, Typ"},
  };
  Open(tests::kAssigned);
  const FieldList list = Fields();
  for (const auto& [field, english, german] : cases) EXPECT_EQ(Path(list, field), english);
  for (const auto& [field, content, shown] :
       {std::tuple("fPID.txtPIDTemp(0)", "25.0000", "25.0000"),
        {"fPID.chkPID", "1", "ON"},
        {"fPID.chkPID", "0", "OFF"},
        {"fGeneral.optTemp", "1", "Return air temperature"},
        {"fGeneral.optTemp", "", ""},
        {"fControlOutput.cboONOFF(0)", "1", "OFF"},
        {"fControlOutput.cboOutput(0)", "FAN_SPEED_MOD", "FAN_SPEED_MOD"}})
    EXPECT_EQ(At(list, field).shown(content), shown) << field;
  // A button is no field, but has a caption for the help.
  EXPECT_EQ(NameOf(fields::CaptionOf(Find("fControlOutput.cmdConfigure(0)"))), "Output 1, Configure...");
  Find<ui::OptionButton>("optUnit(1)").Click();
  const auto contents = [&list] {
    std::string all;
    for (const Field& field : list.All()) all += field.applies() ? field.content() + "\n" : "";
    return all;
  };
  const std::string before = contents();
  UseLanguage("German");
  for (const auto& [field, english, german] : cases) EXPECT_EQ(Path(list, field), german);
  EXPECT_EQ(contents(), before) << "they depend on no language";
}

TEST_F(FieldsTest, TakeAContentAsAPersonWouldAndSayWhyNot) {
  constexpr const char* kNotShown = "This field is not shown with the present choices.";
  const std::tuple<const char*, const char*, const char*> steps[] = {
      {"fPID.txtHumidity(0)", " 3.5 ", ""},  // greyed
      {"fPID.txtPIDTemp(0)", "abc", "Invalid value for this field"},
      {"fPID.chkPID", "2", "There is no choice 2."},
      {"fGeneral.optTemp", "1", ""},
      {"fGeneral.optTemp", "2", "There is no choice 2."},
      {"fHardwareInput.cboInput(0)", "NO_SUCH", "There is no choice NO_SUCH."},
      {"fHardwareInput.cboInput(0)", "CO2_LEVEL", ""},  // without the defaults
      {"fControlOutput.cboOutput(0)", "HEATING_2",
       "You have to select the HEATING_1 before selecting HEATING_2"},
      {"fControlOutput.cboONOFF(1)", "0", kNotShown},
      {"fControlOutput.cboOutput(1)", "HEATING_1", ""},
      {"fControlOutput.cboONOFF(1)", "0", ""},
      {"fControlOutput.txtValue(1)", "5", kNotShown},
      {"fControlOutput.cboOutput(0)", "HEATING_2", ""},
      {"fNetworkInput.lblType(0)", "SNVT_temp_p",
       "This device does not allow the type SNVT_temp_p for nviOccCmd."},
      {"fNetworkInput.lblType(0)", "SNVT_tod_event", ""},
  };
  Open(tests::kUnassigned);
  const FieldList list = Fields();
  for (const auto& [field, content, reason] : steps) {
    const std::string before = At(list, field).content();
    EXPECT_EQ(Main().Prompts().Take(At(list, field), content), reason) << field;
    EXPECT_EQ(At(list, field).content(), *reason ? before : base::Trim(content)) << field;
  }
  EXPECT_TRUE(prompts.asked.empty());
  EXPECT_FALSE(Main().Device().OccupancyIsStandard) << "the options page follows the type";
  EXPECT_EQ(building.StoredText(tests::kUnassigned, "HardwareInput1", 3, "UCPTroofTopInputType"), "UNUSED");

  // The list takes it with the page's own box.
  EXPECT_EQ(At(list, "fControlOutput.cboOutput(1)").take("UNASSIGNED"), "The page did not take the value.");
  ASSERT_EQ(prompts.asked.size(), 1u);
  EXPECT_EQ(prompts.asked[0].text, "You still have HEATING_2 selected, HEATING_1 must remain selected.");
}

}  // namespace
