#include "logger/message_logger.h"

#include <algorithm>
#include <fstream>
#include <utility>

#include "base/files.h"
#include "base/text.h"

namespace logger {
namespace {

constexpr const char* kShowChoice = "IsShowLogAutomatically";
constexpr const char* kColumns[] = {"User", "Date", "Message", "Routine", "Location"};
constexpr const char* kButtons[] = {"Config&ure", "&Save to File", "Cl&ose", "&Clear"};
enum ButtonNumber { kConfigure, kSave, kClose, kClear };

constexpr const char* kFilter = "Log files (*.log)|*.log|Text files (*.txt)|*.txt";
constexpr const char* kProposedName = "\\PlugIn.log";
// Of the platform's file dialogs. A dialog for saving takes a new name in spite of the second one.
constexpr unsigned kHideReadOnlyBox = 0x0004;
constexpr unsigned kFileMustExist = 0x1000;

// Room for every message of a session but one that goes wrong in a loop. The oldest go together, as moving
// all others up takes time.
constexpr std::size_t kMostRows = 50'000;
constexpr std::size_t kRowsToCut = 5'000;

// Rows that come together are shown and measured once.
constexpr auto kRefreshDelay = std::chrono::milliseconds(50);
constexpr auto kWidthDelay = std::chrono::milliseconds(100);

/// Rows without an icon are details of the row above.
constexpr int kDetail = 0;

ui::ListView::Row DetailRow(const std::string& line) {
  return {{}, {"", "", "    " + line, "", ""}, kDetail};
}

const char* IconName(int level) {
  if (level == kDetail) return "";
  if (level == kInformation) return "Information";
  return level == kExclamation ? "Exclamation" : "Error";
}

/// Every other number counts as an error, 0 too, which would be a row without an icon.
int ShownLevel(int level) { return level == kInformation || level == kExclamation ? level : kError; }

std::string OneLine(std::string_view text) {
  std::string line(text);
  for (const char* separator : {"\t", "\r", "\n"}) line = base::ReplaceAll(line, separator, " ");
  return line;
}

/// Nothing is left to report a fault of the logger to.
void Trapped(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception&) {
    // What was done so far stays.
  }
}

}  // namespace

fMessage::fMessage(Surroundings surroundings)
    : Window("fMessage"),
      surroundings_(std::move(surroundings)),
      TimerRefresh(surroundings_.loop, kRefreshDelay),
      TimerWidthColumns(surroundings_.loop, kWidthDelay) {
  Check1.SetVisible(false);
  BtnCmd[kConfigure].onClick = [this] {
    Check1.SetVisible(!Check1.Visible());
    if (Check1.Visible()) Check1.Focus();
  };
  BtnCmd[kSave].onClick = [this] { Save(); };
  BtnCmd[kClose].onClick = [this] { Close(); };
  BtnCmd[kClear].onClick = [this] { ClearAll(); };
  cancelButton = &BtnCmd[kClose];
  Check1.onClick = [this] { KeepShowChoice(); };
  ListView1.SetMultiSelect(true);
  ListView1.onOpen = [this] { ShowDetails(!detailsShown_); };
  TimerRefresh.onTick = [this] {
    TimerRefresh.Stop();
    Refresh();
  };
  TimerWidthColumns.onTick = [this] {
    TimerWidthColumns.Stop();
    ListView1.FitColumns();
  };
  Check1.SetChecked(base::ReadRegistryString(surroundings_.registry, base::RegistryRoot::kCurrentUser,
                                             surroundings_.settingsKey, kShowChoice) == "0");
  SetLayout(ui::Stack({
      ui::Grow(ui::Item(ListView1)),
      ui::Line({ui::Item(Check1), ui::GrowX(ui::Empty()), ui::Item(BtnCmd[kConfigure]),
                ui::Item(BtnCmd[kSave]), ui::Item(BtnCmd[kClear]), ui::Item(BtnCmd[kClose])}),
  }));
  InitStrings();
}

fMessage::~fMessage() {
  if (surroundings_.toolkit) surroundings_.toolkit->Discard(*this);
}

void fMessage::InitStrings() {
  const auto& translate = surroundings_.translate;
  std::vector<std::string> columns;
  for (const char* column : kColumns) columns.push_back(translate(column));
  ListView1.SetColumns(columns);
  for (std::size_t i = 0; i < BtnCmd.Size(); ++i) BtnCmd[i].SetText(translate(kButtons[i]));
  Check1.SetText(translate("Don't show information automatically"));
  BuildPopup();
  SetFormTitle(formTitle_);
}

void fMessage::BuildPopup() {
  const auto& translate = surroundings_.translate;
  const auto refresh = [this] {
    Refresh();
    ListView1.FitColumns();
  };
  ListView1.popup = {
      {translate("Clear selected items"), [this] { ClearSelected(); }, {}},
      {translate("Clear all"), [this] { ClearAll(); }, {}},
      {translate("Save to file"), [this] { Save(); }, {}},
      {translate("Refresh"), refresh, {}},
      {translate("Show log details"), [this] { ShowDetails(!detailsShown_); }, {}, {}, detailsShown_}};
}

