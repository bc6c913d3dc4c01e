#include "configuration/document.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_set>

#include "base/error.h"
#include "base/text.h"

namespace configuration {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kFormat = 1;
constexpr const char* kMetric = "metric";
constexpr const char* kImperial = "imperial";
constexpr std::string_view kFieldsName = "\"fields\"";

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

[[noreturn]] void Refuse(std::string_view text, std::vector<std::string> arguments = {}) {
  throw base::WordedError(text, std::move(arguments));
}

/// A text in one line; what is no UTF-8 is replaced.
std::string Quoted(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

std::string LineOf(std::string_view text, std::size_t byte) {
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(byte, text.size()));
  return std::to_string(1 + std::count(text.begin(), end, '\n'));
}

Json Parse(std::string_view text) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    Refuse("The file is no complete configuration: it is cut off or damaged in line %s1%.",
           {LineOf(text, error.byte)});
  }
}

/// Where each field begins, for messages. The text is sound JSON.
std::vector<std::size_t> Places(std::string_view text) {
  std::vector<std::size_t> places;
  int depth = 0;
  bool quoted = false;
  for (std::size_t i = text.find(kFieldsName) + kFieldsName.size(); i < text.size(); ++i) {
    if (quoted && text[i] == '\\') {
      ++i;
    } else if (text[i] == '"') {
      quoted = !quoted;
    } else if (!quoted && (text[i] == '{' || text[i] == '[')) {
      if (++depth == 2) places.push_back(i);
    } else if (!quoted && (text[i] == '}' || text[i] == ']')) {
      --depth;
    }
  }
  return places;
}

const Json* Part(const Json& json, const char* name) {
  const auto found = json.find(name);
  return found == json.end() ? nullptr : &*found;
}

std::string TextOf(const Json& json, const char* name, bool required, const std::string& line) {
  const Json* part = Part(json, name);
  if (!part && required) Refuse("\"%s1%\" is missing in line %s2%.", {name, line});
  if (part && !part->is_string()) Refuse("\"%s1%\" in line %s2% is no text.", {name, line});
  return part ? part->get<std::string>() : std::string();
}

Head ReadHead(const Json& json, std::string_view programId) {
  const Json* format = Part(json, "format");
  if (!format || !format->is_number_integer()) Refuse("The file is no configuration of this tool.");
  if (*format > kFormat)
    Refuse("The file was written by a newer version of this tool, in format %s1%.", {format->dump()});
  Head head;
  for (const auto& [name, text] : kHeadTexts) head.*text = TextOf(json, name, text == &Head::programId, "1");
  if (!programId.empty() && !base::EqualsNoCase(head.programId, programId)) {
    Refuse("The file belongs to another kind of device: its program id is %s1%, that of this device %s2%.",
           {head.programId, std::string(programId)});
  }
  const std::string units = TextOf(json, "units", true, "1");
  if (units != kMetric && units != kImperial) Refuse("\"%s1%\" are no measurement units.", {units});
  head.imperial = units == kImperial;
  return head;
}

Entry ReadEntry(const Json& json, const std::string& line) {
  if (!json.is_object()) Refuse("The field in line %s1% is damaged.", {line});
  Entry entry;
  for (const auto& [name, text, required] : kEntryTexts) entry.*text = TextOf(json, name, required, line);
  return entry;
}

}  // namespace

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
  text += std::string(kFieldsName) + ": [\n";
  for (const Entry& entry : document.entries) {
    Json line;
    for (const auto& [name, member, required] : kEntryTexts) line[name] = entry.*member;
    text += Quoted(line) + (&entry == &document.entries.back() ? "\n" : ",\n");
  }
  return text + "]\n}\n";
}

Document Read(std::string_view text, std::string_view programId) {
  const Json json = Parse(text);
  if (!json.is_object()) Refuse("The file is no configuration of this tool.");
  Document document;
  document.head = ReadHead(json, programId);
  const Json* fields = Part(json, "fields");
  if (!fields || !fields->is_array()) Refuse("The file has no list of fields.");
  const std::vector<std::size_t> places = Places(text);
  std::unordered_set<std::string> names;
  for (std::size_t i = 0; i < fields->size(); ++i) {
    const std::string line = LineOf(text, i < places.size() ? places[i] : text.size());
    document.entries.push_back(ReadEntry((*fields)[i], line));
    const Entry& entry = document.entries.back();
    if (!names.insert(entry.page + "." + entry.control).second)
      Refuse("The field %s1% stands in the file twice, the second time in line %s2%.",
             {entry.page + "." + entry.control, line});
  }
  return document;
}

}  // namespace configuration
