#include "fleet/fCopy.h"

#include "base/files.h"
#include "base/text.h"
#include "configuration/unit_list.h"
#include "host/device_template.h"
#include "logger/message_logger.h"
#include "shell/words.h"

namespace fleet {
namespace {

using Tick = ui::ListView::Tick;

constexpr const char* kSettings = "settings";  // rows of the pages that are none
constexpr const char* kOfOneUnit = "names";

int IconOf(const UnitLine& line) {
  if (IsBad(line.state)) return logger::kError;
  return line.state == UnitState::kDone && !line.reason.empty() ? logger::kExclamation : 0;
}

}  // namespace

fCopy::fCopy(shell::fMain& main, configuration::Desk& desk, const shell::Platform& platform,
             const shell::Settings& settings, const shell::Strings& strings)
    : Dialog("fCopy", platform, settings, strings), main_(main), desk_(desk) {
  cancelButton = &cmdClose;
  txtFile.SetEnabled(false);
  txtFile.SetColumns(50);
  lvwUnits.SetTicks(true);
  lvwPages.SetTicks(true);
  for (std::size_t i = 0; i < optSource.Size(); ++i) {
    optSource[i].onClick = [this] {
      Forget();
      if (optSource[1].Selected() && !ofFile_) ChooseFile();
    };
  }
  cmdBrowse.onClick = [this] { ChooseFile(); };
  lvwUnits.onTick = [this](std::size_t) { Enable(); };
  lvwPages.onTick = [this](std::size_t) { Forget(); };
  cmdTickAll.onClick = [this] { TickAll(true); };
  cmdTickNone.onClick = [this] { TickAll(false); };
  cmdCompare.onClick = [this] { Work(false); };
  cmdCopy.onClick = [this] { Work(true); };
  cmdStop.onClick = [this] { stop_ = true; };
  cmdSave.onClick = [this] { SaveResult(); };
  cmdClose.onClick = [this] { Close(); };
  onQueryClose = [this] {
    stop_ = true;
    return !running_;
  };
  using namespace ui;
  SetLayout(Stack({
      GrowX(Box(fraSource, Stack({Item(optSource[0]), GrowX(Line({Item(optSource[1]), GrowX(Item(txtFile)),
                                                                  Item(cmdBrowse)}))}))),
      Grow(Line({Grow(Stack({Item(lblUnits), Grow(Item(lvwUnits))})),
                 GrowY(Stack({Item(lblPages), GrowY(Item(lvwPages))}))})),
      GrowX(Item(lblCount)),
      GrowX(Item(barUnits)),
      GrowX(Line({Item(cmdTickAll), Item(cmdTickNone), GrowX(Empty()), Item(cmdCompare), Item(cmdCopy),
                  Item(cmdStop), Item(cmdSave), Item(cmdClose)})),
  }));
}

void fCopy::InitStrings() {
  SetTitle(Text("Copy to units"));
  SetTexts({
      {&fraSource, "Source"},
      {&optSource[0], "&This unit, as the device holds it"},
      {&optSource[1], "A &file:"},
      {&cmdBrowse, "&Browse..."},
      {&lblUnits, "&Units of the network:"},
      {&lblPages, "&What is copied:"},
      {&cmdTickAll, "Tick &all"},
      {&cmdTickNone, "Tick &none"},
      {&cmdCompare, "Co&mpare"},
      {&cmdCopy, "&Copy..."},
      {&cmdStop, "Canc&el"},
      {&cmdSave, "&Save result..."},
      {&cmdClose, "C&lose"},
  });
  cmdCompare.SetTip(Text("Finds the differences of the ticked units; writes nothing"));
  cmdStop.SetTip(Text("Ends after the present unit"));
}

void fCopy::ShowUnits() {
  copier_ = std::make_unique<Copier>(desk_.Surroundings(), main_.Context().strings, main_.Opened);
  copier_->onState = [this](const UnitLine& line) {
    ShowLine(line);
    platform_.loop.Turn();
  };
  copier_->mayCommit = [this] { return !main_.Flags().sessionEnds; };
  ofUnit_.reset();
  ofFile_.reset();
  file_.clear();
  txtFile.SetText({});
  optSource[0].Select();
  ListPages();
  ListUnits();
  stop_ = false;
  RealizeWide();
  Run(lvwUnits);
  copier_.reset();
}

void fCopy::ListUnits() {
  lines_.clear();
  const std::string programId = desk_.MakeHead().programId, inView = main_.Opened.deviceName;
  auto units = configuration::ListUnits(platform_, main_.Opened);
  configuration::NameInView(units, inView);
  int number = 0;
  for (configuration::UnitEntry& unit : units) {
    ++number;
    if (base::EqualsNoCase(unit.name, inView)) continue;
    UnitLine line{std::move(unit)};
    line.reason = WhyNot(line.unit, programId);
    if (line.unit.name.empty()) line.unit.name = Text("Unit %s1%", {std::to_string(number)});
    if (!line.reason.empty()) line.state = UnitState::kNotTaken;
    lines_.push_back(std::move(line));
  }
  lvwUnits.SetColumns({Text("Unit name"), Text("Location"), Text("State"), Text("Remark")});
  lvwUnits.SetRows({});
  ShowRows();
  TickAll(true);
  lvwUnits.FitColumns();
  barUnits.SetRange(0);
}

std::string fCopy::WhyNot(const configuration::UnitEntry& unit, const std::string& programId) const {
  if (!unit.fault.empty()) return unit.fault;
  if (!base::EqualsNoCase(unit.programId, programId)) return Text("another kind of device");
  try {
    platform_.readFile(
        host::TemplatePath(settings_.commonFilesFolder, host::TemplateName(unit.programId, unit.version)));
    return {};
  } catch (const std::exception& error) {
    return shell::InWords(strings_, error);
  }
}

void fCopy::ListPages() {
  pages_.clear();
  lvwPages.SetColumns({Text("Page")});
  std::vector<ui::ListView::Row> rows;
  for (const shell::PageEntry& entry : desk_.Surroundings().table) {
    if (!entry.showsDeviceValues) continue;
    pages_.push_back({std::string(entry.pageClass), PageName(entry, strings_)});
    rows.push_back({pages_.back().page, {pages_.back().title}, 0, Tick::kOn});
  }
  rows.push_back({kSettings, {Text("Sensor and actuator settings")}, 0, Tick::kOn});
  rows.push_back({kOfOneUnit, {Text("Location and names")}, 0, Tick::kOff});
  lvwPages.SetRows(std::move(rows));
  lvwPages.FitColumns();
}

void fCopy::ChooseFile() {
  const auto file =
      platform_.fileDialog.AskOpenFile({Text("Configurations (*.kvtarn)|*.kvtarn|All files (*.*)|*.*"),
                                        file_.empty() ? settings_.documentsFolder + "\\" : file_, 0});
  if (file) {
    try {
      ofFile_ = desk_.ReadFile(base::PathOf(*file));
      file_ = *file;
      txtFile.SetText(file_);
    } catch (const std::exception& error) {
      Tell(error);
    }
  }
  optSource[ofFile_ && (file || optSource[1].Selected()) ? 1 : 0].Select();
  Forget();
}

const configuration::Document& fCopy::Source() {
  if (optSource[1].Selected() && ofFile_) return *ofFile_;
  if (!ofUnit_) ofUnit_ = desk_.ToFile(desk_.Take(false));
  return *ofUnit_;
}

std::string fCopy::SourceName() const {
  return optSource[1].Selected() && ofFile_ ? file_ : main_.Opened.deviceName;
}

void fCopy::Forget() {
  for (UnitLine& line : lines_) {
    if (line.state != UnitState::kNotTaken) line = {line.unit};
  }
  ShowRows();
}

configuration::Selection fCopy::Selected() const {
  configuration::Selection selection{{}, false, false};
  for (const ui::ListView::Row& row : lvwPages.Rows()) {
    if (row.tick != Tick::kOn) continue;
    if (row.key == kSettings) {
      selection.settings = true;
    } else if (row.key == kOfOneUnit) {
      selection.ofOneUnit = true;
    } else {
      selection.pages.insert(row.key);
    }
  }
  return selection;
}

std::vector<UnitLine*> fCopy::Ticked() {
  std::vector<UnitLine*> ticked;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (lvwUnits.Rows()[i].tick == Tick::kOn) ticked.push_back(&lines_[i]);
  }
  return ticked;
}

