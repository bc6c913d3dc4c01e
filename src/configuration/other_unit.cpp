#include "configuration/other_unit.h"

#include "base/text.h"
#include "host/contract.h"

namespace configuration {
namespace {

automation::Object NewServer(const shell::Platform& platform) {
  automation::Object server = platform.createObject(host::kObjectServerId);
  host::RequireYes(server.Call(host::kRefreshCatalog, host::kMakerPrefix));
  return server;
}

}  // namespace

std::vector<UnitEntry> ListUnits(const automation::Object& network, std::string_view programId,
                                 std::string_view inView) {
  std::vector<UnitEntry> units;
  const automation::Object devices = network.Child(host::kAppDevices);
  for (int i = 1, last = devices.Get(host::kCount).AsWhole(); i <= last; ++i) {
    const automation::Object device = devices.Child(host::kItem, i);
    UnitEntry unit{device.Text(host::kName), {}, device.Child(host::kInterface).Text(host::kProgramId)};
    if (!base::EqualsNoCase(unit.programId, programId) || base::EqualsNoCase(unit.name, inView)) continue;
    unit.location = device.Text(host::kLocation);
    units.push_back(std::move(unit));
  }
  return units;
}

OtherUnit::OtherUnit(const shell::Platform& platform, const host::SessionRequest& request,
                     const base::Numbers& numbers)
    : journal_(numbers), session_(NewServer(platform), request) {
  host::LoadDeviceObjects(session_.Server(), device_, journal_);
  host::CheckIfOccupency(device_);
}

std::string OtherUnit::ReadLocation() {
  host::Property& property = device_.NodeProperties[host::kLocationProperty];
  property.Bind(host::kLocationFormat);
  return property.Read();
}

}  // namespace configuration
