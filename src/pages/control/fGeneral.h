// General settings: bypass time, CO2 limit, duct and supply pressure, mixed-air low limit, humidity, the
// fresh air damper's positions and drive time, and the choices on economizer, temperature control, emergency
// contact and unoccupied fresh air. Positions in percent, drive time in seconds, other times in minutes.
// Which groups can be used follows from the functions chosen on the inputs and outputs pages, also before
// they are saved.
#pragma once

#include "pages/control/control_page.h"

namespace pages {

class fGeneral final : public ControlPage {
 public:
  fGeneral(const shell::PageContext& context, const shell::PagePlace& place);

  void FollowFunctions() override;
  /// Switches the rule between the two damper positions on while the fresh-air group can be used: what nobody
  /// can edit must not refuse a save.
  void ActivateOutdooeTest() { damperRange_ = fraFreshAir.Enabled(); }

  std::vector<shell::Adjustment> Adjustments() override;

 private:
  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void DropEdits() override { MarkChanged(freshAirUpdate_); }
  void Saved() override;
  void BuildLayout();

  /// The message of the damper rule, empty when it passes.
  std::string DamperFault() const;
  void WriteOptions();

  bool damperRange_ = false;
  bool freshAirUpdate_ = false;  // the device still regulates fresh air by flow; the next save ends that

  ui::Frame fraBypass{*this, "fraBypass"};
  ui::Label lblBypassTime{*this, "lblBypassTime"};
  ui::TextBox txtBypassTime{*this, "txtBypassTime"};
  ui::Label lblBypassUnit{*this, "lblBypassUnit"};
  ui::Frame fraCo2{*this, "fraCo2"};
  ui::Label lblCO2{*this, "lblCO2"};
  ui::TextBox txtCO2{*this, "txtCO2"};
  ui::Label lblCO2Unit{*this, "lblCO2Unit"};
  ui::Frame fraPress{*this, "fraPress"};
  ui::Label lblDuct{*this, "lblDuct"};
  ui::TextBox txtDuctPressure{*this, "txtDuctPressure"};
  ui::Label lblMaxPressure{*this, "lblMaxPressure"};
  ui::TextBox txtMaxPressure{*this, "txtMaxPressure"};
  ui::LabelArray<2> lblPressUnit{*this, "lblPressUnit"};
  ui::Frame fraHumid{*this, "fraHumid"};
  ui::Label lblHumidity{*this, "lblHumidity"};
  ui::TextBox txtHumidity{*this, "txtHumidity"};
  ui::Label lblHumidityUnit{*this, "lblHumidityUnit"};
  ui::Label lblHumidityMin{*this, "lblHumidityMin"};
  ui::TextBox txtHumidityMin{*this, "txtHumidityMin"};
  ui::Label lblHumidityMinUnit{*this, "lblHumidityMinUnit"};
  ui::Frame fraTemp{*this, "fraTemp"};
  ui::OptionGroup<2> optTemp{*this, "optTemp"};

  ui::Frame fraFreshAir{*this, "fraFreshAir"};
  ui::Label lblValveOnOff{*this, "lblValveOnOff"};
  ui::TextBox txtOutdoor{*this, "txtOutdoor"};
  ui::Label lblOutDoorMax{*this, "lblOutDoorMax"};
  ui::TextBox txtOutdoorMax{*this, "txtOutdoorMax"};
  ui::LabelArray<2> lblOutdoorUnit{*this, "lblOutdoorUnit"};
  ui::Label lblFreshAir{*this, "lblFreshAir"};
  ui::TextBox txtFreshAir{*this, "txtFreshAir"};
  ui::Label lblFreshAirUnit{*this, "lblFreshAirUnit"};
  ui::CheckBox chkFreshAir{*this, "chkFreshAir"};
  ui::Frame fraMix{*this, "fraMix"};
  ui::Label lblAir{*this, "lblAir"};
  ui::TextBox txtAirLowLimit{*this, "txtAirLowLimit"};
  ui::Label lblAirUnit{*this, "lblAirUnit"};
  ui::Frame fraEcono{*this, "fraEcono"};
  ui::OptionGroup<2> optEcono{*this, "optEcono"};
  ui::Frame fraEmergency{*this, "fraEmergency"};
  ui::OptionGroup<2> optEmergency{*this, "optEmergency"};

  const std::vector<PropertyBox> boxes_;  // in the order in which they are read and written
};

}  // namespace pages