void fCopy::Tell(const std::exception& error) {
  Say(shell::InWords(strings_, error), ui::Icon::kExclamation);
}

bool fCopy::Confirmed(std::size_t units) {
  const std::string text = Text(
      "Copy what is ticked of %s1% to %s2% units? Only what differs is written. The former values of each "
      "unit are kept as a backup, and what was saved is read back.",
      {SourceName(), std::to_string(units)});
  return platform_.prompts.Ask({text, settings_.title, ui::Buttons::kOkCancel, ui::Icon::kQuestion}) ==
         ui::Answer::kOk;
}

void fCopy::Work(bool write) {
  const std::vector<UnitLine*> ticked = Ticked();
  running_ = true;
  stop_ = false;
  Enable();
  std::size_t begun = 0;
  try {
    const Job job{Source(), Selected(), write};
    if (!write || Confirmed(ticked.size())) {
      for (UnitLine* line : ticked) {
        if (line->state != UnitState::kNotTaken) *line = {line->unit};
      }
      ShowRows();
      barUnits.SetRange(static_cast<int>(ticked.size()));
      for (; begun < ticked.size() && !stop_ && Visible() && !main_.Flags().sessionEnds; ++begun) {
        copier_->Work(*ticked[begun], job);
        barUnits.SetValue(static_cast<int>(begun) + 1);
        ShowCount();
      }
      if (write && begun > 0) Log();
    }
  } catch (const std::exception& error) {
    Tell(error);
  }
  running_ = false;
  ShowRows();
  lvwUnits.FitColumns();
}

