// Fan and valves: minimum positions and drive times of the heating and cooling valves, and the supply fan's
// minimum speed, on/off period, current threshold, state input and always-on option. Positions and speed in
// percent. Which controls can be used follows from the functions chosen on the outputs and inputs pages, also
// before they are saved.
#pragma once

#include "pages/control/control_page.h"

namespace pages {

class fFanValve final : public ControlPage {
 public:
  fFanValve(const shell::PageContext& context, const shell::PagePlace& place);

  void FollowFunctions() override { CheckIfFrameEnable(); }
  /// Decides which controls can be used.
  void CheckIfFrameEnable();

 private:
  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void BuildLayout();

  bool Floating(std::string_view pair) const;
  bool FanStateByCurrent() const;

  ui::Frame fraValve{*this, "fraValve"};
  ui::Label lblHeat{*this, "lblHeat"};
  ui::Label lblCool{*this, "lblCool"};
  ui::Label lblDriveTime{*this, "lblDriveTime"};
  ui::TextBox txtHeat{*this, "txtHeat"};
  ui::Label lblHeatSec{*this, "lblHeatSec"};
  ui::TextBox txtCool{*this, "txtCool"};
  ui::Label lblCoolSec{*this, "lblCoolSec"};
  ui::Frame fraPosition{*this, "fraPosition"};
  ui::Label lblHeatPosition{*this, "lblHeatPosition"};
  ui::TextBox txtMinHeatValue{*this, "txtMinHeatValue"};
  ui::Label lblHeatPercent{*this, "lblHeatPercent"};
  ui::Label lblCoolPosition{*this, "lblCoolPosition"};
  ui::TextBox txtCoolValue{*this, "txtCoolValue"};
  ui::Label lblCoolPercent{*this, "lblCoolPercent"};

  ui::Frame fraFan{*this, "fraFan"};
  ui::Label lblFanSpeed{*this, "lblFanSpeed"};
  ui::Label lblSpeed{*this, "lblSpeed"};
  ui::TextBox txtFanSpeed{*this, "txtFanSpeed"};
  ui::Label lblSpeedUnit{*this, "lblSpeedUnit"};
  ui::Label lblPeriod{*this, "lblPeriod"};
  ui::TextBox txtFanPeriod{*this, "txtFanPeriod"};
  ui::Label lblPeriodUnit{*this, "lblPeriodUnit"};
  ui::Label lblFanCurrent{*this, "lblFanCurrent"};
  ui::Label lblThresold{*this, "lblThresold"};
  ui::TextBox txtThresHold{*this, "txtThresHold"};
  ui::Label lblUnit{*this, "lblUnit"};
  ui::Frame fraState{*this, "fraState"};
  ui::OptionGroup<2> optState{*this, "optState"};
  ui::CheckBox chkFan{*this, "chkFan"};
};

}  // namespace pages
