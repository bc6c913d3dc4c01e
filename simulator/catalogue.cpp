#include "simulator/catalogue.h"

#include <nlohmann/json.hpp>

#include "base/error.h"
#include "base/numbers.h"
#include "base/text.h"
#include "simulator/files.h"
#include "simulator/refusal.h"

namespace simulator {
namespace {

// Keeps the order of the file, which is the order of fields and names.
using Json = nlohmann::ordered_json;

constexpr std::pair<std::string_view, Kind> kKinds[] = {
    {"number", Kind::kNumber}, {"whole", Kind::kWhole}, {"enumeration", Kind::kEnumeration},
    {"text", Kind::kText},     {"flag", Kind::kFlag},
};

Kind KindOf(const std::string& name) {
  for (const auto& [text, kind] : kKinds) {
    if (text == name) return kind;
  }
  throw base::Error("there is no kind \"" + name + "\"");
}

Unit ReadUnit(const Json& json) {
  Unit unit;
  unit.si = json.at("si").get<std::string>();
  unit.us = json.value("us", "");
  unit.factor = json.value("factor", 1.0);
  unit.divisor = json.value("divisor", 1.0);
  unit.offset = json.value("offset", 0.0);
  unit.usDecimals = json.value("usDecimals", 0);
  if (!(unit.factor > 0) || !(unit.divisor > 0)) throw base::Error("factor and divisor must be above 0");
  return unit;
}

/// "NAME" takes the next code, "NAME=5" that one.
Names ReadNames(const Json& json) {
  Names names;
  double next = 0;
  for (const Json& item : json) {
    const std::vector<std::string> parts = base::Split(item.get<std::string>(), "=");
    if (parts.size() == 2) next = base::Numbers().ToInt32(parts[1]);
    for (const auto& [name, code] : names) {
      if (name == parts[0] || code == next) throw base::Error("\"" + parts[0] + "\" is there twice");
    }
    names.emplace_back(parts[0], next++);
  }
  if (names.empty()) throw base::Error("it has no names");
  return names;
}

template <class T>
const T* Known(const std::map<std::string, T, std::less<>>& table, const std::string& name) {
  const auto found = table.find(name);
  if (found == table.end()) throw base::Error("\"" + name + "\" is not known");
  return &found->second;
}

void CheckField(const Field& field) {
  if (!(field.lowest <= field.highest)) throw base::Error("the lowest value is above the highest");
  const int decimals = field.precision + (field.unit ? field.unit->usDecimals : 0);
  if (field.precision < 0 || decimals > 9) throw base::Error("the precision must be 0 to 9");
}

/// Reads fields and types by the units, enumerations and types that are known so far.
struct Reader {
  const std::map<std::string, Unit, std::less<>>& units;
  const std::map<std::string, Names, std::less<>>& enumerations;
  const std::map<std::string, Type, std::less<>>& types;

  Field ReadField(const Json& json) const {
    Field field;
    field.label = json.value("label", "");
    field.kind = KindOf(json.value("kind", "number"));
    if (json.contains("unit")) field.unit = Known(units, json.at("unit").get<std::string>());
    if (field.kind == Kind::kEnumeration) {
      field.names = Known(enumerations, json.at("names").get<std::string>());
    } else if (field.kind == Kind::kFlag) {
      field.highest = 1;
    } else {
      if (field.kind != Kind::kText) field.lowest = json.at("lowest").get<double>();
      field.highest = json.at("highest").get<double>();
      field.precision = json.value("precision", 0);
    }
    CheckField(field);
    return field;
  }

  std::vector<Field> ReadFields(const Json& json) const {
    if (json.contains("like")) return Known(types, json.at("like").get<std::string>())->fields;
    if (!json.contains("fields")) return {ReadField(json)};
    std::vector<Field> fields;
    for (const Json& entry : json.at("fields")) {
      const Field field = ReadField(entry);
      // A text may hold blanks, so it cannot share a record with other fields.
      if (field.kind == Kind::kText) throw base::Error("a text must be the only field");
      const int count = entry.value("count", 1);
      for (int number = 1; number <= count; ++number) {
        fields.push_back(field);
        fields.back().label = base::ReplaceAll(field.label, "#", std::to_string(number));
      }
    }
    if (fields.empty()) throw base::Error("it has no fields");
    return fields;
  }

  Type ReadType(const std::string& name, const Json& json) const {
    Type type;
    type.name = name;
    type.fields = ReadFields(json);
    type.index = json.value("index", 0);
    for (const Field& field : type.fields) {
      if (!field.unit || field.unit->us.empty()) continue;
      type.hasUs = true;
      if (field.unit->us == "°F") type.hasDegF = true;
    }
    return type;
  }
};

}  // namespace

TypeCatalogue::TypeCatalogue(const std::filesystem::path& file) {
  const std::string content = ReadWholeFile(file);
  const Reader reader{units_, enumerations_, types_};
  std::string place = "JSON";
  try {
    const Json json = Json::parse(content);
    for (const auto& [name, unit] : json.at("units").items()) {
      place = "unit \"" + name + "\"";
      units_.emplace(name, ReadUnit(unit));
    }
    for (const auto& [name, names] : json.at("enumerations").items()) {
      place = "enumeration \"" + name + "\"";
      enumerations_.emplace(name, ReadNames(names));
    }
    for (const auto& [name, definition] : json.at("types").items()) {
      place = "type \"" + name + "\"";
      types_.emplace(name, reader.ReadType(name, definition));
    }
  } catch (const std::exception& error) {
    throw base::Error(PathText(file) + ", " + place + ": " + error.what());
  }
}

const Type* TypeCatalogue::Find(std::string_view name) const {
  const auto found = types_.find(name);
  return found == types_.end() ? nullptr : &found->second;
}

Format TypeCatalogue::FindFormat(std::string_view formatName) const {
  const std::size_t mark = formatName.find('#');
  const Type* type = Find(formatName.substr(0, mark));
  if (type) {
    const std::string_view suffix = mark == std::string_view::npos ? "" : formatName.substr(mark);
    if (suffix.empty() || (suffix == "#SI" && type->hasUs)) return {type, false};
    if ((suffix == "#US" && type->hasUs) || (suffix == "#DegF" && type->hasDegF)) return {type, true};
  }
  Refuse("There is no format \"" + std::string(formatName) + "\".");
}

}  // namespace simulator
