// The files that the desk keeps or hands over beside configurations: backups and records.
#include "configuration/desk.h"

#include <utility>

#include "base/error.h"
#include "base/files.h"
#include "configuration/unit_desk.h"
#include "logger/message_logger.h"

namespace configuration {

Document Desk::FormerRecord(const Head& head) {
  const auto files = backups_.Of(kRecords, head.network, head.device);
  if (files.empty()) return {};
  try {
    return Read(base::ReadFile(files.front(), kLargestFile), head.programId);
  } catch (const std::exception& error) {
    main_.AddMessage(Text("The former record %s1% could not be read; what has changed since is left out.",
                          {base::PathText(files.front())}) +
                         "\r\n" + Words(error),
                     "Record", kLocation, logger::kExclamation);
    return {};
  }
}

// The values of each record are kept beside the backups: the next one tells what has changed since.
void Desk::SaveRecord() {
  if (!record_.Ask()) return;
  Snapshot snapshot = Take(false);
  snapshot.head.note = record_.Request().note;
  const std::vector<PageTitle> titles = TitlesOf(table_, strings_);
  RecordInput input =
      RecordOf(Surroundings(), strings_, snapshot, titles, main_.Opened,
               [this](auto page, auto control) { return main_.Pending().Find(page, control); });
  input.request = record_.Request();
  input.sensors = main_.Selections().SensorTypes();
  if (onAdvise) input.advice = onAdvise(snapshot);
  const auto file = platform_.fileDialog.AskSaveFile(
      {Text("Records (*.html)|*.html"), settings_.documentsFolder + "\\" + SafeName(DeviceName()) + ".html",
       kAskBeforeReplacing});
  if (!file) return;
  const Document earlier = FormerRecord(snapshot.head);
  if (!earlier.entries.empty()) input.earlier = &earlier;
  const std::filesystem::path path = base::PathOf(*file);
  base::ReplaceFile(path, WriteRecord(input));
  if (record_.WithTable())
    base::ReplaceFile(std::filesystem::path(path).replace_extension(".csv"), WriteRecordCsv(input));
  backups_.Keep(kRecords, ToFile(snapshot), std::time(nullptr));
  main_.AddMessage(Text("The record was saved in %s1%", {*file}), "Record", kLocation, logger::kInformation);
}

// A host that does not answer now would not take the save either, and the person may have given it up.
bool Desk::SaveBegins() {
  backupFault_.clear();
  try {
    MakeHead();
    main_.Pending().ReadSettings();
  } catch (const automation::Error& error) {
    backupFault_ = Words(error);
    if (!error.Answered()) main_.AddMessage(backupFault_, "Backup", kLocation, logger::kError);
    return error.Answered();
  } catch (const std::exception& error) {
    backupFault_ = Words(error);
  }
  return true;
}

bool Desk::MayCommit() {
  try {
    const host::Journal& journal = main_.Context().transactions.GetJournal();
    Head head = MakeHead();
    std::vector<Held> values = Shown(false);
    values.front().content = head.location = main_.FormerLocation();
    const Snapshot snapshot = SnapshotOf(std::move(head), values, settings_.numbers, DigitsBefore(journal));
    if (!backupFault_.empty()) throw base::Error(backupFault_);
    backups_.Keep(kBackups, ToFile(snapshot), std::time(nullptr));
    toldFault_ = false;
    return true;
  } catch (const std::exception& error) {
    backupFault_ = Words(error);
  }
  const bool stop = StopsWithoutBackup(platform_.registry, settings_);
  const std::string text =
      Text(stop ? "The values of the pages were not saved, since no backup of the present values "
                  "could be kept:"
                : "No backup of the former values could be kept:") +
      "\r\n" + backupFault_;
  if (stop || !std::exchange(toldFault_, true))
    main_.AddMessage(text, "Backup", kLocation, stop ? logger::kError : logger::kExclamation);
  return !stop;
}

}  // namespace configuration
