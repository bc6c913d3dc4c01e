#include "pages/control/fGeneral.h"

#include <algorithm>
#include <utility>

#include "logger/message_logger.h"

namespace pages {
namespace {

constexpr PropertyFormat kBypassTime = {15, "SCPTbypassTime", Units::kNone, 0, 0};
constexpr PropertyFormat kCO2Limit = {12, "SCPTlimitCO2", Units::kNone, 0, 0};
constexpr PropertyFormat kDuctPressure = {14, "SCPTmaxDuctStaticPressureSetpoint", Units::kSuffixed, 1, 4};
constexpr PropertyFormat kAirLowLimit = {6, "SCPTmixedAirLowLimitSetpoint", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kMaxPressure = {13, "UCPTmaxSupplyPressure", Units::kSuffixed, 1, 4};
constexpr PropertyFormat kHumidity = {10, "UCPThumidityLevelSetpoint", Units::kNone, 1, 1};
constexpr PropertyFormat kHumidityTime = {11, "UCPThumidityCtrlOnOffTime", Units::kNone, 1, 1};
constexpr PropertyFormat kMinimumPosition = {27, "UCPTminOutdoorAir", Units::kNone, 1, 1};
constexpr PropertyFormat kDamperDriveTime = {50, "UCPTdamperDriveTime", Units::kNone, 1, 1};
constexpr PropertyFormat kExtraConfig = {52, "UCPTextraConfig", Units::kNone, 1, 1};

constexpr PropertyFormat kBindOrder[] = {kBypassTime,  kCO2Limit,       kDuctPressure, kAirLowLimit,
                                         kMaxPressure, kHumidity,       kHumidityTime, kMinimumPosition,
                                         kExtraConfig, kDamperDriveTime};

constexpr std::size_t kMaximumPositionField = 2;  // of the extra configuration

// Fields of the shared option record.
constexpr std::size_t kFreshAirOption = 35;
constexpr std::size_t kEconomizerOption = 49;
constexpr std::size_t kReversingValveOption = 50;
constexpr std::size_t kEmergencyOption = 54;
constexpr std::size_t kFreshAirMarker = 55;
constexpr std::size_t kTemperatureOption = 56;

}  // namespace

fGeneral::fGeneral(const shell::PageContext& context, const shell::PagePlace& place)
    : ControlPage(context, place, "General"), boxes_{{kBypassTime, txtBypassTime},
                                                     {kCO2Limit, txtCO2},
                                                     {kDuctPressure, txtDuctPressure},
                                                     {kAirLowLimit, txtAirLowLimit},
                                                     {kMaxPressure, txtMaxPressure},
                                                     {kHumidity, txtHumidity},
                                                     {kHumidityTime, txtHumidityMin},
                                                     {kMinimumPosition, txtOutdoor}} {
  WatchAll(txtBypassTime, txtCO2, txtDuctPressure, txtAirLowLimit, txtMaxPressure, txtHumidity,
           txtHumidityMin, txtOutdoor, txtOutdoorMax, txtFreshAir, optTemp, optEcono, optEmergency,
           chkFreshAir);
  SetSource(kOptionsType, {&optTemp[0], &optEcono[0], &optEmergency[0], &chkFreshAir});
  SetSource(kExtraConfig.type, {&txtOutdoorMax});
  BuildLayout();
}

void fGeneral::BuildLayout() {
  using ui::Box, ui::Grid, ui::Item, ui::Line, ui::Stack;
  const auto rooms = Stack({
      Box(fraBypass, Grid(2, {Item(lblBypassTime), Line({Item(txtBypassTime), Item(lblBypassUnit)})})),
      Box(fraPress, Grid(2, {Item(lblDuct), Line({Item(txtDuctPressure), Item(lblPressUnit[0])}),
                             Item(lblMaxPressure), Line({Item(txtMaxPressure), Item(lblPressUnit[1])})})),
      Box(fraHumid, Grid(2, {Item(lblHumidity), Line({Item(txtHumidity), Item(lblHumidityUnit)}),
                             Item(lblHumidityMin), Line({Item(txtHumidityMin), Item(lblHumidityMinUnit)})})),
      Box(fraTemp, Stack({Item(optTemp[0]), Item(optTemp[1])})),
      Box(fraEmergency, Stack({Item(optEmergency[0]), Item(optEmergency[1])})),
  });
  const auto freshAir = Stack({
      Grid(2, {Item(lblValveOnOff), Line({Item(txtOutdoor), Item(lblOutdoorUnit[0])}), Item(lblOutDoorMax),
               Line({Item(txtOutdoorMax), Item(lblOutdoorUnit[1])}), Item(lblFreshAir),
               Line({Item(txtFreshAir), Item(lblFreshAirUnit)})}),
      Item(chkFreshAir),
  });
  const auto airSide = Stack({
      Box(fraFreshAir, freshAir),
      Box(fraMix, Grid(2, {Item(lblAir), Line({Item(txtAirLowLimit), Item(lblAirUnit)})})),
      Box(fraCo2, Grid(2, {Item(lblCO2), Line({Item(txtCO2), Item(lblCO2Unit)})})),
      Box(fraEcono, Stack({Item(optEcono[0]), Item(optEcono[1])})),
  });
  SetLayout(Line({ui::GrowX(ui::AlignGrids(rooms)), ui::GrowX(ui::AlignGrids(airSide))}));
}

void fGeneral::InitStrings() {
  SetCaptions({
      {&fraBypass, "Bypass"},
      {&lblBypassTime, "Bypass Time"},
      {&lblBypassUnit, "min"},
      {&fraCo2, "CO2 Level"},
      {&lblCO2, "CO2 limit"},
      {&lblCO2Unit, "ppm"},
      {&fraPress, "Pressure"},
      {&lblDuct, "Duct pressure setpoint"},
      {&lblMaxPressure, "Maximum supply pressure"},
      {&fraHumid, "Humidity"},
      {&lblHumidity, "Setpoint"},
      {&lblHumidityUnit, "% RH"},
      {&lblHumidityMin, "De/Humidifier min ON/OFF time"},
      {&lblHumidityMinUnit, "min"},
      {&fraTemp, "Temperature control"},
      {&optTemp[0], "Space temperature"},
      {&optTemp[1], "Return air temperature"},
      {&fraFreshAir, "Fresh air damper"},
      {&lblValveOnOff, "Minimum damper position"},
      {&lblOutDoorMax, "Maximum damper position"},
      {&lblOutdoorUnit[0], "%"},
      {&lblOutdoorUnit[1], "%"},
      {&lblFreshAir, "Damper drive time"},
      {&lblFreshAirUnit, "sec"},
      {&chkFreshAir, "Close the damper in unoccupied mode"},
      {&fraMix, "Mixed air"},
      {&lblAir, "Temperature low limit"},
      {&fraEcono, "Economizer"},
      {&optEcono[0], "Economizer included"},
      {&optEcono[1], "Economizer not included"},
      {&fraEmergency, "Emergency contact action"},
      {&optEmergency[0], "Purge"},
      {&optEmergency[1], "Shutdown"},
  });
}

void fGeneral::Fill() {
  BindFormats(kBindOrder);
  ShowUnit(kPressureUnit, lblPressUnit);
  ShowUnit(kTemperatureUnit, lblAirUnit);
  ReadBoxes(boxes_);
  ShowText(txtOutdoorMax, ReadRecord(kExtraConfig).Field(kMaximumPositionField));
  ReadBoxes({{kDamperDriveTime, txtFreshAir}});

  const base::Record options = ReadOptions();
  const auto set = [&options](std::size_t field) { return options.Field(field) != "0"; };
  WhenRead([this, emergency = set(kEmergencyOption), temperature = set(kTemperatureOption),
            economizer = set(kEconomizerOption), freshAir = set(kFreshAirOption),
            update = set(kFreshAirMarker)] {
    optEmergency[emergency].Select();
    optTemp[temperature].Select();
    optEcono[economizer].Select();
    chkFreshAir.SetChecked(freshAir);
    freshAirUpdate_ = update;
    MarkChanged(update);
    FollowFunctions();
  });
}

void fGeneral::FollowFunctions() {
  const bool freshAir = Assigned("FRESH_AIR_DAMPER_MOD") || Assigned("FRESH_AIR_DAMPER_OPEN") ||
                        Assigned("FRESH_AIR_DAMPER_CLOSE");
  EnableAll(freshAir, fraFreshAir, lblValveOnOff, txtOutdoor, txtOutdoorMax, lblOutDoorMax, fraMix, lblAir,
            txtAirLowLimit, lblAirUnit, chkFreshAir, txtFreshAir, lblFreshAir, fraCo2, txtCO2, fraEcono);
  EnableAll(Assigned("BYPASS_DAMPER_MOD") || Assigned("FAN_SPEED_MOD"), fraPress, txtDuctPressure,
            txtMaxPressure, lblDuct);
  const bool onOff = Assigned("HUMIDIFIER_ON_OFF") || Assigned("DEHUMIDIFIER_ON_OFF");
  EnableAll(onOff, txtHumidityMin, lblHumidityMin, lblHumidityMinUnit);
  // A modulating dehumidifier does not count.
  const bool humidifier = std::ranges::any_of(
      SelectedFunctions(), [](const std::string& function) { return function.starts_with("HUMIDIFIER"); });
  EnableAll(onOff || humidifier, fraHumid, txtHumidity);
  const shell::SelectedTypes& selections = Context().selections;
  EnableAll(selections.GetInputTypeSelectedIndex("RETURN_TEMP") != -1, fraTemp, optTemp);
  EnableAll(selections.GetInputTypeSelectedIndex("EMERGENCY_CONTACT") != -1, fraEmergency, optEmergency);
  ActivateOutdooeTest();
}

std::string fGeneral::DamperFault() const {
  if (!damperRange_) return {};
  const base::Numbers& numbers = Context().settings.numbers;
  if (!base::ParseEither(numbers, txtOutdoor.Text()) || !base::ParseEither(numbers, txtOutdoorMax.Text())) {
    return Translate("Damper positions must be a number.");
  }
  const auto position = [&numbers](const PropertyFormat& property, const ui::TextBox& box) {
    return NamingProperty(property.type, [&] { return numbers.ToSingle(box.Text()); });
  };
  if (position(kMinimumPosition, txtOutdoor) > position(kExtraConfig, txtOutdoorMax)) {
    return Translate(
        "The maximum damper position must be a number greater than or equal to the minimum damper position.");
  }
  return {};
}

std::vector<shell::Adjustment> fGeneral::Adjustments() {
  std::vector<shell::Adjustment> adjustments;
  if (freshAirUpdate_)
    adjustments.push_back({&fraFreshAir, {}, {}, Translate("Will be adjusted by the next save"), {}});
  shell::ISubForm* heating = Context().pages.FindPage("fHeatCool");
  auto* heat = heating ? dynamic_cast<ui::OptionButton*>(heating->Find("OptionNormallyHeat")) : nullptr;
  if (IsChanged() && heat && heat->Selected())
    adjustments.push_back({heat, Translate("Normally heat"), Translate("Normally cool"),
                           Translate("Is reset by saving the general settings"), "0"});
  return adjustments;
}

bool fGeneral::Write() {
  if (!IsChanged()) return true;
  BindFormats(kBindOrder);
  WriteBoxes(boxes_);
  ActivateOutdooeTest();
  if (const std::string fault = DamperFault(); !fault.empty()) {
    RefuseWrite(fault, {&txtOutdoor, &txtOutdoorMax});
    return false;
  }
  ChangeRecord(kExtraConfig,
               [this](host::Edit& extra) { SetField(extra, kMaximumPositionField, txtOutdoorMax); });
  WriteBoxes({{kDamperDriveTime, txtFreshAir}});
  WriteOptions();
  return true;
}

void fGeneral::WriteOptions() {
  ChangeOptions([this](host::Edit& options) {
    // Belongs to the heating and cooling page; saving the general settings puts the valve back to normally
    // cool.
    options.Set(kReversingValveOption, "0", "fHeatCool.OptionNormallyCool");
    SetField(options, kEmergencyOption, !optEmergency[0].Selected(), optEmergency[0]);
    if (freshAirUpdate_) options.Set(kFreshAirMarker, "0");
    SetField(options, kTemperatureOption, !optTemp[0].Selected(), optTemp[0]);
    SetField(options, kEconomizerOption, !optEcono[0].Selected(), optEcono[0]);
    SetField(options, kFreshAirOption, chkFreshAir.Checked(), chkFreshAir);
  });
}

void fGeneral::Saved() {
  if (!std::exchange(freshAirUpdate_, false)) return;
  Context().messages.AddMessage(
      Translate("The Fresh Air flow was set to damper position. See User Guide for more details."),
      "WriteValue", Location(), logger::kInformation);
}

}  // namespace pages
