#include "pages/control/fHeatCool.h"

#include <algorithm>

#include "base/text.h"

namespace pages {
namespace {

constexpr PropertyFormat kSetpoints = {3, "SCPTsetPnts", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kHeatPeriod = {17, "UCPTminHeatPeriod", Units::kNone, 0, 0};
constexpr PropertyFormat kMaxSupply = {4, "SCPTmaxDischargeAirHeatingSetpoint", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kMinSupply = {5, "SCPTminDischargeAirCoolingSetpoint", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kCoolOff = {19, "UCPTminCoolOffPeriod", Units::kNone, 0, 0};
constexpr PropertyFormat kCoolOn = {18, "UCPTminCoolOnPeriod", Units::kNone, 0, 0};
constexpr PropertyFormat kSwitchover = {20, "UCPTfree2MecDelay", Units::kNone, 3, 3};
constexpr PropertyFormat kFreeCool = {8, "UCPTfreeCoolSetpoint", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kEnthalpy = {7, "SCPToutdoorAirEnthalpySetpoint", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kMechCool = {9, "UCPTmecCoolSetpoint", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kChangeover = {21, "UCPTchngeOverDelay", Units::kNone, 0, 0};

constexpr PropertyFormat kBindOrder[] = {kSetpoints, kHeatPeriod, kMaxSupply,  kMinSupply,
                                         kCoolOff,   kCoolOn,     kSwitchover, kFreeCool,
                                         kEnthalpy,  kMechCool,   kChangeover};

constexpr std::size_t kHeatStageOption = 57;
constexpr std::size_t kMechAndEcoOption = 32;
constexpr std::size_t kNormallyHeatOption = 50;

// What the alarms page holds the supply temperature against.
constexpr std::string_view kAlarmPage = "fAlarm";
constexpr std::string_view kAlarmLowLimit = "txtAlarm(8)";
constexpr std::string_view kAlarmHighLimit = "txtAlarm(9)";
constexpr std::string_view kSupplyAlarm = "UCPTsupplyTempAlarm";
constexpr UnitNames kEnthalpyUnit = {"KJ/kg", "BTU/lb"};

constexpr const char* kPeriodCaptions[] = {"Occupied/Bypass", "Standby", "Unoccupied"};

// Other pages take only "1" for set; this one takes everything but "0".
bool IsSet(std::string_view option) { return option != "0"; }

}  // namespace

fHeatCool::fHeatCool(const shell::PageContext& context, const shell::PagePlace& place)
    : ControlPage(context, place, "Heating and cooling") {
  WatchAll(txtSetPoint, txtminHeatPeriod, txtCoolOn, txtCoolOFF, txtMechCoolDelay, txtfreeCoolDegree,
           txtfreeCooling, txtMechCoolLL, txtChngeOverDelay, chkHeatStage, chkMechAndEco, OptionNormallyCool,
           OptionNormallyHeat);
  WatchSupply(txtMaxDischHeat, maxSupplyWarned_);
  WatchSupply(txtMinDischCool, minSupplyWarned_);
  ui::Exclusive({&OptionNormallyCool, &OptionNormallyHeat});
  SetSource(kSetpoints.type, txtSetPoint);
  SetSource(kOptionsType, {&chkHeatStage, &chkMechAndEco, &OptionNormallyCool});
  BuildLayout();
}

void fHeatCool::WatchSupply(ui::TextBox& box, bool& warned) {
  Watch(box);
  box.onFocus = [&warned] { warned = false; };
  // Refused once: the focus stays, which is no coming back to the box, and the next time it may go.
  box.onLeave = [check = box.onLeave, &warned] {
    if (warned || check()) return true;
    warned = true;
    return false;
  };
}

void fHeatCool::BuildLayout() {
  using ui::Item, ui::Line;
  const auto setpoints = [this](ui::Label& heading, std::size_t first) {
    std::vector<ui::Node> cells = {ui::Empty(), Item(heading)};
    for (std::size_t i = first; i < first + kPeriods; ++i) {
      cells.insert(cells.end(), {Item(lblSetPoint[i]), Line({Item(txtSetPoint[i]), Item(lblUnits[i])})});
    }
    return ui::GrowX(ui::Grid(2, std::move(cells)));
  };
  const auto heating = ui::Stack({
      ui::Grid(2, {Item(lblHeat), Line({Item(txtminHeatPeriod), Item(lblHeatUnit)}), Item(lblMaxDischHeat),
                   Line({Item(txtMaxDischHeat), Item(lblUnits[6])})}),
      Item(chkHeatStage),
  });
  const auto economizer = ui::Stack({
      ui::Grid(2, {Item(lblfreeCool), Line({Item(txtfreeCoolDegree), Item(lblUnits[8])}),
                   Item(lblfreeCooling), Line({Item(txtfreeCooling), Item(lblBtu)}), Item(lblMechDelay),
                   Line({Item(txtMechCoolDelay), Item(lblSec[2])})}),
      Item(chkMechAndEco),
  });
  const auto cooling = Line({Item(lblMinDischCool), Item(txtMinDischCool), Item(lblUnits[7])});
  const auto mechanical = ui::Grid(2, {Item(lblCoolOn), Line({Item(txtCoolOn), Item(lblSec[0])}),
                                       Item(lblCoolOFF), Line({Item(txtCoolOFF), Item(lblSec[1])}),
                                       Item(lblMechCool), Line({Item(txtMechCoolLL), Item(lblUnits[9])})});
  const auto changeover = Line({Item(lblChngeOver), Item(txtChngeOverDelay), Item(lblChngeOverUnit)});
  const auto valve = Line({Item(OptionNormallyCool), Item(OptionNormallyHeat)});
  SetLayout(ui::Stack({
      ui::Box(fraSetPoint, Line({setpoints(lblHeating, kPeriods), setpoints(lblCooling, 0)})),
      Line({ui::GrowX(ui::Stack({ui::Box(fraHeat, heating), ui::Box(fraEcono, economizer)})),
            ui::GrowX(ui::Stack({ui::Box(fraCool, cooling), ui::Box(fraMech, mechanical),
                                 ui::Box(fraChngeOver, changeover), ui::Box(FrameRversingValve, valve)}))}),
  }));
}

void fHeatCool::InitStrings() {
  SetCaptions({
      {&fraSetPoint, "Setpoints"},
      {&lblHeating, "Heating"},
      {&lblCooling, "Cooling"},
      {&fraHeat, "Heating"},
      {&lblHeat, "Min heating time"},
      {&lblHeatUnit, "min"},
      {&lblMaxDischHeat, "Max supply temp"},
      {&chkHeatStage, "Turn ON heat stage 1 before using modulated heating"},
      {&fraCool, "Cooling"},
      {&lblMinDischCool, "Min supply temp"},
      {&fraChngeOver, "Heat/Cool Changeover"},
      {&lblChngeOver, "Delay"},
      {&lblChngeOverUnit, "min"},
      {&fraEcono, "Economizer"},
      {&lblfreeCool, "Maximum outdoor temp"},
      {&lblfreeCooling, "Max outdoor enthalpy"},
      {&lblMechDelay, "Switchover delay"},
      {&chkMechAndEco, "Use mechanical cooling together with the economizer"},
      {&fraMech, "Mechanical cooling"},
      {&lblCoolOn, "Minimum time ON"},
      {&lblCoolOFF, "Minimum time OFF"},
      {&lblMechCool, "Minimum outdoor temp"},
      {&FrameRversingValve, "Reversing valve"},
      {&OptionNormallyCool, "Normally cool"},
      {&OptionNormallyHeat, "Normally heat"},
  });
  for (std::size_t i = 0; i < lblSetPoint.Size(); ++i) {
    lblSetPoint[i].SetText(Translate(kPeriodCaptions[i % kPeriods]));
  }
  SetTexts(lblSec, Translate("sec"));
}

void fHeatCool::Fill() {
  BindFormats(kBindOrder);
  ShowUnit(kTemperatureUnit, lblUnits);
  ShowUnit(kEnthalpyUnit, lblBtu);
  const base::Record setpoints = ReadRecord(kSetpoints);
  for (std::size_t i = 0; i < txtSetPoint.Size(); ++i) {
    ShowText(txtSetPoint[i], i < setpoints.Count() ? base::Trim(setpoints.Field(i)) : "");
  }
  ReadBoxes({{kHeatPeriod, txtminHeatPeriod},
             {kMaxSupply, txtMaxDischHeat},
             {kMinSupply, txtMinDischCool},
             {kCoolOn, txtCoolOn},
             {kCoolOff, txtCoolOFF},
             {kSwitchover, txtMechCoolDelay},
             {kFreeCool, txtfreeCoolDegree},
             {kEnthalpy, txtfreeCooling},
             {kMechCool, txtMechCoolLL},
             {kChangeover, txtChngeOverDelay}});
  FillOptions();
  WhenRead([this, functions = AssignedFunctions()] { EnableUsable(functions); });
}

void fHeatCool::FillOptions() {
  const base::Record options = ReadOptions();
  WhenRead([this, given = !options.Join().empty()] { optionsGiven_ = given; });
  if (options.Join().empty()) return;
  WhenRead([this, stage = IsSet(options.Field(kHeatStageOption)),
            both = IsSet(options.Field(kMechAndEcoOption)),
            heat = IsSet(options.Field(kNormallyHeatOption))] {
    chkHeatStage.SetChecked(stage);
    chkMechAndEco.SetChecked(both);
    (heat ? OptionNormallyHeat : OptionNormallyCool).Select();
  });
}

void fHeatCool::EnableUsable(const std::vector<std::string>& functions) {
  const auto assigned = [&functions](std::string_view name) {
    return std::ranges::find(functions, name) != functions.end();
  };
  const auto isCoolingValve = [](const std::string& function) {
    return function.find("COOL_VALVE") != std::string::npos ||
           function.find("COOLING_VALVE") != std::string::npos;
  };
  const bool heatingStage = assigned("HEATING_1");
  const bool coolingStage = assigned("COOLING_1");
  const bool mechanical = coolingStage || std::ranges::any_of(functions, isCoolingValve);
  EnableAll(optionsGiven_ && heatingStage && assigned("HEATING_MOD"), chkHeatStage);
  EnableAll(optionsGiven_, chkMechAndEco);
  EnableAll(coolingStage, txtCoolOn, lblCoolOn, lblSec[0], txtCoolOFF, lblCoolOFF, lblSec[1]);
  EnableAll(mechanical, txtMechCoolLL, lblMechCool, lblUnits[9], fraMech);
  EnableAll(heatingStage, txtminHeatPeriod, lblHeat, lblHeatUnit);
  EnableAll(optionsGiven_ && assigned("REVERSING_VALVE"), FrameRversingValve, OptionNormallyCool,
            OptionNormallyHeat);
}

bool fHeatCool::Write() {
  Context().flags.writeError = false;
  // Nobody can have edited this page before a page was selected: it is neither checked nor written.
  if (!Context().flags.pageSelected) return true;
  CheckSetpoints();
  CheckSupplyLimits();
  if (Context().flags.writeError) return false;
  if (IsChanged()) WriteProperties();
  return true;
}

void fHeatCool::CheckSetpoints() {
  const base::Numbers& numbers = Context().settings.numbers;
  for (std::size_t i = 0; i < kPeriods; ++i) {
    const std::string& cooling = txtSetPoint[i].Text();
    const std::string& heating = txtSetPoint[kPeriods + i].Text();
    if (cooling.empty()) continue;
    const bool crossed = NamingProperty(
        kSetpoints.type, [&] { return numbers.ToSingle(heating) > numbers.ToSingle(cooling); });
    if (!crossed) continue;
    RefuseWrite(Translate("The heating setpoint must be lower or equal than the cooling setpoint"),
                {&txtSetPoint[kPeriods + i], &txtSetPoint[i]});
    // On purpose: a refused pair does not count as an unsaved edit until somebody types again.
    MarkChanged(false);
  }
}

void fHeatCool::CheckSupplyLimits() {
  // Equal values are refused here, while the alarms page lets them pass.
  const ui::Control* high = FindControl(kAlarmPage, kAlarmHighLimit);
  if (high && WholeNumber(kMaxSupply.type, txtMaxDischHeat) >= WholeNumber(kSupplyAlarm, *high) &&
      !maxSupplyWarned_) {
    RefuseWrite(Translate("The Maximum Discharge Air Setpoint must be lower than the Alarm High Limit."),
                {&txtMaxDischHeat, high});
    maxSupplyWarned_ = true;
  }
  // On purpose the warning about the maximum holds this rule back, and its own warning does not.
  if (maxSupplyWarned_) return;
  const ui::Control* low = FindControl(kAlarmPage, kAlarmLowLimit);
  if (low && WholeNumber(kMinSupply.type, txtMinDischCool) <= WholeNumber(kSupplyAlarm, *low)) {
    RefuseWrite(Translate("The Minimum Discharge Air Setpoint must be higher than the Alarm Low Limit."),
                {&txtMinDischCool, low});
    minSupplyWarned_ = true;
  }
}

void fHeatCool::WriteProperties() {
  BindFormats(kBindOrder);
  std::vector<const ui::TextBox*> setpoints;
  for (std::size_t i = 0; i < txtSetPoint.Size(); ++i) setpoints.push_back(&txtSetPoint[i]);
  WriteFields(kSetpoints, setpoints);
  WriteBoxes({{kHeatPeriod, txtminHeatPeriod},
              {kMaxSupply, txtMaxDischHeat},
              {kMinSupply, txtMinDischCool},
              {kCoolOff, txtCoolOFF},
              {kCoolOn, txtCoolOn},
              {kSwitchover, txtMechCoolDelay},
              {kFreeCool, txtfreeCoolDegree},
              {kEnthalpy, txtfreeCooling},
              {kMechCool, txtMechCoolLL},
              {kChangeover, txtChngeOverDelay}});
  if (!optionsGiven_) return;
  ChangeOptions([this](host::Edit& options) {
    SetField(options, kHeatStageOption, chkHeatStage.Checked(), chkHeatStage);
    SetField(options, kMechAndEcoOption, chkMechAndEco.Checked(), chkMechAndEco);
    SetField(options, kNormallyHeatOption, OptionNormallyHeat.Selected(), OptionNormallyCool);
  });
}

}  // namespace pages
