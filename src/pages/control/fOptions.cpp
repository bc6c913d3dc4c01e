#include "pages/control/fOptions.h"

#include <utility>

#include "logger/message_logger.h"

namespace pages {
namespace {

constexpr PropertyFormat kStartTime = {16, "UCPTmaxOptimumStartTime", Units::kNone, 0, 0};
constexpr PropertyFormat kInputPeriod = {45, "UCPTmaxRcvScanTime", Units::kNone, 1, 1};
constexpr PropertyFormat kWeights = {46, "UCPTweightAvgParam", Units::kNone, 1, 1};
constexpr PropertyFormat kMaxOffset = {47, "UCPTweightAvgMaxInOffset", Units::kImperialDegrees, 2, 2};
constexpr PropertyFormat kExtraConfig = {52, "UCPTextraConfig", Units::kNone, 1, 1};

constexpr PropertyFormat kBindOrder[] = {kWeights, kMaxOffset, kInputPeriod, kStartTime, kExtraConfig};

// Fields of the extra configuration.
constexpr std::size_t kCycleTimeField = 0;
constexpr std::size_t kDemandField = 1;  // at twice the shown value

// Fields of the shared option record.
constexpr std::size_t kTerminalOption = 33;
constexpr std::size_t kAlternateOption = 34;
constexpr std::size_t kTerminalEnabledOption = 48;
constexpr std::size_t kAveragingEnabledOption = 51;
constexpr std::size_t kAverageOption = 52;
constexpr std::size_t kAlgorithmMarker = 58;
constexpr std::size_t kOptimumOption[] = {59, 60};
constexpr std::size_t kFrostOption = 62;

constexpr std::string_view kCommand = "nviOccCmd";
constexpr int kCommandTypeProperty = 2;     // of the occupancy command: the type in use
constexpr std::size_t kTypeIndexField = 9;  // of that record, behind program id and scope
constexpr std::string_view kOccupancyIndex = "109";

constexpr int kShortestCycle = 10, kLongestCycle = 120;  // minutes
constexpr int kFullDemand = 100;                         // percent

}  // namespace

fOptions::fOptions(const shell::PageContext& context, const shell::PagePlace& place)
    : ControlPage(context, place, "Options") {
  WatchAll(txtStartTime, txtMaxOffset, txtInput, txtHeatCool, txtChangeOver, txtAt, optTerminal);
  const auto edited = [this] {
    MarkChanged();
    EnableGroups();
  };
  for (auto* box : {&chkOptimum[0], &chkOptimum[1], &chkEnable, &chkTerminal, &chkAlternate, &chkFrost})
    box->onClick = edited;
  for (std::size_t i = 0; i < optAverage.Size(); ++i) optAverage[i].onClick = edited;
  WatchCycle();
  SetSource(kWeights.type, txtAt);
  SetSource(kExtraConfig.type, {&txtHeatCool, &txtChangeOver});
  SetSource(kOptionsType, {&optTerminal[0], &optAverage[0], &chkAlternate, &chkTerminal, &chkEnable,
                           &chkFrost, &chkOptimum[0], &chkOptimum[1]});
  BuildLayout();
}

// Both boxes are first checked as every box is.
void fOptions::WatchCycle() {
  txtHeatCool.onLeave = [this, isNumber = txtHeatCool.onLeave] {
    if (!isNumber()) return false;
    Guarded("txtHeatCool", [this] {
      if (const std::string fault = ValueVerification(); !fault.empty()) Warn(fault);
    });
    return true;
  };
  txtChangeOver.onLeave = [this, isNumber = txtChangeOver.onLeave] {
    if (!isNumber()) return false;
    const double demand = base::RoundHalfToEven(Context().settings.numbers.ToDouble(txtChangeOver.Text()));
    if (demand >= 0 && demand <= kFullDemand) return true;
    Warn("The change over minimum demand msut be between 0 and 100%");  // shown as it stands
    return false;
  };
}

void fOptions::BuildLayout() {
  using ui::Box, ui::Empty, ui::Grid, ui::Item, ui::Line, ui::Stack;
  const auto optimum = Stack({
      Item(chkOptimum[0]),
      Item(chkOptimum[1]),
      Line({Item(lblStartTime), Item(txtStartTime), Item(lblUnitStartTime)}),
  });
  const auto demand = Stack({
      Item(optAverage[0]),
      Item(optAverage[1]),
      Grid(3, {Empty(), Item(lblWeight[0]), Item(lblWeight[1]), Item(lblAverage[0]),
               Line({Item(txtAt[0]), Item(lblAtUnit[0])}), Line({Item(txtAt[1]), Item(lblAtUnit[1])}),
               Item(lblAverage[1]), Line({Item(txtAt[2]), Item(lblAtUnit[2])}),
               Line({Item(txtAt[3]), Item(lblAtUnit[3])})}),
      Grid(2, {Item(lblMaxOffset), Line({Item(txtMaxOffset), Item(lblMaxOffsetUnit)}), Item(lblInput),
               Line({Item(txtInput), Item(lblInputUnit)})}),
  });
  const auto alternate = Stack({
      Item(chkAlternate),
      Grid(2, {Item(lblHeatCool), Line({Item(txtHeatCool), Item(lblMin)}), Item(lblChangeOver),
               Line({Item(txtChangeOver), Item(lblUnit)})}),
  });
  const auto averaging = Stack({Item(chkEnable), Box(fraDemand, demand)});
  const auto terminal = Stack({Item(chkTerminal), Item(optTerminal[0]), Item(optTerminal[1])});
  SetLayout(Line({
      ui::GrowX(Stack({Box(fraOptimum, optimum), Box(fraAverage, averaging)})),
      ui::GrowX(
          Stack({Box(fraTerminal, terminal), Box(fraAlternate, alternate), Box(fraFrost, Item(chkFrost))})),
  }));
}

void fOptions::InitStrings() {
  SetCaptions({
      {&fraOptimum, "Optimum Start"},
      {&chkOptimum[0], "Enable optimum start for cooling"},
      {&chkOptimum[1], "Enable optimum start for heating"},
      {&lblStartTime, "Maximum start time"},
      {&lblUnitStartTime, "min"},
      {&fraAverage, "Demand Averaging"},
      {&chkEnable, "Enable"},
      {&fraDemand, "Weighted average"},
      {&optAverage[0], "Average space temperature"},
      {&optAverage[1], "Average terminal load"},
      {&lblWeight[0], "Weight at 0% demand"},
      {&lblWeight[1], "Weight at 100% demand"},
      {&lblAverage[0], "Space temperature"},
      {&lblAverage[1], "Terminal load"},
      {&lblMaxOffset, "Temp offset equivalent to 100% demand"},
      {&lblInput, "Demand input validity period"},
      {&lblInputUnit, "sec"},
      {&fraTerminal, "Terminal Unit Occupancy Control"},
      {&chkTerminal, "Accept only OC_BYPASS on nviOccManCmd."},
      {&optTerminal[0], "Don't forward nviOccManCmd"},
      {&optTerminal[1], "Forward OC_BYPASS as OC_OCCUPIED"},
      {&fraAlternate, "Heating/Cooling alternation"},
      {&chkAlternate, "Alternate between Heating and Cooling mode periodically"},
      {&lblHeatCool, "Heating/Cooling cycle time"},
      {&lblMin, "min"},
      {&lblChangeOver, "Changeover min demand"},
      {&lblUnit, "%"},
      {&fraFrost, "Frost Protection"},
      {&chkFrost, "Enable"},
  });
  SetTexts(lblAtUnit, Translate("%"));
}

void fOptions::Fill() {
  BindFormats(kBindOrder);
  ShowUnit(kTemperatureUnit, lblMaxOffsetUnit);
  ReadBoxes({{kStartTime, txtStartTime}});
  const base::Record weights = ReadRecord(kWeights);
  for (std::size_t i = 0; i < txtAt.Size(); ++i) ShowText(txtAt[i], weights.Field(i));
  ReadBoxes({{kMaxOffset, txtMaxOffset}, {kInputPeriod, txtInput}});
  FillOptions();
  FillExtra();
  WhenRead([this] { EnableGroups(); });
  CheckOptimumStart();
}

void fOptions::FillOptions() {
  const base::Record options = ReadOptions();
  const auto set = [&options](std::size_t field) { return options.Field(field) != "0"; };
  const std::pair<ui::CheckBox*, bool> marks[] = {
      {&chkAlternate, set(kAlternateOption)},
      {&chkTerminal, set(kTerminalEnabledOption)},
      {&chkEnable, set(kAveragingEnabledOption)},
      {&chkFrost, set(kFrostOption)},
      {&chkOptimum[0], options.Field(kOptimumOption[0]) == "1"},
      {&chkOptimum[1], options.Field(kOptimumOption[1]) == "1"},
  };
  for (const auto& [box, checked] : marks) WhenRead([box, checked] { box->SetChecked(checked); });
  WhenRead(
      [this, terminal = set(kTerminalOption), average = set(kAverageOption), update = set(kAlgorithmMarker)] {
        optTerminal[terminal].Select();
        optAverage[average].Select();
        algorithmUpdate_ = update;
        MarkChanged(update);
      });
}

void fOptions::FillExtra() {
  const base::Record extra = ReadRecord(kExtraConfig);
  const base::Numbers& numbers = Context().settings.numbers;
  ShowText(txtHeatCool, extra.Field(kCycleTimeField));
  const std::string_view demand = extra.Field(kDemandField);
  const double stored = NamingProperty(kExtraConfig.type, [&] { return numbers.ToDouble(demand); });
  ShowText(txtChangeOver, numbers.Text(stored / 2));
}

// The network inputs page decides the same by the type's name, and differently; the one that fills last wins.
void fOptions::CheckOptimumStart() {
  const bool standard = NamingProperty(kCommand, [this] {
    auto& command = Context().device.RoofTopVariables[std::string(kCommand)].ConfigProperties();
    const base::Record type(command[kCommandTypeProperty].Read(), "SCPTnvType");
    return type.Field(kTypeIndexField) != kOccupancyIndex;
  });
  WhenRead([this, standard] {
    Context().device.OccupancyIsStandard = standard;
    EnableAll(standard, txtStartTime, fraOptimum, lblStartTime, lblUnitStartTime, chkOptimum);
  });
}

void fOptions::EnableGroups() {
  EnableAll(chkAlternate.Checked(), txtHeatCool, lblHeatCool, lblMin, txtChangeOver, lblChangeOver, lblUnit);
  EnableAll(chkTerminal.Checked(), optTerminal);
  fraDemand.SetEnabled(chkEnable.Checked());
  EnableAll(optAverage[0].Selected(), txtMaxOffset, lblMaxOffset, lblMaxOffsetUnit);
}

std::string fOptions::ValueVerification() {
  if (!txtHeatCool.Enabled()) return {};
  const base::Numbers& numbers = Context().settings.numbers;
  const int cycle = NamingProperty(kExtraConfig.type, [&] { return numbers.ToInt16(txtHeatCool.Text()); });
  if (const ui::Control* changeover = FindControl("fHeatCool", "txtChngeOverDelay")) {
    const int delay =
        NamingProperty("UCPTchngeOverDelay", [&] { return numbers.ToInt16(changeover->Text()); });
    if (cycle < 2 * delay) {
      return Translate(
          "The Heating/cooling cycle time cannot be less than 2 times the Heat/Cool change over delay");
    }
  }
  if (cycle < kShortestCycle || cycle > kLongestCycle) {
    return Translate(
        "The Heating/cooling cycle time must be higher or equal to 10 and lower or equal to 120");
  }
  return {};
}

std::vector<shell::Adjustment> fOptions::Adjustments() {
  std::vector<shell::Adjustment> adjustments;
  if (algorithmUpdate_)
    adjustments.push_back({&fraOptimum, {}, {}, Translate("Will be adjusted by the next save"), {}});
  const base::Numbers& numbers = Context().settings.numbers;
  const auto demand = base::ParseEither(numbers, txtChangeOver.Text());
  if (IsChanged() && demand && *demand != base::RoundHalfToEven(*demand)) {
    const std::string stored = numbers.Text(base::RoundHalfToEven(*demand));
    adjustments.push_back(
        {&txtChangeOver, txtChangeOver.Text(), stored, Translate("Is stored as a whole number"), stored});
  }
  return adjustments;
}

bool fOptions::Write() {
  Context().flags.writeError = false;
  if (const std::string fault = ValueVerification(); !fault.empty()) {
    Context().messages.RefuseControl(txtHeatCool, fault);
    Context().messages.AddMessage(fault, "WriteValue", Location(), logger::kError);
    return false;
  }
  if (!IsChanged()) return true;
  BindFormats(kBindOrder);
  WriteBoxes({{kStartTime, txtStartTime}});
  ChangeRecord(kWeights, [this](host::Edit& weights) {
    for (std::size_t i = 0; i < txtAt.Size(); ++i) SetField(weights, i, txtAt[i]);
  });
  WriteBoxes({{kMaxOffset, txtMaxOffset}, {kInputPeriod, txtInput}});
  WriteOptions();
  if (const std::string fault = ValueVerification(); !fault.empty()) {  // host calls have run since the first
    Context().messages.RefuseControl(txtHeatCool, fault);
    Context().platform.prompts.Ask(
        {fault, Translate("Options Configuration"), ui::Buttons::kOk, ui::Icon::kExclamation});
    Context().flags.writeError = true;
    return false;
  }
  ChangeRecord(kExtraConfig, [this](host::Edit& extra) {
    const base::Numbers& numbers = Context().settings.numbers;
    SetField(extra, kCycleTimeField, txtHeatCool);
    // Rounded before it is doubled, so a stored odd number does not survive a save.
    extra.Set(kDemandField, std::to_string(numbers.ToInt16(txtChangeOver.Text()) * 2), Source(txtChangeOver));
  });
  return true;
}

void fOptions::WriteOptions() {
  ChangeOptions([this](host::Edit& options) {
    SetField(options, kTerminalOption, !optTerminal[0].Selected(), optTerminal[0]);
    SetField(options, kAlternateOption, chkAlternate.Checked(), chkAlternate);
    SetField(options, kTerminalEnabledOption, chkTerminal.Checked(), chkTerminal);
    for (std::size_t i = 0; i < chkOptimum.Size(); ++i) {
      SetField(options, kOptimumOption[i], chkOptimum[i].Checked(), chkOptimum[i]);
    }
    if (algorithmUpdate_) options.Set(kAlgorithmMarker, "0");
    SetField(options, kAverageOption, !optAverage[0].Selected(), optAverage[0]);
    SetField(options, kAveragingEnabledOption, chkEnable.Checked(), chkEnable);
    SetField(options, kFrostOption, chkFrost.Checked(), chkFrost);
  });
}

void fOptions::Saved() {
  if (!std::exchange(algorithmUpdate_, false)) return;
  Context().messages.AddMessage(
      Translate(
          "The Optimum Start algorithm was updated and options were adjusted accordingly. See User Guide for "
          "more details."),
      "WriteValue", Location(), logger::kInformation);
}

}  // namespace pages
