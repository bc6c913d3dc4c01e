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
  fAlarm(const shell::PageContext& context, int helpTopic);

 private:
  static constexpr std::size_t kRecords = 10;
  static constexpr std::size_t kBoxes = 27;  // four more than usual, for records of a newer device
  using FieldCounts = std::array<std::size_t, kRecords>;

  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  /// One row for each record, with as many boxes as it has fields.
  void BuildLayout();
  /// The row of record `r`, whose first box is `next`; counts on to the first box of the next record.
  std::vector<ui::Node> RecordCells(std::size_t r, std::size_t& next);
  void SetUnitLabels();
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

  // The units of each record's fields.
  const std::array<std::vector<ui::Label*>, kRecords> units_{{
      {&lblOffset, &lblSec[0]},
      {&lblCelsius[0], &lblCelsius[1], &lblSec[1]},
      {&lblCelsius[2], &lblCelsius[3], &lblSec[2]},
      {&lblCelsius[4], &lblCelsius[5], &lblSec[3]},
      {&lblUnitP[0], &lblSec[4]},
      {&lblUnitP[1], &lblUnitP[2], &lblSec[5]},
      {&lblHumid[0], &lblHumid[1], &lblSec[6]},
      {&lblPpm, &lblSec[7]},
      {&lblSec[8]},
      {&lblSec[9]},
  }};
};

}  // namespace pages
