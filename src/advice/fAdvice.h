// The window of advice (F9): what the rules say of the unit as the pages stand, kept true while one types,
// with a count beside that of the changes; why it matters, what to do, the way to the field, and accepting a
// line as it is. Owned by the main window as its companion.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "advice/accepted.h"
#include "advice/fAccept.h"
#include "advice/field_contents.h"
#include "configuration/record.h"
#include "configuration/unit_file.h"
#include "shell/companion.h"
#include "shell/main_window.h"
#include "shell/tool_window.h"

namespace advice {

class fAdvice final : public shell::ToolWindow, public shell::Companion {
 public:
  fAdvice(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
          const shell::Strings& strings);

  std::vector<ui::MenuItem> ViewMenu() override;
  void InitStrings() override;
  void Loaded() override;
  void Refreshed() override;
  void Follow() override;
  std::vector<shell::Warning> Warnings() override;
  void Hide() override;

  /// What is to be said of these values, and what of it somebody has accepted.
  std::vector<configuration::AdviceLine> AdviceOn(const configuration::Snapshot& snapshot) const;

  fAccept& AcceptWindow() { return accept_; }

 private:
  void ShowMe();
  void Judge();
  void ShowRows();
  void ShowReason();
  void GoTo();
  void AcceptSelected();
  std::string CountText() const;
  std::string PageOf(const Concerned& field) const;
  std::string PathOf(const Concerned& field) const;

  /// One line of the list: open, or accepted by somebody.
  struct Found {
    Advice advice;
    std::optional<Accepted> accepted;
  };
  const Found* Selected() const;
  std::string SeverityOf(const Found& found) const;

  shell::fMain& main_;
  configuration::UnitFile notes_;
  fAccept accept_;
  fields::Field location_;
  std::unique_ptr<FieldContents> contents_;
  int generation_ = -1;  // of the fields in contents_
  std::vector<Accepted> accepted_;
  std::vector<Found> list_;  // what is open, then what is accepted

  ui::ListView lvwAdvice{*this, "lvwAdvice"};
  ui::Label lblWhy{*this, "lblWhy"};
  ui::Label lblTodo{*this, "lblTodo"};
  ui::Label lblSource{*this, "lblSource"};
  ui::Label lblAccepted{*this, "lblAccepted"};
  ui::Label lblCount{*this, "lblCount"};
  ui::Button cmdGoTo{*this, "cmdGoTo"};
  ui::Button cmdAccept{*this, "cmdAccept"};
  ui::Button cmdClose{*this, "cmdClose"};
};

}  // namespace advice
