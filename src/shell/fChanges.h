// The list of changes: a line for each value that the next save changes, what it is in the device and what it
// becomes. It stays open beside the main window and follows it; or it is shown before a save, which then
// waits for it. Owned by the main window, which does what is asked for here.
#pragma once

#include <functional>
#include <vector>

#include "shell/changes.h"
#include "shell/companion.h"
#include "shell/tool_window.h"

namespace shell {

class fChanges final : public ToolWindow {
 public:
  fChanges(const Platform& platform, const Settings& settings, const Strings& strings, const PageSet& pages,
           const Changes& changes);

  /// What the buttons ask for.
  std::function<void(const Change&)> onGoTo;
  std::function<void(std::vector<const fields::Field*>)> onTakeBack;
  std::function<void()> onApply;

  void InitStrings();
  void ShowMe();
  /// Shows the list alone, warnings on top, and waits; answers whether it may be applied.
  bool Review(std::vector<Warning> warnings);
  /// The changes are others; harmless while the window is not visible.
  void Follow();
  /// Locked: nothing can be taken back or applied.
  void SetLocked(bool locked);

 private:
  void Open();
  void ShowRows();
  void EnableButtons();
  std::vector<const Change*> Selected() const;
  void GoTo();
  void TakeBack();
  void Apply();
  void SetReviewing(bool reviewing);

  const PageSet& pages_;
  const Changes& changes_;
  std::vector<Change> list_;
  std::vector<Warning> warnings_;  // lines above the list; none but in a review
  bool reviewing_ = false;
  bool accepted_ = false;
  bool locked_ = false;

  ui::ListView lvwChanges{*this, "lvwChanges"};
  ui::Label lblCount{*this, "lblCount"};
  ui::Button cmdGoTo{*this, "cmdGoTo"};
  ui::Button cmdTakeBack{*this, "cmdTakeBack"};
  ui::Button cmdApply{*this, "cmdApply"};
  ui::Button cmdClose{*this, "cmdClose"};
};

/// "3 changes on 2 pages, 1 refused".
std::string CountText(const Changes& changes, const PageSet& pages, const Strings& strings);

}  // namespace shell
