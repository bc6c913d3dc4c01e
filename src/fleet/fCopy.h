// The window of copying: which configuration, which of its pages, which units; then what becomes of each,
// line by line. It stays usable while units are worked on: it paints, ends after the present unit when told
// to, and shows each state as it comes. Owned by the fleet.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "configuration/desk.h"
#include "configuration/dialog.h"
#include "fleet/copier.h"
#include "fleet/result.h"

namespace fleet {

class fCopy final : public configuration::Dialog {
 public:
  fCopy(shell::fMain& main, configuration::Desk& desk, const shell::Platform& platform,
        const shell::Settings& settings, const shell::Strings& strings);

  void InitStrings();
  /// Lists the units and waits until the window is closed. Throws when the network cannot be asked.
  void ShowUnits();

 private:
  void ListUnits();
  /// Why the unit cannot be copied to; empty when it can.
  std::string WhyNot(const configuration::UnitEntry& unit, const std::string& programId) const;
  void ListPages();
  void ChooseFile();
  /// Of the unit in view, read when it is first needed, or of the file.
  const configuration::Document& Source();
  std::string SourceName() const;
  /// Nothing that was found holds for another source or other pages.
  void Forget();
  configuration::Selection Selected() const;
  std::vector<UnitLine*> Ticked();
  void Tell(const std::exception& error);
  bool Confirmed(std::size_t units);
  void Work(bool write);
  void Log();
  void SaveResult();
  void TickAll(bool ticked);

  std::vector<std::string> CellsOf(const UnitLine& line) const;
  void ShowLine(const UnitLine& line);
  void ShowRows();
  void ShowCount();
  void Enable();

  shell::fMain& main_;
  configuration::Desk& desk_;
  std::unique_ptr<Copier> copier_;
  std::vector<UnitLine> lines_;
  std::vector<configuration::PageTitle> pages_;  // those with values, as ticked
  std::optional<configuration::Document> ofUnit_, ofFile_;
  std::string file_;
  bool running_ = false, stop_ = false;

  ui::Frame fraSource{*this, "fraSource"};
  ui::OptionGroup<2> optSource{*this, "optSource"};  // 0 the unit in view, 1 a file
  ui::TextBox txtFile{*this, "txtFile"};
  ui::Button cmdBrowse{*this, "cmdBrowse"};
  ui::Label lblUnits{*this, "lblUnits"};
  ui::ListView lvwUnits{*this, "lvwUnits"};
  ui::Label lblPages{*this, "lblPages"};
  ui::ListView lvwPages{*this, "lvwPages"};
  ui::ProgressBar barUnits{*this, "barUnits"};
  ui::Label lblCount{*this, "lblCount"};
  ui::Button cmdTickAll{*this, "cmdTickAll"};
  ui::Button cmdTickNone{*this, "cmdTickNone"};
  ui::Button cmdCompare{*this, "cmdCompare"};
  ui::Button cmdCopy{*this, "cmdCopy"};
  ui::Button cmdStop{*this, "cmdStop"};
  ui::Button cmdSave{*this, "cmdSave"};
  ui::Button cmdClose{*this, "cmdClose"};
};

}  // namespace fleet
