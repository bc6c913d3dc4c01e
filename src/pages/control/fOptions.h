// Options: optimum start, demand averaging, occupancy control of terminal units, periodic alternation between
// heating and cooling, and frost protection. Times in minutes (the validity period in seconds), weights and
// demands in percent. Owns its fields of the shared option record; two markers in it tell that the device was
// made for an older algorithm, and the next save adjusts them.
//
// The cycle time of the periodic alternation is looked at twice in a save, on purpose: first before anything,
// also while the page has no edits, where a fault only stands in the log and the shared flag of failed writes
// stays clear; then after the options were written, since host calls have run between, where it is told in a
// box and sets that flag. Either way the page answers no, and the whole save is cancelled.
#pragma once

#include "pages/control/control_page.h"

namespace pages {

class fOptions final : public ControlPage {
 public:
  fOptions(const shell::PageContext& context, const shell::PagePlace& place);

  std::vector<shell::Adjustment> Adjustments() override;

 private:
  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void DropEdits() override { MarkChanged(algorithmUpdate_); }
  void Saved() override;
  void BuildLayout();
  void WatchCycle();
  void EnableGroups();

  void FillOptions();
  void FillExtra();
  void CheckOptimumStart();
  void WriteOptions();

  /// Why the cycle time cannot be used, empty when it can. Throws base::Error when it is no whole number.
  std::string ValueVerification();

  bool algorithmUpdate_ = false;

  ui::Frame fraOptimum{*this, "fraOptimum"};
  ui::ControlArray<ui::CheckBox, 2> chkOptimum{*this, "chkOptimum", 1};
  ui::Label lblStartTime{*this, "lblStartTime"};
  ui::TextBox txtStartTime{*this, "txtStartTime"};
  ui::Label lblUnitStartTime{*this, "lblUnitStartTime"};

  ui::Frame fraAverage{*this, "fraAverage"};
  ui::CheckBox chkEnable{*this, "chkEnable"};
  ui::Frame fraDemand{*this, "fraDemand"};
  ui::OptionGroup<2> optAverage{*this, "optAverage"};
  ui::LabelArray<2> lblAverage{*this, "lblAverage"};  // rows of the weights
  ui::LabelArray<2> lblWeight{*this, "lblWeight"};    // their columns
  ui::TextBoxArray<4> txtAt{*this, "txtAt"};
  ui::LabelArray<4> lblAtUnit{*this, "lblAtUnit"};
  ui::Label lblMaxOffset{*this, "lblMaxOffset"};
  ui::TextBox txtMaxOffset{*this, "txtMaxOffset"};
  ui::Label lblMaxOffsetUnit{*this, "lblMaxOffsetUnit"};
  ui::Label lblInput{*this, "lblInput"};
  ui::TextBox txtInput{*this, "txtInput"};
  ui::Label lblInputUnit{*this, "lblInputUnit"};

  ui::Frame fraTerminal{*this, "fraTerminal"};
  ui::CheckBox chkTerminal{*this, "chkTerminal"};
  ui::OptionGroup<2> optTerminal{*this, "optTerminal"};

  ui::Frame fraAlternate{*this, "fraAlternate"};
  ui::CheckBox chkAlternate{*this, "chkAlternate"};
  ui::Label lblHeatCool{*this, "lblHeatCool"};
  ui::TextBox txtHeatCool{*this, "txtHeatCool"};
  ui::Label lblMin{*this, "lblMin"};
  ui::Label lblChangeOver{*this, "lblChangeOver"};
  ui::TextBox txtChangeOver{*this, "txtChangeOver"};
  ui::Label lblUnit{*this, "lblUnit"};

  ui::Frame fraFrost{*this, "fraFrost"};
  ui::CheckBox chkFrost{*this, "chkFrost"};
};

}  // namespace pages
