// Every field of every page by itself: what is typed into it alone is stored, in its own place and nowhere
// else; and every box shows its property in the format, units and decimals that belong to it.
#include "base/record.h"
#include "fields/caption.h"
#include "tool_test.h"

namespace {

constexpr const char* kDevice = tests::kAssigned;

/// Boxes of one property of the rooftop object: a single one, or those of an array from `first` on.
struct Boxes {
  const char* name;
  int number;
  const char* format;  // "#" stands for the suffix of the units
  int metric, imperial;
  std::size_t place = 0;
  int first = -1;
};
const Boxes kBoxes[] = {
    {"fHeatCool.txtSetPoint", 3, "SCPTsetPnts#", 3, 3, 0, 0},
    {"fHeatCool.txtminHeatPeriod", 17, "UCPTminHeatPeriod", 0, 0},
    {"fHeatCool.txtMaxDischHeat", 4, "SCPTmaxDischargeAirHeatingSetpoint#", 3, 3},
    {"fHeatCool.txtMinDischCool", 5, "SCPTminDischargeAirCoolingSetpoint#", 3, 3},
    {"fHeatCool.txtCoolOn", 18, "UCPTminCoolOnPeriod", 0, 0},
    {"fHeatCool.txtCoolOFF", 19, "UCPTminCoolOffPeriod", 0, 0},
    {"fHeatCool.txtMechCoolDelay", 20, "UCPTfree2MecDelay", 3, 3},
    {"fHeatCool.txtfreeCoolDegree", 8, "UCPTfreeCoolSetpoint#", 3, 3},
    {"fHeatCool.txtfreeCooling", 7, "SCPToutdoorAirEnthalpySetpoint#", 3, 3},
    {"fHeatCool.txtMechCoolLL", 9, "UCPTmecCoolSetpoint#", 3, 3},
    {"fHeatCool.txtChngeOverDelay", 21, "UCPTchngeOverDelay", 0, 0},
    {"fFanValve.txtHeat", 23, "UCPTheatValveDriveTime", 1, 1},
    {"fFanValve.txtCool", 24, "UCPTcoolValveDriveTime", 1, 1},
    {"fFanValve.txtMinHeatValue", 25, "UCPTheatValveMinPos", 3, 3},
    {"fFanValve.txtCoolValue", 26, "UCPTcoolValveMinPos", 3, 3},
    {"fFanValve.txtFanPeriod", 22, "UCPTminFanOnOffPeriod", 0, 0},
    {"fFanValve.txtFanSpeed", 28, "UCPTminFanSpeed", 3, 3},
    {"fFanValve.txtThresHold", 29, "UCPTfanCurrentThreshold", 1, 1},
    {"fPID.txtPIDTemp", 30, "UCPTspaceTempPIDparam#", 4, 4, 0, 0},
    {"fPID.txtPIDTempDisch", 31, "UCPTdischargeTempPIDparam#", 4, 4, 0, 0},
    {"fPID.txtCO2Level", 32, "UCPTCO2PIDparam", 4, 4, 0, 0},
    {"fPID.txtPressure", 33, "UCPTpressurePIDparam#", 2, 5, 0, 0},
    {"fPID.txtHumidity", 34, "UCPThumidityPIDparam", 2, 2, 0, 0},
    {"fAlarm.txtAlarm", 35, "UCPTspaceTempAlarm#", 3, 3, 0, 0},
    {"fAlarm.txtAlarm", 36, "UCPTreturnTempAlarm#", 3, 3, 0, 2},
    {"fAlarm.txtAlarm", 37, "UCPTmixAirTempAlarm#", 3, 3, 0, 5},
    {"fAlarm.txtAlarm", 38, "UCPTsupplyTempAlarm#", 3, 3, 0, 8},
    {"fAlarm.txtAlarm", 39, "UCPTsupplyPressureAlarm#", 3, 3, 0, 11},
    {"fAlarm.txtAlarm", 40, "UCPTductPressureAlarm#", 3, 3, 0, 13},
    {"fAlarm.txtAlarm", 41, "UCPThumidityAlarm", 3, 3, 0, 16},
    {"fAlarm.txtAlarm", 42, "UCPTCO2Alarm", 3, 3, 0, 19},
    {"fAlarm.txtAlarm", 43, "UCPTauxiliaryAlarm", 3, 3, 0, 21},
    {"fAlarm.txtAlarm", 44, "UCPTfanAlarmTime", 3, 3, 0, 22},
    {"fGeneral.txtBypassTime", 15, "SCPTbypassTime", 0, 0},
    {"fGeneral.txtCO2", 12, "SCPTlimitCO2", 0, 0},
    {"fGeneral.txtDuctPressure", 14, "SCPTmaxDuctStaticPressureSetpoint#", 1, 4},
    {"fGeneral.txtAirLowLimit", 6, "SCPTmixedAirLowLimitSetpoint#", 3, 3},
    {"fGeneral.txtMaxPressure", 13, "UCPTmaxSupplyPressure#", 1, 4},
    {"fGeneral.txtHumidity", 10, "UCPThumidityLevelSetpoint", 1, 1},
    {"fGeneral.txtHumidityMin", 11, "UCPThumidityCtrlOnOffTime", 1, 1},
    {"fGeneral.txtOutdoor", 27, "UCPTminOutdoorAir", 1, 1},
    {"fGeneral.txtOutdoorMax", 52, "UCPTextraConfig", 1, 1, 2},
    {"fGeneral.txtFreshAir", 50, "UCPTdamperDriveTime", 1, 1},
    {"fOptions.txtStartTime", 16, "UCPTmaxOptimumStartTime", 0, 0},
    {"fOptions.txtInput", 45, "UCPTmaxRcvScanTime", 1, 1},
    {"fOptions.txtAt", 46, "UCPTweightAvgParam", 1, 1, 0, 0},
    {"fOptions.txtHeatCool", 52, "UCPTextraConfig", 1, 1},
};

/// Fields of the option record.
const std::pair<std::string, std::vector<std::pair<const char*, std::size_t>>> kOptions[] = {
    {"fHeatCool", {{"chkMechAndEco", 32}, {"OptionNormallyCool", 50}, {"chkHeatStage", 57}}},
    {"fOptions", {{"optTerminal", 33}, {"chkAlternate", 34}, {"chkTerminal", 48}, {"chkEnable", 51}}},
    {"fOptions", {{"optAverage", 52}, {"chkOptimum(1)", 59}, {"chkOptimum(2)", 60}, {"chkFrost", 62}}},
    {"fGeneral", {{"chkFreshAir", 35}, {"optEcono", 49}, {"optEmergency", 54}, {"optTemp", 56}}},
    {"fFanValve", {{"optState", 53}, {"chkFan", 63}}},
    {"fPID", {{"chkPID", 61}}}};

std::string At(const std::string& name, std::size_t index) {
  return name + "(" + std::to_string(index) + ")";
}
std::string Place(int number, std::size_t place) {
  return "RoofTopObject." + std::to_string(number) + "[" + std::to_string(place) + "]";
}

struct StoredFields : tests::ToolTest {
  /// What the device holds, field by field: "RoofTopObject.3[0]=23".
  std::set<std::string> Device() const {
    std::set<std::string> all;
    for (const std::string& line : base::Split(building.StoredDevice(kDevice), "\n")) {
      const auto sign = line.find('=');
      const auto fields = base::Split(line.substr(sign + 1), " ");
      for (std::size_t i = 0; i < fields.size(); ++i)
        all.insert(line.substr(0, sign) + "[" + std::to_string(i) + "]=" + fields[i]);
    }
    return all;
  }
  std::vector<std::string> NamesOf(const Boxes& boxes, std::size_t fields) {
    if (boxes.first < 0) return {boxes.name};
    std::vector<std::string> names;
    const auto point = std::string(boxes.name).find('.');
    const ui::Form& page = *Main().Pages().FindPage(std::string(boxes.name).substr(0, point));
    for (std::size_t i = 0; i < fields; ++i) {
      const std::string name = At(boxes.name, static_cast<std::size_t>(boxes.first) + i);
      if (page.Find(name.substr(point + 1))) names.push_back(name);
    }
    return names;
  }

