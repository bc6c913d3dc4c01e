#include "simulator/store.h"

#include <nlohmann/json.hpp>

#include "base/error.h"
#include "simulator/files.h"

namespace simulator {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kFormat = 1;

Json ToJson(const Fields& fields) {
  Json json = Json::array();
  for (const FieldValue& field : fields) {
    std::visit([&json](const auto& content) { json.push_back(content); }, field);
  }
  return json;
}

Fields ToFields(const Json& json) {
  Fields fields;
  for (const Json& field : json) {
    fields.push_back(field.is_string() ? FieldValue(field.get<std::string>()) : field.get<double>());
  }
  return fields;
}

Json ToJson(const StoreContent& content) {
  Json json = {{"format", kFormat}, {"devices", Json::object()}, {"plugIns", Json::array()}};
  for (const auto& [key, device] : content.devices) {
    if (content.removed.contains(key)) continue;
    Json& entry = json["devices"][key] = {{"name", device.name}, {"values", Json::object()}};
    for (const auto& [place, fields] : device.values) entry["values"][place] = ToJson(fields);
    for (const auto& [object, state] : device.objects)
      entry["objects"][object] = {{"enabled", state.enabled}, {"test", state.test}};
    if (device.location) entry["location"] = *device.location;
  }
  json["removed"] = content.removed;
  json["unitsMade"] = content.unitsMade;
  for (const RegisteredPlugIn& plugIn : content.plugIns) {
    Json records = Json::object();
    for (const auto& [name, record] : plugIn.records) {
      Json& values = records[name] = Json::object();
      for (const auto& [member, value] : record) values[member] = value;
    }
    json["plugIns"].push_back({{"id", plugIn.id}, {"records", records}});
  }
  json["language"] = {{"current", content.language}, {"changed", content.languageChanged}};
  return json;
}

StoreContent ToContent(const Json& json) {
  if (json.at("format").get<int>() != kFormat) throw base::Error("its format is not known");
  StoreContent content;
  for (const auto& [key, entry] : json.at("devices").items()) {
    DeviceValues& device = content.devices[key];
    device.name = entry.at("name").get<std::string>();
    for (const auto& [place, fields] : entry.at("values").items()) device.values[place] = ToFields(fields);
    if (entry.contains("location")) device.location = entry.at("location").get<std::string>();
    if (!entry.contains("objects")) continue;
    for (const auto& [object, state] : entry.at("objects").items())
      device.objects[object] = {state.at("enabled").get<bool>(), state.at("test").get<std::string>()};
  }
  content.removed = json.value("removed", content.removed);
  content.unitsMade = json.value("unitsMade", 0);
  for (const Json& entry : json.at("plugIns")) {
    RegisteredPlugIn& plugIn = content.plugIns.emplace_back();
    plugIn.id = entry.at("id").get<std::string>();
    for (const auto& [name, values] : entry.at("records").items()) {
      RegistrationRecord& record = plugIn.records.emplace_back(name, RegistrationRecord()).second;
      for (const auto& [member, value] : values.items())
        record.emplace_back(member, value.get<std::string>());
    }
  }
  content.language = json.at("language").at("current").get<std::string>();
  content.languageChanged = json.at("language").at("changed").get<double>();
  return content;
}

/// The device to be changed. Throws base::Error when another process has removed it.
DeviceValues& Present(StoreContent& content, const std::string& key) {
  DeviceValues& device = content.devices.at(key);
  if (content.removed.contains(key))
    throw base::Error("The unit \"" + device.name + "\" has been removed from the building.");
  return device;
}

}  // namespace

Store::Store(std::filesystem::path file) : file_(std::move(file)) { Refresh(); }

void Store::Refresh() {
  if (file_.empty() || !std::filesystem::exists(file_)) return;
  std::string text = ReadWholeFile(file_);
  if (text == fileText_) return;
  StoreContent read;
  try {
    read = ToContent(Json::parse(text));
  } catch (const std::exception& error) {
    throw base::Error("The store " + PathText(file_) + " is unreadable: " + error.what());
  }
  for (const auto& [key, device] : content_.devices) read.devices.emplace(key, device);
  content_ = std::move(read);
  fileText_ = std::move(text);
}

const DeviceValues& Store::Device(std::string_view device) const {
  const auto working = working_.find(device);
  if (working != working_.end()) return working->second;
  const auto committed = content_.devices.find(device);
  if (committed != content_.devices.end()) return committed->second;
  throw base::Error("The store has no device \"" + std::string(device) + "\".");
}

void Store::AddDevice(const std::string& device, DeviceValues values) {
  content_.devices.emplace(device, std::move(values));
}

void Store::Change(const std::string& device, const std::function<void(DeviceValues&)>& change) {
  const auto working = working_.find(device);
  if (working != working_.end()) return change(working->second);
  ChangeContent([&](StoreContent& content) { change(Present(content, device)); });
}

void Store::ChangeContent(const std::function<void(StoreContent&)>& change) {
  Refresh();
  StoreContent next = content_;
  change(next);
  if (!file_.empty()) {
    std::string text;
    try {
      text = ToJson(next).dump(1, '\t');
    } catch (const Json::exception& error) {
      throw base::Error("The store " + PathText(file_) + " cannot be written: " + error.what());
    }
    std::error_code ignored;  // without the folder the file fails
    std::filesystem::create_directories(file_.parent_path(), ignored);
    ReplaceFile(file_, text);
    fileText_ = std::move(text);
  }
  content_ = std::move(next);
}

void Store::Begin(const std::string& device) {
  if (InTransaction(device)) throw base::Error("A transaction is open already.");
  Refresh();
  working_.emplace(device, Device(device));
}

void Store::Commit(const std::string& device) {
  DeviceValues working = TakeWorking(device);
  if (working == Device(device)) return;
  ChangeContent([&](StoreContent& content) { Present(content, device) = std::move(working); });
}

DeviceValues Store::TakeWorking(const std::string& device) {
  auto node = working_.extract(device);
  if (!node) throw base::Error("No transaction is open.");
  return std::move(node.mapped());
}

}  // namespace simulator
