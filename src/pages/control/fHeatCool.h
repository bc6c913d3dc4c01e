// Heating and cooling: the six space setpoints, the supply limits, and the timing and outdoor limits of
// heating stages, economizer, mechanical cooling and changeover. Temperatures and enthalpy in the unit system
// in use. The supply limits are checked against the alarms page, which checks the same pair from its side.
// Which controls can be used follows from the functions of the outputs, also before they are saved.
//
// When its rules run, all on purpose: no rule runs and nothing is written before a page has been selected in
// the list, so what a unit came with never stops a save that nobody made on this page. After that every save
// runs the rules, also while this page has no edits. Crossed setpoints refuse the save and take the page's
// edits off the count of unsaved ones until somebody types again; the next save is refused all the same. The
// supply maximum refuses once: as long as its warning stands, which is until a person enters the box again,
// neither it nor the minimum is looked at. The minimum's own warning holds nothing back but its box's check.
#pragma once

#include "pages/control/control_page.h"

namespace pages {

class fHeatCool final : public ControlPage {
 public:
  fHeatCool(const shell::PageContext& context, const shell::PagePlace& place);

  void FollowFunctions() override { EnableUsable(SelectedFunctions()); }

 private:
  static constexpr std::size_t kPeriods = 3;  // occupied, standby, unoccupied
  static constexpr std::size_t kBoxes = 2 * kPeriods;

  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void FillOptions();
  void BuildLayout();
  /// A supply limit: a warning about it holds back further ones until the person comes back to the box.
  void WatchSupply(ui::TextBox& box, bool& warned);
  void EnableUsable(const std::vector<std::string>& functions);
  void CheckSetpoints();
  void CheckSupplyLimits();
  void WriteProperties();

  bool maxSupplyWarned_ = false;
  bool minSupplyWarned_ = false;
  bool optionsGiven_ = true;  // no: the device gave an empty record, so options cannot be shown nor written

  ui::Frame fraSetPoint{*this, "fraSetPoint"};
  ui::Label lblHeating{*this, "lblHeating"};
  ui::Label lblCooling{*this, "lblCooling"};
  ui::LabelArray<kBoxes> lblSetPoint{*this, "lblSetPoint"};
  ui::TextBoxArray<kBoxes> txtSetPoint{*this, "txtSetPoint"};  // 0 to 2 cooling, 3 to 5 heating
  // Of the setpoints, the maximum and minimum supply, and the outdoor limits of economizer and mechanical
  // cooling.
  ui::LabelArray<kBoxes + 4> lblUnits{*this, "lblUnits"};
  ui::LabelArray<3> lblSec{*this, "lblSec"};  // of cooling on and off time and the switchover delay

  ui::Frame fraHeat{*this, "fraHeat"};
  ui::Label lblHeat{*this, "lblHeat"};
  ui::TextBox txtminHeatPeriod{*this, "txtminHeatPeriod"};
  ui::Label lblHeatUnit{*this, "lblHeatUnit"};
  ui::Label lblMaxDischHeat{*this, "lblMaxDischHeat"};
  ui::TextBox txtMaxDischHeat{*this, "txtMaxDischHeat"};
  ui::CheckBox chkHeatStage{*this, "chkHeatStage"};

  ui::Frame fraCool{*this, "fraCool"};
  ui::Label lblMinDischCool{*this, "lblMinDischCool"};
  ui::TextBox txtMinDischCool{*this, "txtMinDischCool"};

  ui::Frame fraChngeOver{*this, "fraChngeOver"};
  ui::Label lblChngeOver{*this, "lblChngeOver"};
  ui::TextBox txtChngeOverDelay{*this, "txtChngeOverDelay"};
  ui::Label lblChngeOverUnit{*this, "lblChngeOverUnit"};

  ui::Frame fraEcono{*this, "fraEcono"};
  ui::Label lblfreeCool{*this, "lblfreeCool"};
  ui::TextBox txtfreeCoolDegree{*this, "txtfreeCoolDegree"};
  ui::Label lblfreeCooling{*this, "lblfreeCooling"};
  ui::TextBox txtfreeCooling{*this, "txtfreeCooling"};
  ui::Label lblBtu{*this, "lblBtu"};
  ui::Label lblMechDelay{*this, "lblMechDelay"};
  ui::TextBox txtMechCoolDelay{*this, "txtMechCoolDelay"};
  ui::CheckBox chkMechAndEco{*this, "chkMechAndEco"};

  ui::Frame fraMech{*this, "fraMech"};
  ui::Label lblCoolOn{*this, "lblCoolOn"};
  ui::TextBox txtCoolOn{*this, "txtCoolOn"};
  ui::Label lblCoolOFF{*this, "lblCoolOFF"};
  ui::TextBox txtCoolOFF{*this, "txtCoolOFF"};
  ui::Label lblMechCool{*this, "lblMechCool"};
  ui::TextBox txtMechCoolLL{*this, "txtMechCoolLL"};

  ui::Frame FrameRversingValve{*this, "FrameRversingValve"};
  ui::OptionButton OptionNormallyCool{*this, "OptionNormallyCool"};
  ui::OptionButton OptionNormallyHeat{*this, "OptionNormallyHeat"};
};

}  // namespace pages
