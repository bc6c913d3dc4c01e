#include "pages/control/fAlarm.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pages {
namespace {

constexpr int kFirstRecord = 35;
constexpr int kBindOrder[] = {41, 42, 43, 44, 35, 36, 38, 39, 37, 40};

constexpr const char* kColumnCaptions[] = {"Low limit", "High limit", "Offset", "Delay"};

// The supply temperature limits, and the setpoints that the heating and cooling page holds against them.
constexpr std::size_t kSupplyLowBox = 8;
constexpr std::size_t kSupplyHighBox = 9;
constexpr std::string_view kSupplyAlarm = "UCPTsupplyTempAlarm";
constexpr std::string_view kSetpointPage = "fHeatCool";
constexpr std::string_view kMinSupply = "SCPTminDischargeAirCoolingSetpoint";
constexpr std::string_view kMaxSupply = "SCPTmaxDischargeAirHeatingSetpoint";

}  // namespace

std::array<fAlarm::Row, fAlarm::kRecords> fAlarm::MakeRows() {
  auto next = [number = kFirstRecord](std::string_view type, Units units, const char* caption,
                                      std::vector<Cell> cells) mutable {
    return Row{{number++, type, units, 3, 3}, caption, std::move(cells)};
  };
  constexpr Units kWith = Units::kSuffixed, kWithout = Units::kNone;
  return {
      next("UCPTspaceTempAlarm", kWith, "Space temp", {{kOffset, lblOffset}, {kDelay, lblSec[0]}}),
      next("UCPTreturnTempAlarm", kWith, "Return temp",
           {{kLow, lblCelsius[0]}, {kHigh, lblCelsius[1]}, {kDelay, lblSec[1]}}),
      next("UCPTmixAirTempAlarm", kWith, "Mixed air temp",
           {{kLow, lblCelsius[2]}, {kHigh, lblCelsius[3]}, {kDelay, lblSec[2]}}),
      next("UCPTsupplyTempAlarm", kWith, "Supply temp",
           {{kLow, lblCelsius[4]}, {kHigh, lblCelsius[5]}, {kDelay, lblSec[3]}}),
      next("UCPTsupplyPressureAlarm", kWith, "Supply pressure", {{kHigh, lblUnitP[0]}, {kDelay, lblSec[4]}}),
      next("UCPTductPressureAlarm", kWith, "Duct pressure",
           {{kLow, lblUnitP[1]}, {kHigh, lblUnitP[2]}, {kDelay, lblSec[5]}}),
      next("UCPThumidityAlarm", kWithout, "Space humidity",
           {{kLow, lblHumid[0]}, {kHigh, lblHumid[1]}, {kDelay, lblSec[6]}}),
      next("UCPTCO2Alarm", kWithout, "Space CO2 level", {{kHigh, lblPpm}, {kDelay, lblSec[7]}}),
      next("UCPTauxiliaryAlarm", kWithout, "Auxiliary alarm", {{kDelay, lblSec[8]}}),
      next("UCPTfanAlarmTime", kWithout, "Fan alarm", {{kDelay, lblSec[9]}}),
  };
}

fAlarm::fAlarm(const shell::PageContext& context, const shell::PagePlace& place)
    : ControlPage(context, place, "Alarm") {
  Watch(txtAlarm);
  for (std::size_t r = 0; r < kRecords; ++r) counts_[r] = rows_[r].cells.size();
  BuildLayout();
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
  const std::vector<Cell>& fields = rows_[r].cells;
  std::vector<ui::Node> cells(kColumns + 2);
  cells.front() = Item(lblRecord[r]);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    std::vector<ui::Node> cell;
    if (i < counts_[r]) cell.push_back(Item(txtAlarm[next++]));
    cell.push_back(Item(fields[i].unit));
    cells[1 + fields[i].column] = ui::Line(std::move(cell));
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
  for (std::size_t r = 0; r < kRecords; ++r) lblRecord[r].SetText(Translate(rows_[r].caption));
  SetTexts(lblHumid, Translate("% RH"));
  lblPpm.SetText(Translate("ppm"));
  SetTexts(lblSec, Translate("sec"));
}

void fAlarm::BindFormats() {
  for (const int number : kBindOrder) {
    ControlPage::BindFormats({&rows_[static_cast<std::size_t>(number - kFirstRecord)].property, 1});
  }
}

ui::TextBox& fAlarm::Box(std::size_t number) const {
  if (number < kBoxes) return txtAlarm[number];
  throw base::Error(Translate("The alarm records have more fields than the page has boxes (%s%).",
                              {std::to_string(kBoxes)}));
}

void fAlarm::Fill() {
  BindFormats();
  ShowUnit(kTemperatureUnit, lblOffset, lblCelsius);
  ShowUnit(kPressureUnit, lblUnitP);
  FieldCounts counts{};
  std::size_t next = 0;
  for (std::size_t r = 0; r < kRecords; ++r) {
    const base::Record record = ReadRecord(rows_[r].property);
    NamingProperty(rows_[r].property.type, [&] {
      for (; counts[r] < record.Count(); ++counts[r]) {
        SetSource(rows_[r].property.type, {&Box(next)});
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
  if (minimum && WholeNumber(kMinSupply, *minimum) < WholeNumber(kSupplyAlarm, txtAlarm[kSupplyLowBox])) {
    refuse(Translate("The Alarm Low Limit Temperature must be higher than the "),
           Translate("Minimum Discharge Cooling Setpoint."), kSupplyLowBox);
  }
  const ui::Control* maximum = FindControl(kSetpointPage, "txtMaxDischHeat");
  if (maximum && WholeNumber(kMaxSupply, *maximum) > WholeNumber(kSupplyAlarm, txtAlarm[kSupplyHighBox])) {
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
  BindFormats();
  std::size_t next = 0;
  for (const Row& row : rows_) {
    ChangeRecord(row.property, [this, &next](host::Edit& record) {
      for (std::size_t i = 0; i < record.Count(); ++i) SetField(record, i, Box(next++));
    });
  }
  return passed;
}

}  // namespace pages