  /// Where the content of each field is stored; of outputs and types the owner only, as more goes with them.
  std::map<std::string, std::string> Homes() {
    std::map<std::string, std::string> homes;
    for (const Boxes& boxes : kBoxes) {
      const base::Record record(
          Stored(kDevice, boxes.number, base::ReplaceAll(boxes.format, "#", "").c_str(), -1));
      const auto names = NamesOf(boxes, record.Count());
      for (std::size_t i = 0; i < names.size(); ++i) homes[names[i]] = Place(boxes.number, boxes.place + i);
    }
    for (const auto& [page, options] : kOptions) {
      for (const auto& [name, place] : options) homes[page + "." + name] = Place(48, place);
    }
    homes["fOptions.txtMaxOffset"] = Place(47, 0);
    homes["fOptions.txtChangeOver"] = Place(52, 1);
    for (std::size_t i = 0; i < 6; ++i)
      homes[At("fHardwareInput.cboInput", i)] = "HardwareInput" + std::to_string(i + 1) + ".3[0]";
    for (std::size_t i = 0; i < 7; ++i) {
      for (const char* name : {"cboOutput", "chkOutput", "chkOver", "cboONOFF", "txtValue"})
        homes[At(std::string("fControlOutput.") + name, i)] = "HardwareOutput" + std::to_string(i + 1) + ".";
    }
    for (std::size_t i = 0; i < 23; ++i) {
      const std::string variable = VariableOf(At("fNetworkInput.txtnvi", i));
      const bool emergency = variable.ends_with("nviEmergCmd");
      homes[At("fNetworkInput.txtnvi", i)] = variable + (emergency ? ".2[0]" : ".1[0]");
      homes[At("fNetworkInput.chkInput", i)] = Place(49, i);
      homes[At("fNetworkInput.lblType", i)] = variable;
      if (emergency) homes["fNetworkInput.txtEmergCmd"] = variable + ".1[0]";
    }
    for (std::size_t i = 0; i < 15; ++i) {
      const std::string variable = VariableOf(At("fNetworkOutput.txtNvo", i));
      homes[At("fNetworkOutput.txtNvo", i)] = variable + ".1[0]";
      if (i < 3) homes[At("fNetworkOutput.txtDelta", i)] = variable + ".2[0]";
      if (i >= 6) homes[At("fNetworkOutput.txtOutput", i)] = variable + ".2[0]";
    }
    homes["fNetworkOutput.txtnciSndHrtBt"] = "NodeObject.3[0]";
    homes["fNetworkOutput.txtnciMinSendTime"] = "NodeObject.4[0]";
    return homes;
  }

