// The window of the check-out: one step after the other, what will happen, Start, and whether it was seen. It
// holds up the main window while it is open; each end of it puts back what is overridden. After a start on a
// unit where an earlier check-out could not, it offers to do so first. Owned by the main window as its
// companion.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "checkout/check_out.h"
#include "shell/companion.h"
#include "shell/main_window.h"
#include "shell/tool_window.h"

namespace checkout {

class fCheckOut final : public shell::ToolWindow, public shell::Companion {
 public:
  fCheckOut(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
            const shell::Strings& strings);

  std::vector<ui::MenuItem> FileMenu() override;
  void InitStrings() override;
  void Loaded() override;
  void SessionMayEnd() override { outputs_.EndTime(); }
  void Hide() override;

  CheckOut& Outputs() { return outputs_; }

 private:
  static constexpr std::string_view kLocation = "Check-out";  // in the log

  void BuildLayout();
  void Open();
  /// Why no check-out can begin now, in words; empty when it can.
  std::string WhyNot();
  bool HasEdits() const;
  void Lead();
  void OfferToPutBack();

  void ChooseStep();
  void StartStep();
  void Answer(const char* result);
  void Tick();
  /// Answers whether nothing is overridden any more; tells it where something is.
  bool PutBack();
  void TellStanding();
  bool MayClose();

  void Keep(const char* result);
  configuration::Line* ResultOf(const Step& step);
  void ShowSteps();
  void ShowState();
  std::string WhatHappens(const Step& step) const;
  std::string NamesOf(const std::vector<Kept>& kept) const;
  void Tell(const std::string& words, ui::Icon icon);

  shell::fMain& main_;
  configuration::UnitFile notes_;
  CheckOut outputs_;
  std::vector<Step> steps_;
  std::size_t step_ = 0;
  std::vector<configuration::Line> results_;  // of this unit, of earlier check-outs too
  bool started_ = false;                      // the step in view was, and its answer is due
  bool timeOver_ = false;
  ui::Timer second_;
  ui::Timer offer_;

  ui::ListView lvwSteps{*this, "lvwSteps"};
  ui::Label lblStep{*this, "lblStep"};
  ui::Label lblSafety{*this, "lblSafety"};
  ui::Label lblState{*this, "lblState"};
  ui::Label lblLimit{*this, "lblLimit"};
  ui::TextBox txtLimit{*this, "txtLimit"};
  ui::Label lblSeconds{*this, "lblSeconds"};
  ui::Label lblRemark{*this, "lblRemark"};
  ui::TextBox txtRemark{*this, "txtRemark"};
  ui::Button cmdStart{*this, "cmdStart"};
  ui::Button cmdYes{*this, "cmdYes"};
  ui::Button cmdNo{*this, "cmdNo"};
  ui::Button cmdSkip{*this, "cmdSkip"};
  ui::Button cmdClose{*this, "cmdClose"};
};

}  // namespace checkout
