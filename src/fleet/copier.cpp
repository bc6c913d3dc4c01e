#include "fleet/copier.h"

#include <algorithm>
#include <ctime>
#include <optional>

#include "base/files.h"
#include "base/text.h"
#include "configuration/record.h"
#include "shell/words.h"

namespace fleet {

using configuration::Difference;
using configuration::Document;
using configuration::OpenUnit;

Copier::Copier(const configuration::UnseenPages::Surroundings& surroundings, shell::Strings& strings,
               const host::SessionRequest& request)
    : quiet_(nullptr, surroundings.platform.loop, strings),
      surroundings_{surroundings.platform, surroundings.settings, surroundings.table, quiet_},
      strings_(strings),
      request_(request),
      backups_(surroundings.settings.documentsFolder),
      names_(surroundings_) {}

host::SessionRequest Copier::RequestOf(const UnitLine& line) const {
  host::SessionRequest request = request_;
  request.deviceName = line.unit.name;
  return request;
}

void Copier::Enter(UnitLine& line, UnitState state) const {
  line.state = state;
  if (onState) onState(line);
}

void Copier::Work(UnitLine& line, const Job& job) {
  line = {line.unit};
  End end{UnitState::kFailed};
  try {
    end = Run(line, job);
  } catch (const std::exception& error) {
    end.reason = shell::InWords(strings_, error);
  }
  line.failedIn = line.state;
  line.reason = std::move(end.reason);
  Enter(line, end.state);
}

Copier::End Copier::Run(UnitLine& line, const Job& job) {
  Enter(line, UnitState::kReading);
  std::optional<OpenUnit> unit(std::in_place, surroundings_, strings_, RequestOf(line),
                               job.source.head.imperial);
  if (job.selection.settings) unit->ReadSettings();
  const std::vector<Difference> differences = unit->Compare(job.source, job.selection);
  line.count = differences.size();
  if (differences.empty()) return {UnitState::kEqual};
  if (std::string why = WhyRefused(*unit, differences); !why.empty()) return {UnitState::kRefused, why};
  if (!job.write) return {UnitState::kDiffers};
  Enter(line, UnitState::kWriting);
  End end = Save(line, job, *unit);
  if (end.state != UnitState::kUnknown) return end;
  unit.reset();
  return LookAgain(line, job, differences, end.reason);
}

std::string Copier::WhyRefused(OpenUnit& unit, const std::vector<Difference>& differences) const {
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

Copier::End Copier::Save(UnitLine& line, const Job& job, OpenUnit& unit) {
  Document before;
  std::string noBackup;
  const auto saved = unit.Save([&] {
    noBackup = KeepBackup(unit, before);
    return (noBackup.empty() || !job.onlyWithBackup) && mayCommit();
  });
  std::string told = saved.told;
  const auto tell = [&told](const std::string& more) {
    told += (told.empty() || more.empty() ? "" : "\r\n") + more;
  };
  tell(noBackup);
  if (saved.result == host::SaveResult::kCancelled)
    return {saved.refused ? UnitState::kRefused : UnitState::kFailed, told};
  line.values = unit.LastWritten();
  if (saved.result == host::SaveResult::kUnknown) return {UnitState::kUnknown, told};
  line.count = line.values.size();
  tell(KeepRecord(line, job, unit, before));
  return {UnitState::kDone, told};
}

Copier::End Copier::LookAgain(UnitLine& line, const Job& job, const std::vector<Difference>& differences,
                              const std::string& told) {
  std::vector<Difference> left;
  try {
    OpenUnit unit(surroundings_, strings_, RequestOf(line), job.source.head.imperial);
    if (job.selection.settings) unit.ReadSettings();
    left = unit.Compare(job.source, job.selection);
  } catch (const std::exception& error) {
    return {UnitState::kUnknown, told + "\r\n" + shell::InWords(strings_, error)};
  }
  const std::string readBack = Text("The host did not confirm the save; the device was read back.");
  if (left.empty()) {
    line.count = line.values.size();
    return {UnitState::kDone, readBack};
  }
  line.values.clear();
  const auto same = [](const Difference& a, const Difference& b) {
    return a.page == b.page && a.control == b.control && a.here == b.here;
  };
  if (std::ranges::equal(left, differences, same)) return {UnitState::kFailed, readBack};
  std::vector<std::string> names;
  for (const Difference& one : left) names.push_back(one.name + ": " + one.here);
  return {UnitState::kUnknown, told + "\r\n" + base::Join(names, "\r\n")};
}

std::string Copier::KeepBackup(OpenUnit& unit, Document& before) {
  try {
    before = names_.ToDocument(unit.BeforeSave());
    backups_.Keep(configuration::kBackups, before, std::time(nullptr));
    return {};
  } catch (const std::exception& error) {
    return Text("No backup of the former values could be kept:") + " " + shell::InWords(strings_, error);
  }
}

std::string Copier::KeepRecord(UnitLine& line, const Job& job, OpenUnit& unit, const Document& before) {
  if (job.pages.empty()) return {};
  try {
    const configuration::Snapshot snapshot = unit.Take();
    configuration::RecordInput input{.snapshot = snapshot,
                                     .pages = job.pages,
                                     .strings = strings_,
                                     .numbers = surroundings_.settings.numbers,
                                     .request = {},
                                     .time = surroundings_.platform.locale.GeneralDateNow(),
                                     .verified = true};
    input.request.installer = surroundings_.settings.userName;
    input.sensors = unit.SensorTypes();
    for (int i = 0; i < host::DeviceObjects::kOutputs; ++i) {
      const auto* signal =
          snapshot.Find("fControlOutput", "UCPThardwareSignalType(" + std::to_string(i) + ")");
      input.signals.push_back(signal ? signal->content : std::string());
    }
    if (!before.entries.empty()) input.earlier = &before;
    input.shown = [&unit](auto page, auto control, auto content) {
      const fields::Field* field = unit.Find(page, control);
      return field ? field->shown(content) : std::string(content);
    };
    const auto file =
        backups_.Folder(configuration::kRecords, request_.networkName, line.unit.name) / kRecordName;
    base::ReplaceFile(file, configuration::WriteRecord(input));
    line.record = file;
    return {};
  } catch (const std::exception& error) {
    return Text("No record could be kept:") + " " + shell::InWords(strings_, error);
  }
}

}  // namespace fleet
