#include "pages/control/fPID.h"

#include "base/text.h"

namespace pages {
namespace {

// Read and written in this order.
constexpr PropertyFormat kRecords[] = {
    {30, "UCPTspaceTempPIDparam", Units::kSuffixed, 4, 4},
    {31, "UCPTdischargeTempPIDparam", Units::kSuffixed, 4, 4},
    {32, "UCPTCO2PIDparam", Units::kNone, 4, 4},
    {34, "UCPThumidityPIDparam", Units::kNone, 2, 2},
    {33, "UCPTpressurePIDparam", Units::kSuffixed, 2, 5},
};

constexpr std::size_t kSupplyAirOnlyOption = 61;
constexpr UnitNames kTemperatureGainUnit = {"% / °C", "% / °F"};
constexpr UnitNames kPressureGainUnit = {"% / Pa", "%/ \" WC"};

constexpr const char* kColumns[] = {"Proportional", "Dead Band", "Integral", "Derivative"};
constexpr const char* kParts[] = {"Gain", "Gain", "Time", "Gain", "Time"};
constexpr const char* kTemperatureLoops[] = {"Space Temperature", "Supply Temperature"};

}  // namespace

fPID::fPID(const shell::PageContext& context, const shell::PagePlace& place)
    : ControlPage(context, place, "PID") {
  for (std::size_t loop = 0; loop < loops_.size(); ++loop) {
    Watch(*loops_[loop]);
    SetSource(kRecords[loop].type, *loops_[loop]);
  }
  SetSource(kOptionsType, {&chkPID});
  Watch(chkPID);
  BuildLayout();
}

void fPID::BuildLayout() {
  using ui::Empty, ui::Item, ui::Span;
  std::vector<ui::Node> cells = {ui::Overlay({Item(lblPress[3]), Item(lblPress[4])}), Item(lblColumn[0]),
                                 Item(lblColumn[1]), Span(2, Item(lblColumn[2])),
                                 Span(2, Item(lblColumn[3]))};
  cells.insert(cells.end(), {Empty(), Item(lblPart[0]), Empty(), Item(lblPart[1]), Item(lblPart[2]),
                             Item(lblPart[3]), Item(lblPart[4])});
  const auto addRow = [&cells](ui::Label& caption, const Boxes& boxes,
                               const std::array<ui::Label*, kFields>& units) {
    cells.push_back(Item(caption));
    for (std::size_t i = 0; i < kFields; ++i) cells.push_back(ui::Line({Item(boxes[i]), Item(*units[i])}));
  };
  const auto gainsAndTimes = [](ui::Label& deadBand, const auto& gains, std::size_t firstGain,
                                const auto& times, std::size_t firstTime) {
    return std::array<ui::Label*, kFields>{&gains[firstGain],     &deadBand,
                                           &gains[firstGain + 1], &times[firstTime],
                                           &gains[firstGain + 2], &times[firstTime + 1]};
  };
  addRow(lblLoop[0], txtPIDTemp, gainsAndTimes(lblDeadBandUnit[0], lblUnit, 0, lblSec, 0));
  addRow(lblLoop[1], txtPIDTempDisch, gainsAndTimes(lblDeadBandUnit[1], lblUnit, 3, lblSec, 2));
  addRow(lblCo[0], txtCO2Level, gainsAndTimes(lblCo[6], lblCo, 3, lblCo, 1));
  addRow(lblHumid[0], txtHumidity, gainsAndTimes(lblHumid[6], lblHumid, 3, lblHumid, 1));
  addRow(lblPress[0], txtPressure, gainsAndTimes(lblPressD, lblPressure, 0, lblPress, 1));
  SetLayout(ui::Stack({ui::Box(fraLoops, ui::Grid(1 + kFields, std::move(cells))), Item(chkPID)}));
}

void fPID::InitStrings() {
  fraLoops.SetText(Translate("PID"));
  for (std::size_t i = 0; i < lblColumn.Size(); ++i) lblColumn[i].SetText(Translate(kColumns[i]));
  for (std::size_t i = 0; i < lblPart.Size(); ++i) lblPart[i].SetText(Translate(kParts[i]));
  for (std::size_t i = 0; i < lblLoop.Size(); ++i) lblLoop[i].SetText(Translate(kTemperatureLoops[i]));
  lblCo[0].SetText(Translate("CO2 Level"));
  lblHumid[0].SetText(Translate("Humidity"));
  lblPress[0].SetText(Translate("Pressure"));

  const std::string seconds = Translate("sec");
  SetTexts(lblSec, seconds);
  SetTexts(lblCo, seconds, 1, 2);
  SetTexts(lblHumid, seconds, 1, 2);
  SetTexts(lblPress, seconds, 1, 2);
  SetTexts(lblCo, Translate("% / ppm"), 3, 5);
  lblCo[6].SetText(Translate("ppm"));
  SetTexts(lblHumid, Translate("%/% RH"), 3, 5);
  lblHumid[6].SetText(Translate("% RH"));
  chkPID.SetText(Translate("Use supply air temp only for limitation"));
}

void fPID::Fill() {
  BindFormats(kRecords);
  ShowUnit(kTemperatureGainUnit, lblUnit);
  ShowUnit(kTemperatureUnit, lblDeadBandUnit);
  ShowUnit(kPressureGainUnit, lblPressure);
  ShowUnit(kPressureUnit, lblPressD);
  for (std::size_t loop = 0; loop < loops_.size(); ++loop) {
    const base::Record record = ReadRecord(kRecords[loop]);
    for (std::size_t i = 0; i < kFields; ++i) ShowText((*loops_[loop])[i], base::Trim(record.Field(i)));
  }
  WhenRead([this, only = ReadOptions().Field(kSupplyAirOnlyOption) == "1"] { chkPID.SetChecked(only); });
  WhenRead([this, functions = AssignedFunctions()] { EnableUsableLoops(functions); });
}

void fPID::EnableUsableLoops(const std::vector<std::string>& functions) {
  bool freshAir = false;
  bool humidifier = false;
  bool pressure = false;
  for (const std::string& function : functions) {
    freshAir |= function.find("FRESH_AIR_DAMPER") != std::string::npos;
    // A dehumidifier too: its name holds this one.
    humidifier |= function.find("HUMIDIFIER") != std::string::npos;
    pressure |= function == "FAN_SPEED_MOD" || function == "BYPASS_DAMPER_MOD";
  }
  EnableAll(freshAir, txtCO2Level, lblCo);
  EnableAll(humidifier, txtHumidity, lblHumid);
  EnableAll(pressure, txtPressure, lblPress, lblPressure, lblPressD);
}

bool fPID::Write() {
  if (!IsChanged()) return true;
  Context().flags.writeError = false;
  BindFormats(kRecords);
  for (std::size_t loop = 0; loop < loops_.size(); ++loop) {
    ChangeRecord(kRecords[loop], [this, &boxes = *loops_[loop]](host::Edit& record) {
      for (std::size_t i = 0; i < kFields; ++i) SetField(record, i, boxes[i]);
    });
  }
  ChangeOptions(
      [this](host::Edit& options) { SetField(options, kSupplyAirOnlyOption, chkPID.Checked(), chkPID); });
  return true;
}

}  // namespace pages
