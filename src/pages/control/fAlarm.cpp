#include "pages/control/fAlarm.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace pages {
namespace {

constexpr PropertyFormat kSpaceTemp = {35, "UCPTspaceTempAlarm", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kReturnTemp = {36, "UCPTreturnTempAlarm", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kMixedAirTemp = {37, "UCPTmixAirTempAlarm", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kSupplyTemp = {38, "UCPTsupplyTempAlarm", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kSupplyPressure = {39, "UCPTsupplyPressureAlarm", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kDuctPressure = {40, "UCPTductPressureAlarm", Units::kSuffixed, 3, 3};
constexpr PropertyFormat kHumidity = {41, "UCPThumidityAlarm", Units::kNone, 3, 3};
constexpr PropertyFormat kCO2 = {42, "UCPTCO2Alarm", Units::kNone, 3, 3};
constexpr PropertyFormat kAuxiliary = {43, "UCPTauxiliaryAlarm", Units::kNone, 3, 3};
constexpr PropertyFormat kFan = {44, "UCPTfanAlarmTime", Units::kNone, 3, 3};

constexpr PropertyFormat kBindOrder[] = {kHumidity,     kCO2,         kAuxiliary,  kFan,
                                         kSpaceTemp,    kReturnTemp,  kSupplyTemp, kSupplyPressure,
                                         kMixedAirTemp, kDuctPressure};

enum Column { kLow, kHigh, kOffset, kDelay, kColumns };
constexpr const char* kColumnCaptions[kColumns] = {"Low limit", "High limit", "Offset", "Delay"};

// A record, and the columns of its fields in their order. Filled and written in this order.
struct Row {
  const PropertyFormat& property;
  const char* caption;
  std::vector<Column> fields;
};
const Row kRows[] = {
    {kSpaceTemp, "Space temp", {kOffset, kDelay}},
    {kReturnTemp, "Return temp", {kLow, kHigh, kDelay}},
    {kMixedAirTemp, "Mixed air temp", {kLow, kHigh, kDelay}},
    {kSupplyTemp, "Supply temp", {kLow, kHigh, kDelay}},
    {kSupplyPressure, "Supply pressure", {kHigh, kDelay}},
    {kDuctPressure, "Duct pressure", {kLow, kHigh, kDelay}},
    {kHumidity, "Space humidity", {kLow, kHigh, kDelay}},
    {kCO2, "Space CO2 level", {kHigh, kDelay}},
    {kAuxiliary, "Auxiliary alarm", {kDelay}},
    {kFan, "Fan alarm", {kDelay}},
};

// The supply temperature limits, and the setpoints that the heating and cooling page holds against them.
constexpr std::size_t kSupplyLowBox = 8;
constexpr std::size_t kSupplyHighBox = 9;
constexpr std::string_view kSetpointPage = "fHeatCool";
constexpr std::string_view kMinSupply = "SCPTminDischargeAirCoolingSetpoint";
constexpr std::string_view kMaxSupply = "SCPTmaxDischargeAirHeatingSetpoint";

}  // namespace

fAlarm::fAlarm(const shell::PageContext& context, int helpTopic)
    : ControlPage("fAlarm", "Alarm", 6, helpTopic, context) {
  Watch(txtAlarm);
  for (std::size_t r = 0; r < kRecords; ++r) counts_[r] = kRows[r].fields.size();
  BuildLayout();
  ReInitializeStrings();
}

void fAlarm::BuildLayout() {
  using ui::Item;
  std::size_t next = 0;
  std::vector<std::vector<ui::Node>> rows;
  for (std::size_t r = 0; r < kRecords; ++r) rows.push_back(RecordCells(r, next));
  // A hidden box has no place of its own: the empty corner above the captions takes them all.
  std::vector<ui::Node> hidden;
  while (next < kBoxes) hidden.push_back(Item(txtAlarm[next++]));
  std::vector<ui::Node> cells = {ui::Overlay(std::move(hidden))};
  for (std::size_t c = 0; c < kColumns; ++c) cells.push_back(Item(lblColumn[c]));
  cells.push_back(ui::Empty());
  for (std::vector<ui::Node>& row : rows) std::ranges::move(row, std::back_inserter(cells));
  SetLayout(ui::Stack({ui::Box(fraAlarm, ui::Grid(kColumns + 2, std::move(cells)))}));
}

std::vector<ui::Node> fAlarm::RecordCells(std::size_t r, std::size_t& next) {
  using ui::Item;
  const std::vector<Column>& fields = kRows[r].fields;
  std::vector<ui::Node> cells(kColumns + 2);
  cells.front() = Item(lblRecord[r]);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    std::vector<ui::Node> cell;
    if (i < counts_[r]) cell.push_back(Item(txtAlarm[next++]));
    cell.push_back(Item(*units_[r][i]));
    cells[1 + fields[i]] = ui::Line(std::move(cell));
  }
  // Fields that this page does not know stand behind the others of their record.
  std::vector<ui::Node> further;
  for (std::size_t i = fields.size(); i < counts_[r]; ++i) further.push_back(Item(txtAlarm[next++]));
  cells.back() = ui::Line(std::move(further));
  return cells;
}

void fAlarm::InitStrings() {
  fraAlarm.SetText(Translate("Alarm"));
  for (std::size_t c = 0; c < lblColumn.Size(); ++c) lblColumn[c].SetText(Translate(kColumnCaptions[c]));
  for (std::size_t r = 0; r < kRecords; ++r) lblRecord[r].SetText(Translate(kRows[r].caption));
  SetTexts(lblHumid, Translate("% RH"));
  lblPpm.SetText(Translate("ppm"));
  SetTexts(lblSec, Translate("sec"));
}

void fAlarm::SetUnitLabels() {
  lblOffset.SetText(TemperatureUnit());
  SetTexts(lblCelsius, TemperatureUnit());
  SetTexts(lblUnitP, PressureUnit());
}

ui::TextBox& fAlarm::Box(std::size_t number) const {
  if (number < kBoxes) return txtAlarm[number];
  throw base::Error(Translate("The alarm records have more fields than the page has boxes (%s%).",
                              {std::to_string(kBoxes)}));
}

void fAlarm::Fill() {
  BindFormats(kBindOrder);
  WhenRead([this] { SetUnitLabels(); });
  FieldCounts counts{};
  std::size_t next = 0;
  for (std::size_t r = 0; r < kRecords; ++r) {
    const base::Record record = ReadRecord(kRows[r].property);
    NamingProperty(kRows[r].property.type, [&] {
      for (; counts[r] < record.Count(); ++counts[r]) {
        SetSource(kRows[r].property.type, {&Box(next)});
        ShowText(Box(next++), record.Field(counts[r]));
      }
    });
  }
  WhenRead([this, counts, next] {
    for (std::size_t i = 0; i < kBoxes; ++i) {
      txtAlarm[i].SetVisible(i < next);
      if (i >= next) txtAlarm[i].SetText("");
    }
    if (counts == counts_) return;
    counts_ = counts;
    BuildLayout();
  });
}

bool fAlarm::CheckLimits() {
  bool passed = true;
  const auto refuse = [this, &passed](const std::string& limit, const std::string& setpoint,
                                      std::size_t box) {
    RefuseWrite(limit + "\r\n" + setpoint, {&txtAlarm[box]});
    passed = false;
  };
  // Equal values pass here, while the heating and cooling page refuses them. The messages state the opposite
  // of the tests, and the second one says cooling for heating: known wording, kept.
  const ui::Control* minimum = FindControl(kSetpointPage, "txtMinDischCool");
  if (minimum && WholeNumber(kMinSupply, *minimum) < WholeNumber(kSupplyTemp.type, txtAlarm[kSupplyLowBox])) {
    refuse(Translate("The Alarm Low Limit Temperature must be higher than the "),
           Translate("Minimum Discharge Cooling Setpoint."), kSupplyLowBox);
  }
  const ui::Control* maximum = FindControl(kSetpointPage, "txtMaxDischHeat");
  if (maximum &&
      WholeNumber(kMaxSupply, *maximum) > WholeNumber(kSupplyTemp.type, txtAlarm[kSupplyHighBox])) {
    refuse(Translate("The Alarm High Limit Temperature must be lower than the "),
           Translate("Maximum Discharge Cooling Setpoint."), kSupplyHighBox);
  }
  return passed;
}

bool fAlarm::Write() {
  const bool passed = CheckLimits();
  if (!IsChanged()) return passed;
  // Written, and the flag cleared, also after a failed rule: the answer alone tells of it and ends the save.
  Context().flags.writeError = false;
  BindFormats(kBindOrder);
  std::size_t next = 0;
  for (const Row& row : kRows) {
    ChangeRecord(row.property, [this, &next](host::Edit& record) {
      for (std::size_t i = 0; i < record.Count(); ++i) SetField(record, i, Box(next++));
    });
  }
  return passed;
}

}  // namespace pages
