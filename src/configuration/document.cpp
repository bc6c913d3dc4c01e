#include "configuration/document.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_set>

#include "base/error.h"
#include "base/text.h"
#include "configuration/places.h"

namespace configuration {
namespace {

using Json = nlohmann::json;

constexpr int kFormat = 1;
constexpr const char* kMetric = "metric";
constexpr const char* kImperial = "imperial";

/// The texts of the head by their names in the file, in its order.
struct HeadText {
  const char* name;
  std::string Head::*text;
};
constexpr HeadText kHeadTexts[] = {
    {"tool", &Head::toolVersion}, {"programId", &Head::programId}, {"version", &Head::version},
    {"network", &Head::network},  {"device", &Head::device},       {"location", &Head::location},
    {"time", &Head::time},        {"user", &Head::user},           {"note", &Head::note},
};

struct EntryText {
  const char* name;
  std::string Entry::*text;
  bool required;
};
constexpr EntryText kEntryTexts[] = {
    {"page", &Entry::page, true},  {"control", &Entry::control, true}, {"caption", &Entry::caption, false},
    {"unit", &Entry::unit, false}, {"content", &Entry::content, true},
};

constexpr const char* kSections[] = {kAccepted, kCheckOut, kOverrides};

[[noreturn]] void Refuse(std::string_view text, std::vector<std::string> arguments = {}) {
  throw base::WordedError(text, std::move(arguments));
}

/// In one line; what is no UTF-8 is replaced.
std::string Quoted(const nlohmann::ordered_json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

const Json* Part(const Json& json, const char* name) {
  const auto found = json.find(name);
  return found == json.end() ? nullptr : &*found;
}

std::string TextOf(const Json& json, const char* name, bool required, std::size_t line) {
  const Json* part = Part(json, name);
  if (!part && required) Refuse("\"%s1%\" is missing in line %s2%.", {name, std::to_string(line)});
  if (part && !part->is_string()) Refuse("\"%s1%\" in line %s2% is no text.", {name, std::to_string(line)});
  return part ? part->get<std::string>() : std::string();
}

Head ReadHead(const Json& json, std::string_view programId, const Places& places) {
  const Json* format = Part(json, "format");
  if (!format || !format->is_number_integer() || *format < 1)
    Refuse("The file is no configuration of this tool.");
  if (*format > kFormat)
    Refuse("The file was written by a newer version of this tool, in format %s1%.", {format->dump()});
  const auto read = [&](const char* name, bool required) {
    const auto line = places.head.find(name);
    return TextOf(json, name, required, line == places.head.end() ? 1 : line->second);
  };
  Head head;
  for (const auto& [name, text] : kHeadTexts) head.*text = read(name, text == &Head::programId);
  if (!programId.empty() && !base::EqualsNoCase(head.programId, programId)) {
    Refuse("The file belongs to another kind of device: its program id is %s1%, that of this device %s2%.",
           {head.programId, std::string(programId)});
  }
  const std::string units = read("units", true);
  if (units != kMetric && units != kImperial) {
    Refuse("\"%s1%\" in line %s2% are no measurement units.",
           {units, std::to_string(places.head.at("units"))});
  }
  head.imperial = units == kImperial;
  return head;
}

Entry ReadEntry(const Json& json, std::size_t line) {
  if (!json.is_object()) Refuse("The field in line %s1% is damaged.", {std::to_string(line)});
  Entry entry;
  for (const auto& [name, text, required] : kEntryTexts) entry.*text = TextOf(json, name, required, line);
  return entry;
}

/// Line by line, so that text tools can compare these too.
template <class List, class ToJson>
std::string Lines(const List& list, ToJson toJson) {
  std::string text = "[\n";
  for (const auto& item : list) text += Quoted(toJson(item)) + (&item == &list.back() ? "\n" : ",\n");
  return text + "]";
}

std::vector<Line> ReadSection(const Json& section, const char* name, std::size_t line) {
  const auto isText = [](const Json& text) { return text.is_string(); };
  const auto isLine = [&](const Json& item) { return item.is_object() && std::ranges::all_of(item, isText); };
  if (!section.is_array() || !std::ranges::all_of(section, isLine))
    Refuse("The list \"%s1%\" in line %s2% is damaged.", {name, std::to_string(line)});
  return section.get<std::vector<Line>>();
}

}  // namespace

std::string TextOf(const Line& line, std::string_view name) {
  const auto found = line.find(name);
  return found == line.end() ? std::string() : found->second;
}

const Entry* Document::Find(std::string_view page, std::string_view control) const {
  const auto found = std::ranges::find_if(
      entries, [&](const Entry& entry) { return entry.page == page && entry.control == control; });
  return found == entries.end() ? nullptr : &*found;
}

std::string Write(const Document& document) {
  std::string text = "{\n\"format\": " + std::to_string(kFormat) + ",\n";
  const auto add = [&text](const char* name, const std::string& value) {
    text += Quoted(name) + ": " + Quoted(value) + ",\n";
  };
  for (const auto& [name, member] : kHeadTexts) add(name, document.head.*member);
  add("units", document.head.imperial ? kImperial : kMetric);
  text += "\"fields\": " + Lines(document.entries, [](const Entry& entry) {
            nlohmann::ordered_json line;
            for (const auto& [name, member, required] : kEntryTexts) line[name] = entry.*member;
            return line;
          });
  for (const auto& [name, lines] : document.sections) {
    if (!lines.empty())
      text += ",\n" + Quoted(name) + ": " + Lines(lines, [](const Line& line) { return Json(line); });
  }
  return text + "\n}\n";
}

Document Read(std::string_view text, std::string_view programId) {
  const Places places = FindPlaces(text);
  const Json json = Json::parse(text);
  if (!json.is_object()) Refuse("The file is no configuration of this tool.");
  Document document;
  document.head = ReadHead(json, programId, places);
  const Json* fields = Part(json, "fields");
  if (!fields || !fields->is_array()) Refuse("The file has no list of fields.");
  std::unordered_set<std::string> names;
  for (std::size_t i = 0; i < fields->size(); ++i) {
    const Entry& entry = document.entries.emplace_back(ReadEntry((*fields)[i], places.fields[i]));
    const std::string name = entry.page + "." + entry.control;
    if (!names.insert(name).second) {
      Refuse("The field %s1% stands in the file twice, the second time in line %s2%.",
             {name, std::to_string(places.fields[i])});
    }
  }
  for (const char* name : kSections) {
    const Json* section = Part(json, name);
    std::vector<Line> lines =
        section ? ReadSection(*section, name, places.head.at(name)) : std::vector<Line>();
    if (!lines.empty()) document.sections[name] = std::move(lines);  // none is not written either
  }
  return document;
}

}  // namespace configuration
