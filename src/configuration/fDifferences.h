// The window of differences between the unit in view and a document: by page, with ticks for what is to be
// taken over, and the reasons of what the pages refused. Owned by the desk, which takes over what is ticked.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "configuration/comparison.h"
#include "configuration/dialog.h"
#include "shell/page_set.h"

namespace configuration {

class fDifferences final : public Dialog {
 public:
  fDifferences(const shell::Platform& platform, const shell::Settings& settings,
               const shell::Strings& strings, std::span<const shell::PageEntry> table);

  /// A line that was not taken, and why.
  struct Refused {
    std::string page, control, reason;
  };
  /// Takes over what is ticked; answers what was refused.
  std::function<std::vector<Refused>(const std::vector<Difference>&)> onTakeOver;

  void InitStrings();
  /// Shows the lines and waits until the window is closed. `there` names the other side. Where nothing may be
  /// taken over, there are no ticks.
  void ShowLines(const std::string& title, const std::string& there, std::vector<Difference> lines,
                 bool mayTake);

 private:
  struct Line {
    Difference difference;
    bool ticked = false;
    std::string remark = {};
    bool handled = false;  // taken over, or refused
    bool refused = false;
  };
  /// A row is a page or a line of it.
  struct RowOf {
    std::string page;
    Line* line = nullptr;
  };

  bool MayTick(const Line& line) const;
  bool Shown(const Line& line) const;
  void ShowRows();
  void AddPage(const std::string& page, std::vector<ui::ListView::Row>& rows);
  ui::ListView::Row RowFor(const Line& line) const;
  ui::ListView::Tick TickOf(const std::string& page) const;
  void ShowTicks();
  void TurnTick(std::size_t row);
  void TickAll(bool ticked);
  void Fold();
  void TakeOver();
  std::string CountText() const;

  std::span<const shell::PageEntry> table_;
  std::vector<Line> lines_;
  std::vector<RowOf> rows_;
  std::vector<std::string> folded_;  // pages
  bool mayTake_ = false;

  ui::Label lblCount{*this, "lblCount"};
  ui::CheckBox chkAll{*this, "chkAll"};
  ui::ListView lvwLines{*this, "lvwLines"};
  ui::Button cmdTickAll{*this, "cmdTickAll"};
  ui::Button cmdTickNone{*this, "cmdTickNone"};
  ui::Button cmdFold{*this, "cmdFold"};
  ui::Button cmdTake{*this, "cmdTake"};
  ui::Button cmdClose{*this, "cmdClose"};
};

}  // namespace configuration
