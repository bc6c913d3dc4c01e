#include "simulator/template.h"

#include <array>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "base/error.h"
#include "base/text.h"
#include "simulator/value_text.h"

namespace simulator {
namespace {

using Json = nlohmann::json;

constexpr std::string_view kMark = "KVTN";
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kHeaderSize = 14;
constexpr int kMostRepeats = 64;

std::uint32_t Crc32(std::string_view data) {
  static constexpr auto kTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
      std::uint32_t value = i;
      for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) ? 0xEDB88320U : 0U);
      table[i] = value;
    }
    return table;
  }();
  std::uint32_t crc = 0xFFFFFFFFU;
  for (const char letter : data) crc = kTable[(crc ^ static_cast<std::uint8_t>(letter)) & 0xFF] ^ (crc >> 8);
  return ~crc;
}

void PutLittle(automation::Bytes& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

std::uint32_t GetLittle(const automation::Bytes& bytes, std::size_t offset, int size) {
  std::uint32_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = value << 8 | bytes[offset + static_cast<std::size_t>(i)];
  return value;
}

/// For a template that may be changed and for one that may not.
template <class Template>
auto PropertyIn(Template& device, std::string_view owner, int number) {
  decltype(&device.objects.front().properties) properties = nullptr;
  for (auto& object : device.objects) {
    if (object.name == owner) properties = &object.properties;
    for (auto& variable : object.variables) {
      if (variable.key == owner) properties = &variable.properties;
    }
  }
  const bool inside = properties && number >= 1 && number <= static_cast<int>(properties->size());
  return inside ? &(*properties)[static_cast<std::size_t>(number) - 1] : nullptr;
}

/// Builds the template object by object; `place_` says in errors how far it came.
class Reader {
 public:
  explicit Reader(const TypeCatalogue& catalogue) : catalogue_(catalogue) {}

  DeviceTemplate Read(std::string_view text) {
    try {
      const Json json = Json::parse(text);
      result_.programId = json.at("programId").get<std::string>();
      result_.version = json.at("version").get<std::string>();
      for (const Json& object : json.at("objects")) {
        const int count = CountOf(object, 1);
        for (int number = 1; number <= count; ++number) ReadObject(object, number);
      }
      if (result_.objects.empty()) throw base::Error("there are no objects");
      place_ = "aliases";
      for (const Alias& alias : aliases_) ResolveAlias(alias);
    } catch (const std::exception& error) {
      throw base::Error("The device template is unreadable (" + place_ + "): " + error.what());
    }
    return std::move(result_);
  }

 private:
  struct Alias {
    std::string key;
    std::string target;
  };

  static int CountOf(const Json& json, int otherwise) {
    const int count = json.value("count", otherwise);
    if (count < 0 || count > kMostRepeats) {
      throw base::Error("a count must be 0 to " + std::to_string(kMostRepeats));
    }
    return count;
  }

  static std::string Numbered(const Json& json, int number) {
    return base::ReplaceAll(json.get<std::string>(), "#", std::to_string(number));
  }

  void ReadObject(const Json& json, int number) {
    ObjectTemplate object;
    object.name = Numbered(json.at("name"), number);
    place_ = object.name;
    object.properties = ReadProperties(json, object.name, number);
    if (json.contains("variables")) {
      for (const Json& variable : json.at("variables")) {
        const int count = CountOf(variable, 0);
        for (int i = 1; i <= count; ++i) object.variables.push_back(ReadVariable(variable, object, i));
        if (count == 0) object.variables.push_back(ReadVariable(variable, object, number));
      }
    }
    CheckNames(result_.objects, object.name);
    result_.objects.push_back(std::move(object));
  }

  template <class Named>
  static void CheckNames(const std::vector<Named>& present, const std::string& name) {
    for (const Named& item : present) {
      if (base::EqualsNoCase(item.name, name)) throw base::Error("\"" + name + "\" is there twice");
    }
  }

  VariableTemplate ReadVariable(const Json& json, const ObjectTemplate& object, int number) {
    VariableTemplate variable;
    variable.name = Numbered(json.at("name"), number);
    variable.key = object.name + "/" + variable.name;
    place_ = variable.key;
    CheckNames(object.variables, variable.name);
    variable.type = json.at("type").get<std::string>();
    variable.allowedTypes = json.value("allowedTypes", std::vector<std::string>{variable.type});
    for (const std::string& type : variable.allowedTypes) TypeOf(type);
    variable.properties = ReadProperties(json, variable.key, number);
    const double index = TypeOf(variable.type)->index;
    for (const PropertyTemplate& property : variable.properties) {
      if (CarriesNvType(property) && std::get<double>(property.initial[kNvTypeIndexField]) != index) {
        throw base::Error("SCPTnvType does not carry the index of " + variable.type);
      }
    }
    return variable;
  }

  std::vector<PropertyTemplate> ReadProperties(const Json& owner, const std::string& ownerKey, int number) {
    std::vector<PropertyTemplate> properties;
    if (!owner.contains("properties")) return properties;
    for (const Json& json : owner.at("properties")) {
      const auto expected = static_cast<int>(properties.size()) + 1;
      place_ = ownerKey + "." + std::to_string(expected);
      if (json.at("number").get<int>() != expected) {
        throw base::Error("the numbers must run from 1 without a gap");
      }
      properties.push_back(ReadProperty(json, place_, number));
    }
    return properties;
  }

  PropertyTemplate ReadProperty(const Json& json, const std::string& key, int number) {
    PropertyTemplate property;
    property.key = key;
    if (json.contains("sameAs")) {
      aliases_.push_back({key, Numbered(json.at("sameAs"), number)});
      return property;
    }
    property.name = json.at("name").get<std::string>();
    property.type = TypeOf(json.value("type", property.name));
    property.readOnly = json.value("readOnly", false);
    const Json& initial = json.at("default");
    const Json& text = initial.is_array() ? initial.at(static_cast<std::size_t>(number) - 1) : initial;
    property.initial =
        ParseValue({{property.type, false}, -1, base::Numbers()}, property.name, text.get<std::string>(), {});
    return property;
  }

  const Type* TypeOf(const std::string& name) const {
    if (const Type* type = catalogue_.Find(name)) return type;
    throw base::Error("the type \"" + name + "\" is not known");
  }

  void ResolveAlias(const Alias& alias) {
    const auto place = SplitKey(alias.key), target = SplitKey(alias.target);
    const auto* source = target ? result_.FindProperty(target->first, target->second) : nullptr;
    if (!place || !source || !source->type) {
      throw base::Error(alias.key + " is the same as " + alias.target + ", which is not there");
    }
    const PropertyTemplate copy = *source;
    *PropertyIn(result_, place->first, place->second) = copy;
  }

  const TypeCatalogue& catalogue_;
  DeviceTemplate result_;
  std::vector<Alias> aliases_;
  std::string place_ = "beginning";
};

}  // namespace

