#include "simulator/core.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "simulator/files.h"
#include "simulator/units.h"
#include "simulator/value_text.h"

namespace simulator {
namespace {

using Json = nlohmann::ordered_json;

constexpr char kFont[] = "Tahoma";

bool Fits(const Field& field, const FieldValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  if (field.kind == Kind::kText || text) return field.kind == Kind::kText && text;
  const double number = std::get<double>(value);
  if (field.kind != Kind::kEnumeration) return number >= field.lowest && number <= field.highest;
  return std::ranges::any_of(*field.names, [number](const auto& name) { return name.second == number; });
}

bool Fits(const Type& type, const Fields& value) {
  return std::ranges::equal(type.fields, value,
                            [](const Field& field, const FieldValue& item) { return Fits(field, item); });
}

/// Puts a value of building.json, given as a text in SI units, under its key.
void PutInitial(const Core& core, const std::string& key, const std::string& text, DeviceValues& values) {
  const auto place = SplitKey(key);
  if (!place) {
    const VariableTemplate* variable = core.deviceTemplate.FindVariable(key);
    if (!variable) throw base::Error("there is no variable \"" + key + "\"");
    return SetVariableType(core.catalogue, *variable, text, values);
  }
  const PropertyTemplate* property = core.deviceTemplate.FindProperty(place->first, place->second);
  if (!property) throw base::Error("there is no property \"" + key + "\"");
  values.values[property->key] =
      ParseValue({{property->type, false}, -1, base::Numbers()}, property->name, text, property->initial);
}

}  // namespace

Core::Core(const BuildingOptions& options)
    : numbers(options.numbers),
      catalogue(options.dataFolder / "types.json"),
      templateJson(ReadWholeFile(options.dataFolder / "device.json")),
      deviceTemplate(ReadTemplate(templateJson, catalogue)),
      store(options.storeFile),
      limits(options.limits),
      serverVersion(options.serverVersion) {
  ReadBuilding(options.dataFolder / "building.json");
  ListAddedUnits(*this);
  ListLanguages(options.dataFolder / "languages");
  for (const DeviceRecord& device : devices) {
    try {
      CheckStored(store.Device(device.key), deviceTemplate);
    } catch (const base::Error& error) {
      throw base::Error("The store " + PathText(options.storeFile) + ", device " + device.key + ": " +
                        error.what());
    }
  }
}

void Core::ReadBuilding(const std::filesystem::path& file) {
  const std::string content = ReadWholeFile(file);
  std::string place = "JSON";
  try {
    const Json json = Json::parse(content);
    makerPrefix = json.at("makerPrefix").get<std::string>();
    networkName = json.at("network").at("name").get<std::string>();
    ipAddress = json.at("network").at("ipAddress").get<std::string>();
    port = json.at("network").at("port").get<std::int32_t>();
    for (const Json& device : json.at("devices")) {
      DeviceRecord record;
      record.key = device.at("key").get<std::string>();
      place = "device \"" + record.key + "\"";
      if (store.Committed().removed.contains(record.key)) continue;
      record.location = device.at("location").get<std::string>();
      record.programId = device.value("programId", deviceTemplate.programId);
      record.version = device.value("version", deviceTemplate.version);
      DeviceValues values{device.at("name").get<std::string>(), {}};
      for (const auto& [key, text] : device.at("values").items()) {
        PutInitial(*this, key, text.get<std::string>(), values);
      }
      store.AddDevice(record.key, std::move(values));
      devices.push_back(std::move(record));
    }
  } catch (const std::exception& error) {
    throw base::Error(PathText(file) + ", " + place + ": " + error.what());
  }
}

// English needs no texts: it is what the plug-ins ask with.
void Core::ListLanguages(const std::filesystem::path& folder) {
  languages["English"];
  if (!std::filesystem::exists(folder)) return;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() == ".json") languages[PathText(file.path().stem())] = file.path();
  }
}

const LanguageTexts& Core::TextsOf(const std::string& language) {
  if (const auto known = texts_.find(language); known != texts_.end()) return known->second;
  const std::filesystem::path& file = languages.at(language);
  LanguageTexts read;
  read.font = kFont;
  try {
    const Json json = file.empty() ? Json{{"sections", Json::object()}} : Json::parse(ReadWholeFile(file));
    read.font = json.value("font", kFont);
    for (const auto& [section, texts] : json.at("sections").items()) {
      auto& entries = read.sections[section];
      for (const auto& [english, text] : texts.items()) {
        entries.emplace_back(base::Upper(base::Trim(english)), text.get<std::string>());
      }
    }
  } catch (const std::exception& error) {
    throw base::Error(PathText(file) + ": " + error.what());
  }
  return texts_[language] = std::move(read);
}

const DeviceRecord& Core::Record(std::string_view deviceKey) const {
  const auto found = std::ranges::find(devices, deviceKey, &DeviceRecord::key);
  if (found == devices.end()) throw base::Error("There is no device \"" + std::string(deviceKey) + "\".");
  return *found;
}

const Fields& Core::ValueOf(std::string_view deviceKey, const std::string& key, const Fields& initial) const {
  const auto& values = store.Device(deviceKey).values;
  const auto found = values.find(key);
  return found == values.end() ? initial : found->second;
}

void Core::CheckStored(const DeviceValues& stored, const DeviceTemplate& device) const {
  for (const auto& [key, value] : stored.values) {
    const auto place = SplitKey(key);
    bool fits = true;
    // A value that this template does not know is kept for the one that does.
    if (!place) {
      const VariableTemplate* variable = device.FindVariable(key);
      fits = !variable || (value.size() == 1 && std::holds_alternative<std::string>(value.front()) &&
                           catalogue.Find(BareType(std::get<std::string>(value.front()))));
    } else if (const PropertyTemplate* property = device.FindProperty(place->first, place->second)) {
      fits = Fits(*property->type, value);
    }
    if (!fits) throw base::Error("The stored value of " + key + " does not fit its type.");
  }
}

std::string_view BareType(std::string_view type) {
  const std::size_t point = type.rfind('.');
  return point == std::string_view::npos ? type : type.substr(point + 1);
}

void SetVariableType(const TypeCatalogue& catalogue, const VariableTemplate& variable,
                     const std::string& type, DeviceValues& values) {
  const Type* found = catalogue.Find(BareType(type));
  if (!found) throw base::Error("The type \"" + type + "\" is not known.");
  values.values[variable.key] = Fields{type};
  for (const PropertyTemplate& property : variable.properties) {
    if (!CarriesNvType(property)) continue;
    Fields& fields = values.values.try_emplace(property.key, property.initial).first->second;
    fields.at(kNvTypeIndexField) = static_cast<double>(found->index);
  }
}

}  // namespace simulator
