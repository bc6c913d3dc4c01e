#include "simulator/building.h"

#include <fmt/format.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <map>
#include <span>
#include <variant>

#include "base/text.h"
#include "simulator/core.h"
#include "simulator/device.h"
#include "simulator/language.h"
#include "simulator/object_server.h"
#include "simulator/registration.h"
#include "simulator/units.h"
#include "simulator/value_text.h"

namespace simulator {

Building::Building(const BuildingOptions& options) : core_(std::make_shared<Core>(options)) {}

automation::Object Building::ObjectServer() const {
  return automation::Object(std::make_shared<simulator::ObjectServer>(core_));
}

automation::Object Building::Registration() const {
  return automation::Object(std::make_shared<simulator::Registration>(core_));
}

automation::Object Building::Language() const {
  return automation::Object(std::make_shared<simulator::Language>(core_));
}

simulator::Faults& Building::Faults() { return core_->faults; }
SessionLimits& Building::Limits() { return core_->limits; }
std::string Building::ServerVersion() const { return core_->serverVersion; }
std::string Building::NetworkName() const { return core_->networkName; }
std::string Building::IpAddress() const { return core_->ipAddress; }
std::int32_t Building::Port() const { return core_->port; }
std::vector<RegisteredPlugIn> Building::PlugIns() const { return core_->store.Committed().plugIns; }
const std::vector<std::string>& Building::Log() const { return core_->log; }
automation::Bytes Building::TemplateBytes() const { return PackTemplate(core_->templateJson); }

std::vector<DeviceInfo> Building::Devices() const {
  std::vector<DeviceInfo> devices;
  for (const DeviceRecord& record : core_->devices) {
    devices.push_back({core_->store.Committed().devices.at(record.key).name, record.location,
                       record.programId, record.version, TemplateFileName(record.programId, record.version)});
  }
  return devices;
}

void Building::AddUnit(std::string_view name, std::string_view location) {
  simulator::AddUnit(*core_, name, location);
}

void Building::RemoveUnit(std::string_view name) { simulator::RemoveUnit(*core_, name); }

std::string Building::StoredDevice(std::string_view deviceName) const {
  std::map<std::string_view, std::span<const FieldValue>> values;
  const auto add = [&values](const std::vector<PropertyTemplate>& properties) {
    for (const PropertyTemplate& property : properties) values[property.key] = property.initial;
  };
  std::deque<FieldValue> types;
  for (const ObjectTemplate& object : core_->deviceTemplate.objects) {
    add(object.properties);
    for (const VariableTemplate& variable : object.variables) {
      values[variable.key] = {&types.emplace_back(variable.type), 1};
      add(variable.properties);
    }
  }
  for (const auto& [key, fields] : Committed(deviceName).values) values[key] = fields;
  std::string text;
  for (const auto& [key, fields] : values) {
    text.append(key).append("=");
    for (const FieldValue& field : fields)
      std::visit([&text](const auto& value) { fmt::format_to(std::back_inserter(text), "{} ", value); },
                 field);
    text += "\n";
  }
  return text;
}

std::string Building::StoredText(std::string_view deviceName, std::string_view objectName, int propertyNumber,
                                 std::string_view formatName, int precision) const {
  const PropertyTemplate* property = core_->deviceTemplate.FindProperty(objectName, propertyNumber);
  if (!property) {
    Refuse("There is no property " + std::to_string(propertyNumber) + " of \"" + std::string(objectName) +
           "\".");
  }
  const Format format = core_->catalogue.FindFormat(formatName);
  if (format.type != property->type) Refuse(property->name + " is of type " + property->type->name + ".");
  const DeviceValues& device = Committed(deviceName);
  const auto found = device.values.find(property->key);
  const Fields& value = found == device.values.end() ? property->initial : found->second;
  return FormatValue({format, precision, core_->numbers}, value);
}

std::string Building::StateOfObject(std::string_view deviceName, std::string_view objectName) const {
  const auto& known = core_->deviceTemplate.objects;
  if (std::ranges::find(known, objectName, &ObjectTemplate::name) == known.end())
    Refuse("There is no object \"" + std::string(objectName) + "\".");
  const auto& objects = Committed(deviceName).objects;
  const auto found = objects.find(objectName);
  if (found == objects.end()) return kEnabled;
  const std::string state = found->second.enabled ? kEnabled : kDisabled;
  return found->second.test.empty() ? state : state + " " + found->second.test;
}

const DeviceValues& Building::Committed(std::string_view deviceName) const {
  for (const auto& [key, device] : core_->store.Committed().devices) {
    if (base::EqualsNoCase(device.name, deviceName)) return device;
  }
  Refuse("There is no device \"" + std::string(deviceName) + "\".");
}

}  // namespace simulator