void fCopy::TickAll(bool ticked) {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (lines_[i].state != UnitState::kNotTaken) lvwUnits.SetTick(i, ticked ? Tick::kOn : Tick::kOff);
  }
  Enable();
}

// --- what is shown ---

std::vector<std::string> fCopy::CellsOf(const UnitLine& line) const {
  return {line.unit.name, line.unit.location, StateText(strings_, line),
          base::ReplaceAll(line.reason, "\r\n", "; ")};
}

void fCopy::ShowLine(const UnitLine& line) {
  const auto row = static_cast<std::size_t>(&line - lines_.data());
  const std::vector<std::string> cells = CellsOf(line);
  for (std::size_t column = 2; column < cells.size(); ++column) lvwUnits.SetCell(row, column, cells[column]);
}

void fCopy::ShowRows() {
  const bool known = lvwUnits.Rows().size() == lines_.size();
  std::vector<ui::ListView::Row> rows;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const UnitLine& line = lines_[i];
    const Tick tick = line.state == UnitState::kNotTaken ? Tick::kNone
                      : known                            ? lvwUnits.Rows()[i].tick
                                                         : Tick::kOn;
    rows.push_back({std::to_string(i), CellsOf(line), IconOf(line), tick});
  }
  const std::vector<std::size_t> selection = lvwUnits.Selection();
  lvwUnits.SetRows(std::move(rows));
  if (!lines_.empty()) lvwUnits.SetSelection(selection.empty() ? std::vector<std::size_t>{0} : selection);
  Enable();
}

void fCopy::ShowCount() {
  std::vector<std::string> parts = CountTexts(strings_, lines_);
  if (const std::size_t ticked = Ticked().size(); ticked > 0)
    parts.insert(parts.begin(), Text("%s1% units ticked", {std::to_string(ticked)}));
  lblCount.SetText(base::Join(parts, ", "));
}

void fCopy::Enable() {
  const bool some = !Ticked().empty() && !running_;
  ui::Control* const idle[] = {&optSource[0], &optSource[1], &cmdBrowse, &lvwPages,
                               &cmdTickAll,   &cmdTickNone,  &cmdClose,  &cmdSave};
  for (ui::Control* control : idle) control->SetEnabled(!running_);
  cmdCompare.SetEnabled(some);
  cmdCopy.SetEnabled(some && !main_.Locked());
  cmdStop.SetEnabled(running_);
  ShowCount();
}

}  // namespace fleet