  /// The variable that the row of a box is called by.
  std::string VariableOf(const std::string& box) {
    return "RoofTopObject/" + fields::CaptionOf(Find(box)).row;
  }
  /// Contents that the field may be given instead of the one that it has.
  std::vector<std::string> Others(const fields::Field& field) {
    const std::string content = field.content();
    const auto* list = dynamic_cast<const ui::ListBox*>(field.control);
    if (field.kind == fields::Kind::kFlag || field.kind == fields::Kind::kOption ||
        (list && list->Translated()))
      return {content == "1" ? "0" : "1"};
    if (field.kind == fields::Kind::kText) {
      const double value = base::Numbers().ToDouble(content);
      return {base::Numbers().Text(value + 1), base::Numbers().Text(value - 1)};
    }
    if (list) return {list->Items().rbegin(), list->Items().rend()};
    return Main().Device().RoofTopVariables[field.caption().row].AllowedTypes();
  }
  /// Takes a content and stores it. Answers whether the page did.
  bool SaveField(const fields::Field& field, const std::string& content) {
    shell::ISubForm& page = Page(field.page);
    if (!Main().Prompts().Take(field, content).empty()) return false;
    EXPECT_TRUE(page.IsChanged()) << field.page << "." << field.name;
    host::Journal& journal = Main().Context().transactions.GetJournal();
    journal.Open();
    const bool written = page.WriteValue();
    journal.Close();
    if (!written) return false;
    page.EndWriteValue();
    std::set<std::string> controls;
    for (const host::Written& entry : journal.Entries()) {
      for (const host::ChangedField& changed : host::ChangedFields(entry)) controls.insert(changed.control);
    }
    EXPECT_THAT(controls, testing::Contains(testing::StartsWith(field.page + "." + field.name)))
        << "a refusal could not be told at its field";
    return true;
  }
};

TEST_F(StoredFields, EachAloneIsStoredInItsPlaceAndComesBack) {
  OpenPage(kDevice, "fHeatCool");
  for (int i = 0; i < 7; ++i) {
    auto& over = Find<ui::CheckBox>(At("fControlOutput.chkOver", static_cast<std::size_t>(i)));
    if (!over.Checked()) over.Click();  // without it no override is stored
  }
  Save();
  auto homes = Homes();
  const auto list = Main().Pages().Fields(program.GetStrings());
  for (const fields::Field& field : list.All()) {
    if (!field.control) continue;  // a setting of a sensor or an actuator
    const std::string name = field.page + "." + field.name;
    EXPECT_TRUE(homes.contains(name)) << name << " has no line in kBoxes or kOptions";
    const std::string home = homes[name];
    homes.erase(name);
    if (!field.applies()) continue;
    const std::string content = field.content();
    std::string taken;
    for (const std::string& other : Others(field)) {
      if (taken.empty() && other != content && SaveField(field, other)) taken = other;
    }
    // COOLING_2 stands on it; and a variable may have one type only.
    if (taken.empty() && (name == "fControlOutput.cboOutput(2)" || name.starts_with("fNetworkInput.lblType")))
      continue;
    ASSERT_NE(taken, "") << name << testing::PrintToString(Messages());
    const auto stored = Device();
    if (!name.starts_with("fControlOutput.chkOutput")) {  // which the hardware decides when it is read
      Page(field.page).FillValue();
      const base::Numbers numbers;
      EXPECT_EQ(numbers.Parse(field.content()), numbers.Parse(taken)) << name;
      EXPECT_EQ(numbers.IsNumber(taken) ? taken : field.content(), taken) << name;
    }
    EXPECT_TRUE(SaveField(field, content)) << name << testing::PrintToString(Messages());
    std::vector<std::string> changed;
    std::ranges::set_difference(Device(), stored, std::back_inserter(changed));
    EXPECT_THAT(changed,
                testing::AllOf(testing::Not(testing::IsEmpty()), testing::Each(testing::StartsWith(home))))
        << name;
  }
  EXPECT_EQ(homes, (std::map<std::string, std::string>())) << "fields that are not in the list";
}

TEST_F(StoredFields, AreShownInTheirFormatAndDecimalsAlsoAfterARefreshThatDropsEdits) {
  Open(kDevice);
  for (std::size_t i = 0; i < 10; ++i) {
    Main().Pages().Page(i).FillValue();
    EXPECT_EQ(Main().Flags().lastFilledPage, static_cast<int>(i) + 1);
  }
  const auto calls = building.Faults().Total();
  Page("fPID").RefreshPage();
  EXPECT_EQ(building.Faults().Total(), calls) << "nothing to read";
  Type("fPID.txtPIDTemp(2)", "99");
  Page("fPID").RefreshPage();
  EXPECT_FALSE(Page("fPID").IsChanged());
  for (const bool imperial : {false, true}) {
    if (imperial) Find<ui::OptionButton>("optUnit(1)").Click();
    for (const Boxes& boxes : kBoxes) {
      const std::string format = base::ReplaceAll(boxes.format, "#", imperial ? "#US" : "#SI");
      const base::Record record(
          Stored(kDevice, boxes.number, format.c_str(), imperial ? boxes.imperial : boxes.metric));
      const auto names = NamesOf(boxes, record.Count());
      for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(Text(names[i]), record.Field(boxes.place + i)) << names[i];
    }
    // Half a kelvin and one percent, two kelvins.
    EXPECT_EQ(Text("fNetworkOutput.txtDelta(0)") + " " + Text("fNetworkOutput.txtDelta(1)"),
              imperial ? "0.90 1.000" : "0.50 1.000");
    EXPECT_EQ(Text("fOptions.txtMaxOffset"), imperial ? "3.60" : "2.00");
  }
  for (const char* box :
       {"fNetworkOutput.txtDelta(0)", "fNetworkOutput.txtDelta(2)", "fOptions.txtMaxOffset"})
    Type(box, "1.8");
  Click("cmdApply");
  EXPECT_EQ(building.StoredText(kDevice, "RoofTopObject/nvoSpaceTemp", 2, "SCPTminDeltaTemp#SI"), "1.00");
  EXPECT_EQ(building.StoredText(kDevice, "RoofTopObject/nvoTermLoadInAvg", 2, "SNVT_lev_percent"), "1.800");
  EXPECT_EQ(Stored(kDevice, 47, "UCPTweightAvgMaxInOffset", 2), "1.00");
}

}  // namespace