void fMessage::SetFormTitle(std::string_view title) {
  formTitle_ = title;
  // The blank in front belongs to the text, also where a translation comes without it.
  SetTitle(formTitle_ + " -  " + surroundings_.translate("Message Logger"));
}

void fMessage::ShowMe() {
  Trapped([this] {
    if (surroundings_.toolkit && !GetWindowPeer()) surroundings_.toolkit->Realize(*this);
    Show();
    BringToFront();
  });
}

void fMessage::AddMessage(std::string_view message, std::string_view routine, std::string_view location,
                          int level) {
  Trapped([&] {
    if (!AddRows(message, routine, location, level)) return;
    // Not anew, or messages that keep coming would never be shown.
    for (ui::Timer* timer : {&TimerRefresh, &TimerWidthColumns}) {
      if (!timer->Running()) timer->Start();
    }
    if (!Check1.Checked()) ShowMe();
    if (AddMessageEvent) AddMessageEvent(level);
  });
}

bool fMessage::AddRows(std::string_view message, std::string_view routine, std::string_view location,
                       int level) {
  const std::string plain = base::ReplaceAll(base::ReplaceAll(message, "\t", " "), "\r", "\n");
  const std::string date = surroundings_.locale.GeneralDateNow();
  bool added = false;
  for (const std::string& line : base::Split(base::Trim(plain), "\n")) {
    if (line.empty()) continue;
    const std::string number = std::to_string(++lastNumber_);
    ListView1.AddRow(
        {number + "Key", {number, date, line, OneLine(routine), OneLine(location)}, ShownLevel(level)});
    added = true;
    if (ListView1.Rows().size() > kMostRows) CutOldest(date);
  }
  return added;
}

void fMessage::AddDetails(std::vector<std::string> lines) {
  Trapped([&] {
    if (ListView1.Rows().empty()) return;
    if (detailsShown_) {
      for (const std::string& line : lines) ListView1.AddRow(DetailRow(OneLine(line)));
    }
    details_[std::to_string(lastNumber_) + "Key"] = std::move(lines);
  });
}

void fMessage::ShowDetails(bool shown) {
  if (shown == detailsShown_ || details_.empty()) return;
  detailsShown_ = shown;
  std::vector<ui::ListView::Row> rows;
  for (const ui::ListView::Row& row : ListView1.Rows()) {
    if (row.icon == kDetail) continue;
    rows.push_back(row);
    const auto known = details_.find(row.key);
    if (!shown || known == details_.end()) continue;
    for (const std::string& line : known->second) rows.push_back(DetailRow(OneLine(line)));
  }
  ListView1.SetRows(std::move(rows));
  ListView1.FitColumns();
  BuildPopup();
}

// The line that says so takes the place and the number of the last row that went.
void fMessage::CutOldest(const std::string& date) {
  const auto& all = ListView1.Rows();
  std::vector<ui::ListView::Row> kept(all.begin() + kRowsToCut, all.end());
  kept.front().cells = {kept.front().cells.front(), date,
                        surroundings_.translate("Older messages were removed: the log keeps at most 50000."),
                        "", ""};
  kept.front().icon = kExclamation;
  std::vector<std::size_t> selection;
  for (const std::size_t place : ListView1.Selection()) {
    if (place > kRowsToCut) selection.push_back(place - kRowsToCut);
  }
  ListView1.SetRows(std::move(kept));
  ListView1.SetSelection(std::move(selection));
}

// A person who has selected rows is reading them.
void fMessage::Refresh() {
  if (ListView1.Selection().empty()) ListView1.ScrollToEnd();
}

std::string fMessage::LogText() const {
  std::string text;
  for (const auto& row : ListView1.Rows()) {
    text += IconName(row.icon);
    for (const std::string& cell : row.cells) text += "\t" + cell;
    text += "\r\n";
  }
  return text;
}

void fMessage::Save() {
  Trapped([this] {
    const auto file = surroundings_.fileDialog.AskSaveFile({surroundings_.translate(kFilter),
                                                            surroundings_.applicationFolder + kProposedName,
                                                            kHideReadOnlyBox | kFileMustExist});
    const std::string text = LogText();
    if (!file || text.empty()) return;
    std::ofstream(base::PathOf(*file), std::ios::binary) << text;
  });
}

void fMessage::ClearSelected() {
  std::vector<ui::ListView::Row> kept;
  bool gone = false;
  for (std::size_t i = 0; i < ListView1.Rows().size(); ++i) {
    const ui::ListView::Row& row = ListView1.Rows()[i];
    // Details go with their message.
    gone = std::ranges::binary_search(ListView1.Selection(), i) || (gone && row.icon == kDetail);
    if (!gone) kept.push_back(row);
  }
  const bool emptied = kept.empty() && !ListView1.Rows().empty();
  ListView1.SetRows(std::move(kept));
  if (emptied && ClearEvent) ClearEvent();
}

void fMessage::ClearAll() {
  details_.clear();
  ListView1.SetRows({});
  if (ClearEvent) ClearEvent();
}

void fMessage::KeepShowChoice() {
  Trapped([this] {
    base::WriteRegistryString(surroundings_.registry, base::RegistryRoot::kCurrentUser,
                              surroundings_.settingsKey, kShowChoice, Check1.Checked() ? "0" : "1");
  });
}

}  // namespace logger
