#include "simulator/units.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "simulator/value_text.h"

namespace simulator {
namespace {

constexpr std::size_t kLongestName = 50;  // characters; lists and window titles still show it whole
constexpr char kLocationType[] = "SCPTlocation";

void CheckText(const std::string& what, const std::string& text, std::size_t longest) {
  const std::size_t length = Characters(text);
  if (length > longest) {
    throw base::Error("The " + what + " has " + std::to_string(length) + " characters; at most " +
                      std::to_string(longest) + " are allowed.");
  }
  const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
  bool storable = std::ranges::none_of(text, isControl);
  try {
    static_cast<void>(nlohmann::json(text).dump());
  } catch (const nlohmann::json::exception&) {
    storable = false;  // no UTF-8
  }
  if (!storable) throw base::Error("The " + what + " holds a character that cannot be stored.");
}

const DeviceRecord& RecordOf(const Core& core, std::string_view name) {
  const auto found = std::ranges::find_if(core.devices, [&](const DeviceRecord& record) {
    return base::EqualsNoCase(core.store.Device(record.key).name, name);
  });
  if (found == core.devices.end())
    throw base::Error("There is no unit \"" + std::string(name) + "\" in the building.");
  return *found;
}

std::string NewKey(int number) {
  const std::string digits = std::to_string(number);
  return "unit" + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;  // keys are sorted
}

}  // namespace

void CheckUnitName(Core& core, const std::string& name, std::string_view ownKey) {
  if (base::Trim(name).empty()) throw base::Error("A unit needs a name.");
  CheckText("name", name, kLongestName);
  core.store.Refresh();
  ListAddedUnits(core);
  for (const DeviceRecord& record : core.devices) {
    const std::string& other = core.store.Device(record.key).name;
    if (record.key != ownKey && base::EqualsNoCase(other, name))
      throw base::Error("Another unit is called \"" + other + "\" already.");
  }
}

void AddUnit(Core& core, std::string_view name, std::string_view location) {
  DeviceValues unit{std::string(base::Trim(name)), {}, {}, std::string(base::Trim(location))};
  CheckUnitName(core, unit.name, {});
  const Type* type = core.catalogue.Find(kLocationType);
  CheckText("location", *unit.location, type ? static_cast<std::size_t>(type->fields.front().highest) : 0);
  core.store.ChangeContent(
      [&](StoreContent& content) { content.devices[NewKey(++content.unitsMade)] = std::move(unit); });
  ListAddedUnits(core);
}

void RemoveUnit(Core& core, std::string_view name) {
  const DeviceRecord record = RecordOf(core, name);
  for (const Session* session : core.sessions) {
    if (!session->devices.contains(record.key)) continue;
    throw base::Error("The unit \"" + core.store.Device(record.key).name +
                      "\" is open in a session; close it there first.");
  }
  core.store.ChangeContent([&](StoreContent& content) {
    content.removed.insert(record.key);
    content.devices.erase(record.key);
  });
  std::erase_if(core.devices, [&](const DeviceRecord& other) { return other.key == record.key; });
}

void ListAddedUnits(Core& core) {
  for (const auto& [key, unit] : core.store.Committed().devices) {
    if (!unit.location || std::ranges::find(core.devices, key, &DeviceRecord::key) != core.devices.end())
      continue;
    core.devices.push_back({key, *unit.location, core.deviceTemplate.programId, core.deviceTemplate.version});
  }
}

}  // namespace simulator
