// The window of advice (F9): what the rules say of the unit as the pages stand, kept true while one types;
// why it matters, what to do, and the way to the field. Owned by the main window as its companion.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "advice/advice.h"
#include "shell/companion.h"
#include "shell/main_window.h"

namespace advice {

class fAdvice final : public ui::Window, public shell::Companion {
 public:
  fAdvice(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
          const shell::Strings& strings);
  ~fAdvice() override;

  std::vector<ui::MenuItem> ViewMenu() override;
  void InitStrings() override;
  void Follow() override;
  void Hide() override { Window::Hide(); }

  /// What the rules say now.
  std::vector<Advice> Found() const;

 private:
  void ShowMe();
  void ShowRows();
  void ShowReason();
  void GoTo();
  const Advice* Selected() const;
  std::string PathOf(const Concerned& field) const;
  std::optional<std::string> ContentOf(std::string_view page, std::string_view control) const;

  shell::fMain& main_;
  const shell::Platform& platform_;
  const shell::Settings& settings_;
  const shell::Strings& strings_;
  std::vector<Advice> list_;

  ui::ListView lvwAdvice{*this, "lvwAdvice"};
  ui::Label lblWhy{*this, "lblWhy"};
  ui::Label lblSource{*this, "lblSource"};
  ui::Label lblCount{*this, "lblCount"};
  ui::Button cmdGoTo{*this, "cmdGoTo"};
  ui::Button cmdClose{*this, "cmdClose"};
};

}  // namespace advice
