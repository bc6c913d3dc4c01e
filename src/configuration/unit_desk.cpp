#include "configuration/unit_desk.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include "base/text.h"
#include "configuration/unit_file.h"
#include "shell/words.h"

namespace configuration {
namespace {

constexpr const char* kStopChoice = "StopWithoutBackup";

/// A further line.
void Add(std::string& told, const std::string& more) {
  told += (told.empty() || more.empty() ? "" : "\r\n") + more;
}

}  // namespace

UnitDesk::UnitDesk(const UnseenPages::Surroundings& surroundings, const shell::Strings& strings)
    : surroundings_(surroundings),
      strings_(strings),
      backups_(surroundings.settings.documentsFolder),
      names_(surroundings) {}

std::string UnitDesk::Fill(OpenUnit& unit, const std::vector<Difference>& differences) const {
  std::vector<std::string> reasons;
  std::vector<fields::Wanted> wanted;
  for (const Difference& one : differences) {
    if (one.kind == Difference::Kind::kCannotBeWritten) {
      reasons.push_back(one.name + " = " + one.there + ": " + Text("this field cannot hold the value"));
    } else if (one.kind == Difference::Kind::kOnlyThere) {
      reasons.push_back(one.name + ": " + Text("not here"));
    } else {
      wanted.push_back({one.page, one.control, one.content});
    }
  }
  if (!reasons.empty()) return base::Join(reasons, "\r\n");
  for (const fields::Wanted& left : unit.Fill(std::move(wanted))) {
    const fields::Field* field = unit.Find(left.page, left.field);
    reasons.push_back((field ? PathOf(field->caption()) : left.field) + ": " +
                      (left.reason.empty() ? Text("no page shows this field now") : left.reason));
  }
  return base::Join(reasons, "\r\n");
}

UnitDesk::Saved UnitDesk::Save(OpenUnit& unit, const std::function<bool()>& mayCommit) {
  Saved saved;
  std::string noBackup;
  saved.save = unit.Save([&] {
    try {
      saved.before = names_.ToDocument(unit.BeforeSave());
      backups_.Keep(kBackups, saved.before, std::time(nullptr));
    } catch (const std::exception& error) {
      saved.before.entries.clear();
      noBackup =
          Text("No backup of the former values could be kept:") + " " + shell::InWords(strings_, error);
    }
    const bool stop =
        !noBackup.empty() && StopsWithoutBackup(surroundings_.platform.registry, surroundings_.settings);
    return !stop && mayCommit();
  });
  saved.told = saved.save.told;
  Add(saved.told, noBackup);
  saved.values = unit.LastWritten();
  return saved;
}

UnitDesk::Saved UnitDesk::SaveAll(OpenUnit& unit, const Document& document, const Selection& selection,
                                  const std::function<bool()>& mayCommit) {
  Saved saved = Save(unit, mayCommit);
  if (saved.save.result != host::SaveResult::kCommitted) return saved;
  std::vector<Difference> left = unit.Compare(document, selection);
  if (left.empty()) return saved;
  if (Fill(unit, left).empty()) {
    const Saved again = Save(unit, mayCommit);
    saved.values.insert(saved.values.end(), again.values.begin(), again.values.end());
    if (again.told != saved.told) Add(saved.told, again.told);
    if (again.save.result == host::SaveResult::kCommitted) left = unit.Compare(document, selection);
    if (again.save.result != host::SaveResult::kCancelled) saved.save = again.save;
  }
  if (left.empty()) return saved;
  saved.notKept = saved.save.result == host::SaveResult::kCommitted && !saved.save.unread;
  saved.save.result = host::SaveResult::kUnknown;
  const auto isLeft = [&left](const WrittenValue& value) {
    const auto same = [&](const Difference& one) { return one.page == value.page && one.name == value.name; };
    return std::ranges::any_of(left, same);
  };
  if (saved.notKept) std::erase_if(saved.values, isLeft);
  for (const Difference& one : left) Add(saved.told, one.name + ": " + one.here);
  return saved;
}

std::string UnitDesk::Record(OpenUnit& unit, const Document& earlier, bool table) const {
  const Snapshot snapshot = unit.Take();
  const std::vector<PageTitle> titles = TitlesOf(surroundings_.table, strings_);
  RecordInput input = RecordOf(surroundings_, strings_, snapshot, titles, unit.Request(),
                               [&unit](auto page, auto control) { return unit.Find(page, control); });
  input.request.installer = surroundings_.settings.userName;
  input.sensors = unit.SensorTypes();
  if (!earlier.entries.empty()) input.earlier = &earlier;
  return table ? WriteRecordCsv(input) : WriteRecord(input);
}

std::vector<PageTitle> TitlesOf(std::span<const shell::PageEntry> table, const shell::Strings& strings) {
  std::vector<PageTitle> titles = {{kMainWindow, strings.GetStrings("Main window")}};
  for (const shell::PageEntry& entry : table)
    titles.push_back({std::string(entry.pageClass), PageName(entry, strings)});
  return titles;
}

RecordInput RecordOf(const UnseenPages::Surroundings& surroundings, const shell::Strings& strings,
                     const Snapshot& snapshot, const std::vector<PageTitle>& titles,
                     const host::SessionRequest& unit, fields::FindField find) {
  RecordInput input{.snapshot = snapshot,
                    .pages = titles,
                    .strings = strings,
                    .numbers = surroundings.settings.numbers,
                    .request = {},
                    .time = surroundings.platform.locale.GeneralDateNow(),
                    .verified = true};
  input.signals = SignalTypes(snapshot);
  input.shown = [find = std::move(find)](auto page, auto control, auto content) {
    const fields::Field* field = find(page, control);
    return field ? field->shown(content) : std::string(content);
  };
  input.checks = UnitFile(surroundings.settings, unit, kNotes).Read()[kCheckOut];
  return input;
}

bool StopsWithoutBackup(base::Registry& registry, const shell::Settings& settings) {
  return ReadChoice(registry, settings, kStopChoice) == "1";
}

void StopWithoutBackup(base::Registry& registry, const shell::Settings& settings, bool stop) {
  KeepChoice(registry, settings, kStopChoice, stop ? "1" : "0");
}

}  // namespace configuration
