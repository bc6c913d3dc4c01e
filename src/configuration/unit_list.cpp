#include "configuration/unit_list.h"

#include <algorithm>

#include "automation/error.h"
#include "base/text.h"
#include "host/contract.h"

namespace configuration {

automation::Object NewServer(const shell::Platform& platform) {
  automation::Object server = platform.createObject(host::kObjectServerId);
  host::RequireYes(server.Call(host::kRefreshCatalog, host::kMakerPrefix));
  return server;
}

std::vector<UnitEntry> ListUnits(const shell::Platform& platform, const host::SessionRequest& request) {
  const host::NetworkSession session(NewServer(platform), request);
  const automation::Object devices = session.Network().Child(host::kAppDevices);
  std::vector<UnitEntry> units;
  for (int i = 1, last = devices.Get(host::kCount).AsWhole(); i <= last; ++i) {
    UnitEntry unit;
    try {
      const automation::Object device = devices.Child(host::kItem, i);
      unit.name = device.Text(host::kName);
      unit.location = device.Text(host::kLocation);
      const automation::Object identity = device.Child(host::kInterface);
      unit.programId = identity.Text(host::kProgramId);
      unit.version = identity.Text(host::kVersion);
    } catch (const automation::Error& error) {
      if (!error.Answered()) throw;
      unit.fault = error.Description();
    }
    units.push_back(std::move(unit));
  }
  return units;
}

void NameInView(std::vector<UnitEntry>& units, const std::string& inView) {
  const auto isIt = [&inView](const UnitEntry& unit) { return base::EqualsNoCase(unit.name, inView); };
  if (std::ranges::any_of(units, isIt)) return;
  const auto nameless = std::ranges::find(units, std::string(), &UnitEntry::name);
  if (nameless != units.end()) nameless->name = inView;
}

std::vector<UnitEntry> OthersOfKind(std::vector<UnitEntry> units, std::string_view programId,
                                    std::string_view inView) {
  std::erase_if(units, [&](const UnitEntry& unit) {
    return !unit.fault.empty() || !base::EqualsNoCase(unit.programId, programId) ||
           base::EqualsNoCase(unit.name, inView);
  });
  return units;
}

}  // namespace configuration