std::optional<std::pair<std::string, int>> SplitKey(const std::string& key) {
  const std::size_t point = key.rfind('.');
  if (point == std::string::npos) return std::nullopt;
  return std::pair{key.substr(0, point), static_cast<int>(base::Numbers().ToInt16(key.substr(point + 1)))};
}

bool CarriesNvType(const PropertyTemplate& property) {
  return property.type && property.type->name == "SCPTnvType" && property.initial.size() > kNvTypeIndexField;
}

const PropertyTemplate* DeviceTemplate::FindProperty(std::string_view owner, int number) const {
  return PropertyIn(*this, owner, number);
}

const VariableTemplate* DeviceTemplate::FindVariable(std::string_view key) const {
  for (const ObjectTemplate& object : objects) {
    for (const VariableTemplate& variable : object.variables) {
      if (variable.key == key) return &variable;
    }
  }
  return nullptr;
}

automation::Bytes PackTemplate(std::string_view json) {
  automation::Bytes bytes(kMark.begin(), kMark.end());
  PutLittle(bytes, kVersion, 2);
  PutLittle(bytes, static_cast<std::uint32_t>(json.size()), 4);
  PutLittle(bytes, Crc32(json), 4);
  bytes.insert(bytes.end(), json.begin(), json.end());
  return bytes;
}

std::string UnpackTemplate(const automation::Bytes& bytes) {
  const std::string intro = "The device template is unreadable: ";
  if (bytes.size() < kHeaderSize)
    throw base::Error(intro + "it has only " + std::to_string(bytes.size()) + " bytes.");
  if (std::string_view(reinterpret_cast<const char*>(bytes.data()), kMark.size()) != kMark) {
    throw base::Error(intro + "it does not begin with " + std::string(kMark) + ".");
  }
  const std::uint32_t version = GetLittle(bytes, 4, 2);
  if (version != kVersion)
    throw base::Error(intro + "format version " + std::to_string(version) + " is not known.");
  const std::uint32_t length = GetLittle(bytes, 6, 4);
  if (length != bytes.size() - kHeaderSize) {
    throw base::Error(intro + "it says " + std::to_string(length) + " bytes and has " +
                      std::to_string(bytes.size() - kHeaderSize) + ".");
  }
  std::string json(bytes.begin() + kHeaderSize, bytes.end());
  if (Crc32(json) != GetLittle(bytes, 10, 4)) throw base::Error(intro + "its checksum is wrong.");
  return json;
}

DeviceTemplate ReadTemplate(std::string_view json, const TypeCatalogue& catalogue) {
  return Reader(catalogue).Read(json);
}

std::string TemplateFileName(std::string_view programId, std::string_view version) {
  return base::Upper(programId) + "_" + base::ReplaceAll(version, ".", "_") + ".bin";
}

}  // namespace simulator
