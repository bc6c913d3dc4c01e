#include "fleet/copier.h"

#include <algorithm>
#include <optional>

#include "base/files.h"
#include "base/text.h"
#include "shell/words.h"

namespace fleet {

using configuration::Difference;
using configuration::Document;
using configuration::OpenUnit;

namespace {

/// The names of inputs and outputs are among their settings.
void ReadSelected(OpenUnit& unit, const configuration::Selection& selection) {
  if (selection.settings || selection.ofOneUnit) unit.ReadSettings();
}

}  // namespace

Copier::Copier(const configuration::UnseenPages::Surroundings& surroundings, shell::Strings& strings,
               const host::SessionRequest& request)
    : quiet_(nullptr, surroundings.platform.loop, strings),
      strings_(strings),
      request_(request),
      desk_({surroundings.platform, surroundings.settings, surroundings.table, quiet_}, strings) {}

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
  std::optional<OpenUnit> unit(std::in_place, desk_.Surroundings(), strings_, RequestOf(line),
                               job.source.head.imperial);
  ReadSelected(*unit, job.selection);
  const std::vector<Difference> differences = unit->Compare(job.source, job.selection);
  line.count = differences.size();
  if (differences.empty()) return {UnitState::kEqual};
  if (std::string why = desk_.Fill(*unit, differences); !why.empty()) return {UnitState::kRefused, why};
  if (!job.write) return {UnitState::kDiffers};
  Enter(line, UnitState::kWriting);
  const auto saved = desk_.SaveAll(*unit, job.source, job.selection, mayCommit);
  if (saved.save.result != host::SaveResult::kUnknown) return Ended(line, *unit, saved);
  line.values = saved.values;
  if (saved.notKept) return {UnitState::kFailed, saved.told};
  unit.reset();
  return LookAgain(line, job, differences, saved.told);
}

Copier::End Copier::Ended(UnitLine& line, OpenUnit& unit, const configuration::UnitDesk::Saved& saved) {
  if (saved.save.result == host::SaveResult::kCancelled)
    return {saved.save.refused ? UnitState::kRefused : UnitState::kFailed, saved.told};
  line.values = saved.values;
  line.count = line.values.size();
  const std::string noRecord = KeepRecord(line, unit, saved.before);
  return {UnitState::kDone, saved.told + (saved.told.empty() || noRecord.empty() ? "" : "\r\n") + noRecord};
}

Copier::End Copier::LookAgain(UnitLine& line, const Job& job, const std::vector<Difference>& differences,
                              const std::string& told) {
  std::vector<Difference> left;
  try {
    OpenUnit unit(desk_.Surroundings(), strings_, RequestOf(line), job.source.head.imperial);
    ReadSelected(unit, job.selection);
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

std::string Copier::KeepRecord(UnitLine& line, OpenUnit& unit, const Document& before) const {
  try {
    const auto file =
        desk_.Kept().Folder(configuration::kRecords, request_.networkName, line.unit.name) / "as-left.html";
    base::ReplaceFile(file, desk_.Record(unit, before, false));
    line.record = file;
    return {};
  } catch (const std::exception& error) {
    return Text("No record could be kept:") + " " + shell::InWords(strings_, error);
  }
}

}  // namespace fleet
