// Alarms: limits, offsets and delays of ten alarm records, in one running sequence of boxes. A box is not
// bound to a field: the first field of the first record takes box 0, every further one the next box, so the
// numbers follow the fields that the device gives each record. Boxes 8 and 9 are checked against the supply
// setpoints of the heating and cooling page, which checks the same pair from its side.
#pragma once

#include <array>

#include "pages/control/control_page.h"

namespace pages {

class fAlarm final : public ControlPage {
 public:
  fAlarm(const shell::PageContext& context, const shell::PagePlace& place);

 private:
  static constexpr std::size_t kRecords = 10;
  static constexpr std::size_t kBoxes = 27;  // four more than usual, for records of a newer device
  using FieldCounts = std::array<std::size_t, kRecords>;

  enum Column { kLow, kHigh, kOffset, kDelay, kColumns };
  struct Cell {
    Column column;
    ui::Label& unit;
  };
  /// An alarm record and its usual fields in their order.
  struct Row {
    PropertyFormat property;
    const char* caption;
    std::vector<Cell> cells;
  };

  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  /// One row for each record, with as many boxes as it has fields.
  void BuildLayout();
  /// The row of record `r`, whose first box is `next`; counts on to the first box of the next record.
  std::vector<ui::Node> RecordCells(std::size_t r, std::size_t& next);
  /// In the order in which the records are filled and written.
  std::array<Row, kRecords> MakeRows();
  void BindFormats();
  /// Throws base::Error when there is no such box.
  ui::TextBox& Box(std::size_t number) const;
  bool CheckLimits();

  FieldCounts counts_;  // fields of each record, as the device gave them last

  ui::Frame fraAlarm{*this, "fraAlarm"};
  ui::LabelArray<4> lblColumn{*this, "lblColumn"};
  ui::LabelArray<kRecords> lblRecord{*this, "lblRecord"};
  ui::TextBoxArray<kBoxes> txtAlarm{*this, "txtAlarm"};
  ui::Label lblOffset{*this, "lblOffset"};
  ui::LabelArray<6> lblCelsius{*this, "lblCelsius"};  // of the temperature limits
  ui::LabelArray<3> lblUnitP{*this, "lblUnitP"};      // of the pressure limits
  ui::LabelArray<2> lblHumid{*this, "lblHumid"};
  ui::Label lblPpm{*this, "lblPpm"};
  ui::LabelArray<kRecords> lblSec{*this, "lblSec"};  // of the delays

  const std::array<Row, kRecords> rows_ = MakeRows();
};

}  // namespace pages
