#include "pages/control/fFanValve.h"

namespace pages {
namespace {

constexpr PropertyFormat kCoolDriveTime = {24, "UCPTcoolValveDriveTime", Units::kNone, 1, 1};
constexpr PropertyFormat kHeatDriveTime = {23, "UCPTheatValveDriveTime", Units::kNone, 1, 1};
constexpr PropertyFormat kHeatMinimum = {25, "UCPTheatValveMinPos", Units::kNone, 3, 3};
constexpr PropertyFormat kCoolMinimum = {26, "UCPTcoolValveMinPos", Units::kNone, 3, 3};
constexpr PropertyFormat kFanSpeed = {28, "UCPTminFanSpeed", Units::kNone, 3, 3};
constexpr PropertyFormat kFanPeriod = {22, "UCPTminFanOnOffPeriod", Units::kNone, 0, 0};
constexpr PropertyFormat kThreshold = {29, "UCPTfanCurrentThreshold", Units::kNone, 1, 1};

constexpr PropertyFormat kBindOrder[] = {kCoolDriveTime, kHeatDriveTime, kHeatMinimum, kCoolMinimum,
                                         kFanSpeed,      kFanPeriod,     kThreshold};

constexpr std::size_t kAlwaysOnOption = 63;
constexpr std::size_t kInputStateOption = 53;

constexpr std::size_t kFloatingOutputs = 6;  // only the first six outputs are looked at for floating valves

}  // namespace

fFanValve::fFanValve(const shell::PageContext& context, const shell::PagePlace& place)
    : ControlPage(context, place, "Fan-Valve") {
  WatchAll(txtHeat, txtCool, txtMinHeatValue, txtCoolValue, txtFanSpeed, txtFanPeriod, txtThresHold, optState,
           chkFan);
  SetSource(kOptionsType, {&optState[0], &chkFan});
  BuildLayout();
}

void fFanValve::BuildLayout() {
  using ui::Empty, ui::Item, ui::Line;
  const auto valves = ui::Stack({
      ui::Grid(3, {Empty(), Item(lblHeat), Item(lblCool), Item(lblDriveTime),
                   Line({Item(txtHeat), Item(lblHeatSec)}), Line({Item(txtCool), Item(lblCoolSec)})}),
      ui::Box(fraPosition,
              ui::Grid(4, {Item(lblHeatPosition), Line({Item(txtMinHeatValue), Item(lblHeatPercent)}),
                           Item(lblCoolPosition), Line({Item(txtCoolValue), Item(lblCoolPercent)})})),
  });
  const auto fan = ui::Stack({
      ui::Grid(3, {Item(lblFanSpeed), Item(lblSpeed), Line({Item(txtFanSpeed), Item(lblSpeedUnit)}), Empty(),
                   Item(lblPeriod), Line({Item(txtFanPeriod), Item(lblPeriodUnit)}), Item(lblFanCurrent),
                   Item(lblThresold), Line({Item(txtThresHold), Item(lblUnit)})}),
      ui::Box(fraState, Line({Item(optState[0]), Item(optState[1])})),
      Item(chkFan),
  });
  SetLayout(ui::Stack({ui::Box(fraValve, valves), ui::Box(fraFan, fan)}));
}

void fFanValve::InitStrings() {
  SetCaptions({
      {&fraValve, "Valves"},
      {&lblHeat, "Heating"},
      {&lblCool, "Cooling"},
      {&lblDriveTime, "Drive time for floating valves"},
      {&lblHeatSec, "sec"},
      {&lblCoolSec, "sec"},
      {&fraPosition, "Minimim position"},  // so spelt: it is a key of the string table
      {&lblHeatPosition, "Heating"},
      {&lblHeatPercent, "%"},
      {&lblCoolPosition, "Cooling"},
      {&lblCoolPercent, "%"},
      {&fraFan, "Fan"},
      {&lblFanSpeed, "Fan speed"},
      {&lblSpeed, "Minimum Speed"},
      {&lblSpeedUnit, "%"},
      {&lblPeriod, "ON/OFF period"},
      {&lblPeriodUnit, "min"},
      {&lblFanCurrent, "Fan current"},
      {&lblThresold, "Current threshold"},
      {&lblUnit, "Amp"},
      {&fraState, "Input State"},
      {&optState[0], "Normally open"},
      {&optState[1], "Normally closed"},
      {&chkFan, "Always ON in occupied mode"},
  });
}

void fFanValve::Fill() {
  BindFormats(kBindOrder);
  ReadBoxes({{kHeatMinimum, txtMinHeatValue},
             {kCoolMinimum, txtCoolValue},
             {kHeatDriveTime, txtHeat},
             {kCoolDriveTime, txtCool},
             {kFanSpeed, txtFanSpeed},
             {kFanPeriod, txtFanPeriod},
             {kThreshold, txtThresHold}});
  const base::Record options = ReadOptions();
  const bool alwaysOn = options.Field(kAlwaysOnOption) == "1";
  const bool closed = options.Field(kInputStateOption) == "1";
  WhenRead([this, alwaysOn, closed] {
    chkFan.SetChecked(alwaysOn);
    optState[closed].Select();
    CheckIfFrameEnable();
  });
}

bool fFanValve::Write() {
  Context().flags.writeError = false;
  if (!IsChanged()) return true;
  BindFormats(kBindOrder);
  WriteBoxes({{kHeatMinimum, txtMinHeatValue},
              {kCoolMinimum, txtCoolValue},
              {kHeatDriveTime, txtHeat},
              {kCoolDriveTime, txtCool},
              {kFanPeriod, txtFanPeriod},
              {kFanSpeed, txtFanSpeed},
              {kThreshold, txtThresHold}});
  ChangeOptions([this](host::Edit& options) {
    SetField(options, kAlwaysOnOption, chkFan.Checked(), chkFan);
    SetField(options, kInputStateOption, optState[1].Selected(), optState[0]);
  });
  return true;
}

// One half of the pair is enough.
bool fFanValve::Floating(std::string_view pair) const {
  const std::string close = std::string(pair) + "_CLOSE";
  const std::string open = std::string(pair) + "_OPEN";
  for (std::size_t i = 0; i < kFloatingOutputs; ++i) {
    const std::string& function = Context().selections.GetSelectedOutputType(i);
    if (function == close || function == open) return true;
  }
  return false;
}

// A contact has its sense in the sensor dialog; only a fan state by current is interpreted here.
bool fFanValve::FanStateByCurrent() const {
  for (std::size_t i = 0; i < host::DeviceObjects::kInputs; ++i) {
    if (Context().selections.GetSelectedInputType(i) != "FAN_STATE") continue;
    if (Context().selections.GetSensorType(i) != "DIGITAL") return true;
  }
  return false;
}

void fFanValve::CheckIfFrameEnable() {
  const bool heatFloating = Floating("HEAT_COOL_VALVE") || Floating("HEAT_VALVE");
  const bool coolFloating = Floating("HEAT_COOL_VALVE") || Floating("COOL_VALVE");
  const bool both = Assigned("HEAT_COOL_VALVE_MOD");
  const bool heat = heatFloating || both || Assigned("HEATING_VALVE_MOD");
  const bool cool = coolFloating || both || Assigned("COOLING_VALVE_MOD");
  EnableAll(coolFloating, txtCool, lblCoolSec, lblCool);
  EnableAll(heatFloating, txtHeat, lblHeatSec, lblHeat);
  EnableAll(cool, txtCoolValue, lblCoolPercent, lblCoolPosition);
  EnableAll(heat, txtMinHeatValue, lblHeatPercent, lblHeatPosition);
  fraPosition.SetEnabled(heat || cool);
  EnableAll(Assigned("FAN_SPEED_MOD"), lblSpeed, txtFanSpeed, lblSpeedUnit);
  EnableAll(FanStateByCurrent(), fraState, optState, txtThresHold, lblThresold, lblUnit);
}

}  // namespace pages
