// What the tool does with a configuration as a whole: File > Save configuration as, Open configuration,
// Compare with unit, Backups, and the backup before each save. Works for the main window that owns it, on its
// pages and beside them on unseen ones.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/backups.h"
#include "configuration/comparison.h"
#include "configuration/english_names.h"
#include "configuration/fDifferences.h"
#include "configuration/fPick.h"
#include "configuration/fRecord.h"
#include "configuration/fSaveAs.h"
#include "configuration/snapshot.h"
#include "configuration/unit_file.h"
#include "configuration/unseen_pages.h"
#include "shell/main_window.h"
#include "shell/words.h"

namespace configuration {

inline constexpr unsigned kAskBeforeReplacing = 0x2;  // OFN_OVERWRITEPROMPT

class Desk final : public shell::Companion {
 public:
  Desk(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
       shell::Strings& strings, std::span<const shell::PageEntry> table);

  std::vector<ui::MenuItem> FileMenu() override;
  void InitStrings() override;
  bool SaveBegins() override;
  bool MayCommit() override;
  void Hide() override;

  /// What the tool advises on these values, for the record.
  std::function<std::vector<AdviceLine>(const Snapshot&)> onAdvise;

  fDifferences& Differences() { return differences_; }
  fSaveAs& SaveWindow() { return saveAs_; }
  fPick& PickWindow() { return pick_; }
  fRecord& RecordWindow() { return record_; }

  /// The values of the unit in view: those that the device holds, with all their digits, or with the pending
  /// edits. Throws when the device cannot be read.
  Snapshot Take(bool withEdits);
  Document ToFile(const Snapshot& snapshot);

  /// Of the unit in view. Throws automation::Error.
  Head MakeHead();
  /// A file, for a device of the kind in view. Throws as the reader of documents does.
  Document ReadFile(const std::filesystem::path& file);
  /// One entry of the File menu: a command whose faults are told in a box and kept in the log.
  void Do(std::string_view routine, const std::function<void()>& work);
  /// What further pages are made of.
  UnseenPages::Surroundings Surroundings() const {
    return {platform_, settings_, table_, main_.ProgressObject};
  }

 private:
  static constexpr std::string_view kLocation = "Configuration";  // in the log

  void SaveAs();
  /// Names the values that a file cannot give back to the last digit.
  void TellCutOff(const Snapshot& snapshot);
  void OpenFile();
  void CompareUnit();
  void ShowBackups();
  void SaveRecord();
  /// The last one kept of this unit; without entries when there is none, or none that can be read.
  Document FormerRecord(const Head& head);
  void CompareWith(const Document& document, const std::string& title, const std::string& there);

  std::string Text(std::string_view english) const { return strings_.GetStrings(english); }
  std::string Text(std::string_view english, const std::vector<std::string>& arguments) const {
    return strings_.GetStrings(english, arguments);
  }
  std::string Words(const std::exception& error) const { return shell::InWords(strings_, error); }
  /// What the pages in view hold now, or what the device holds; the location first.
  std::vector<Held> Shown(bool withEdits);
  /// The same by unseen pages, in these units.
  std::vector<Held> Unseen(const fields::FieldList& fields);
  std::vector<fDifferences::Refused> TakeOver(const std::vector<Difference>& wanted, bool imperial);
  bool UseUnits(bool imperial);
  const std::string& DeviceName() const { return main_.Opened.deviceName; }
  std::unique_ptr<UnseenPages> NewPages();

  shell::fMain& main_;
  const shell::Platform& platform_;
  const shell::Settings& settings_;
  shell::Strings& strings_;
  std::span<const shell::PageEntry> table_;
  Head identity_;  // what the device says of itself, once it was asked
  std::unique_ptr<EnglishNames> names_;
  fields::Field location_;
  std::string lastFile_;  // saved or opened, to be proposed
  Backups backups_;
  std::string backupFault_;  // of the save under way
  bool toldFault_ = false;
  fSaveAs saveAs_;
  fPick pick_;
  fRecord record_;
  fDifferences differences_;
};

}  // namespace configuration
