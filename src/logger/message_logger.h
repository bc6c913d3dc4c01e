// The message logger: every notice, warning and error of the tool becomes rows of this window instead of
// interrupting the user. The main window owns it, forwards its own messages to it and follows its two events.
// The logger drops its own failures: it is the last place that could report them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/registry.h"
#include "ui/event_loop.h"
#include "ui/file_dialog.h"
#include "ui/form.h"

namespace logger {

/// Message levels, numbered as the platform's message-box icons. Any other number counts as an error.
inline constexpr int kInformation = 64;
inline constexpr int kExclamation = 48;
inline constexpr int kError = 16;

/// What the logger needs of its surroundings; all of it outlives the logger.
struct Surroundings {
  base::Registry& registry;
  base::Locale& locale;
  ui::EventLoop& loop;
  ui::FileDialog& fileDialog;
  ui::Toolkit* toolkit = nullptr;  // none in tests
  std::string settingsKey;         // below the current user; keeps "IsShowLogAutomatically"
  std::string applicationFolder;   // where a log file is proposed
  std::function<std::string(std::string_view)> translate;
};

class fMessage : public ui::Window {
 public:
  explicit fMessage(Surroundings surroundings);
  ~fMessage() override;

  /// Raised after rows were added, with the message's level.
  std::function<void(int)> AddMessageEvent;
  /// Raised after the list was emptied.
  std::function<void()> ClearEvent;

  /// One row for each non-empty line of `message`; a message of blanks and tabs alone adds nothing. Shows the
  /// window unless the user has ticked "Don't show information automatically". Of more than 50,000 rows the
  /// oldest go.
  void AddMessage(std::string_view message, std::string_view routine, std::string_view location, int level);
  /// Details of the row that was added last, a line each: shown below it when the person asks for them.
  void AddDetails(std::vector<std::string> lines);

  void SetFormTitle(std::string_view title);
  void SetFormIcon(std::string_view icon) { iconFile = icon; }
  void ShowMe();
  /// Sets every caption in the language in use.
  void InitStrings();

  /// All rows, one a line: level, number, date, message, routine, location, with a tab between them.
  std::string LogText() const;

 private:
  bool AddRows(std::string_view message, std::string_view routine, std::string_view location, int level);
  /// Lets the oldest rows go, and says so in their place.
  void CutOldest(const std::string& date);
  /// Brings the newest row into view.
  void Refresh();
  void Save();
  void ShowDetails(bool shown);
  void BuildPopup();
  void ClearSelected();
  void ClearAll();
  void KeepShowChoice();

  Surroundings surroundings_;
  std::string formTitle_;
  int lastNumber_ = 0;
  bool detailsShown_ = false;
  std::map<std::string, std::vector<std::string>> details_;  // by the key of their row

  ui::ListView ListView1{*this, "ListView1"};
  ui::CheckBox Check1{*this, "Check1"};
  ui::ControlArray<ui::Button, 4> BtnCmd{*this, "BtnCmd"};
  ui::Timer TimerRefresh;
  ui::Timer TimerWidthColumns;
};

}  // namespace logger
