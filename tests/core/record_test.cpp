// The as-left record over the virtual building: written for each unit, in both unit systems, in two
// languages, and kept in the build folder for a browser to show.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>

#include "automation/local_object.h"
#include "configuration/record.h"
#include "configuration/record_places.h"
#include "host/device_tree.h"
#include "pages/io/input_functions.h"
#include "pages/io/output_functions.h"
#include "tool_test.h"

namespace {

using configuration::Document;
using configuration::RecordInput;
using configuration::Snapshot;
using configuration::Value;

/// What is wrong with a document as XML, or nothing: tags closed in order, attributes quoted, nothing
/// unescaped. Counts the marked fields.
std::string Fault(std::string_view text, std::map<std::string, int>& fields) {
  std::vector<std::string> open;
  if (!text.starts_with("<!DOCTYPE html>\n")) return "no document type";
  text.remove_prefix(15);
  while (!text.empty()) {
    const std::size_t start = std::min(text.find('<'), text.size());
    const std::string_view words = text.substr(0, start);
    for (std::size_t i = words.find('&'); i != words.npos; i = words.find('&', i + 1)) {
      const std::string_view entity = words.substr(i, words.find(';', i) - i);
      if (entity != "&amp" && entity != "&lt" && entity != "&gt" && entity != "&quot")
        return "stray & in " + std::string(words);
    }
    if (start == text.size()) break;
    const std::size_t end = text.find('>', start);
    if (end == text.npos) return "a tag that does not end";
    std::string tag(text.substr(start + 1, end - start - 1));
    text.remove_prefix(end + 1);
    if (tag.starts_with('/')) {
      if (open.empty() || open.back() != tag.substr(1)) return "not open: " + tag;
      open.pop_back();
      continue;
    }
    if (std::ranges::count(tag, '"') % 2 || tag.find('<') != tag.npos) return "quotation marks: " + tag;
    constexpr std::string_view kMark = "data-field=\"";
    if (const std::size_t mark = tag.find(kMark); mark != tag.npos)
      ++fields[tag.substr(mark + kMark.size(), tag.find('"', mark + kMark.size()) - mark - kMark.size())];
    if (!tag.ends_with('/')) open.push_back(tag.substr(0, tag.find(' ')));
  }
  return open.empty() ? "" : "not closed: " + open.back();
}

/// The cells of a text of comma-separated or semicolon-separated values, by line.
std::vector<std::vector<std::string>> Cells(std::string_view text, char separator) {
  std::vector<std::vector<std::string>> lines = {{""}};
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool doubled = quoted && text.substr(i, 2) == "\"\"";
    if (text[i] == '"' && !doubled) {
      quoted = !quoted;
    } else if (!quoted && text[i] == separator) {
      lines.back().emplace_back();
    } else if (!quoted && text.substr(i, 2) == "\r\n") {
      lines.push_back({""});
      ++i;
    } else {
      lines.back().back() += text[i];
      i += doubled;
    }
  }
  return lines;
}

/// A language component without a translation that notes what it was asked for.
struct Listener : automation::LocalClass<Listener>, std::enable_shared_from_this<Listener> {
  std::set<std::string> asked;
  static const automation::MemberOf<Listener> kMembers[5];
};
constexpr automation::MemberOf<Listener> Listener::kMembers[] = {
    {"LastChange", [](Listener&, const automation::Arguments&) { return automation::Value(1.0); }},
    {"Font", [](Listener&, const automation::Arguments&) { return automation::Value(""); }},
    {"Count", [](Listener&, const automation::Arguments&) { return automation::Value(1); }},
    {"Section", nullptr, nullptr,
     [](Listener& self, const automation::Arguments&) {
       return automation::Value(automation::Object(self.shared_from_this()));
     }},
    {"Item",
     [](Listener& self, const automation::Arguments& arguments) {
       self.asked.insert(arguments[0].AsText());
       return automation::Value();
     }},
};

/// The whole tool over one unit.
struct Unit : tests::Tool {
  explicit Unit(const char* name) : device(name) { Open(device); Take(); }
  void Speak(const char* language, bool imperial) {
    Find<ui::OptionButton>(imperial ? "optUnit(1)" : "optUnit(0)").Click();
    Strings().SetLanguage(language);
    Main().ReInitializeStrings();
    Take();
  }
  /// What the unit holds, in the language and units in use.
  void Take() {
    snapshot.head = {"1.2.3",
                     "8000AB0C12340001",
                     "3.1",
                     "Harbour Street",
                     device,
                     "Roof north, bay 3",
                     "2026-11-22T13:05:00Z",
                     Find<ui::OptionButton>("optUnit(1)").Selected(),
                     "",
                     ""};
    snapshot.values.clear();
    for (const fields::Field* field : Main().Pending().Fields())
      snapshot.values.push_back(
          configuration::ValueOf(*field, numbers, Main().Pending().DeviceContent(*field)));
    titles.clear();
    for (const shell::PageEntry& entry : Main().Pages().Table())
      titles.push_back({std::string(entry.pageClass), Strings().GetStrings(entry.title)});
    sensors.clear();
    signals.clear();
    const auto stored = [&](const std::string& object, const char* type) {
      return base::Upper(building.StoredText(device, object, 2, type));
    };
    for (int i = 1; i <= 6; ++i) sensors.push_back(stored("HardwareInput" + std::to_string(i), "UCPTsensorType"));
    for (int i = 1; i <= 7; ++i) signals.push_back(stored("HardwareOutput" + std::to_string(i), "UCPThardwareSignalType"));
  }
  shell::Strings& Strings() { return program.GetStrings(); }
  RecordInput Input() {
    return {snapshot,
            titles,
            Strings(),
            numbers,
            {"J. Weber", "Harbour Street 12\nHamburg", ""},
            "22.11.2026 14:05",
            true,
            {},
            {},
            nullptr,
            {}};
  }
  Value& At(std::string_view page, std::string_view control) {
    return const_cast<Value&>(*snapshot.Find(page, control));
  }
  static void Keep(const std::string& name, const std::string& text) {
    std::filesystem::create_directory("records");
    std::ofstream("records/" + name, std::ios::binary) << text;
  }

  std::string device;
  base::Numbers numbers{'.'};
  Snapshot snapshot;
  std::vector<configuration::PageTitle> titles;
  std::vector<std::string> sensors, signals;
  const Document* earlier = nullptr;
};

TEST(Record, HoldsEveryFieldOnceAndStaysWhole) {
  const char* devices[] = {tests::kAssigned, tests::kUnassigned, tests::kPressure};
  for (std::size_t i = 0; i < std::size(devices); ++i) {
    Unit unit(devices[i]);
    for (const bool imperial : {false, true}) {
      for (const char* language : {"English", "German"}) {
        unit.Speak(language, imperial);
        const std::string name = std::to_string(i + 1) + (imperial ? "-us-" : "-si-") + language;
        const auto start = std::chrono::steady_clock::now();
        const std::string record = configuration::WriteRecord(unit.Input());
        std::printf("%s %d us\n", name.c_str(), (int)std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now()-start).count());
        Unit::Keep(name + ".html", record);
        Cells("",';');
        Unit::Keep(name + ".csv", configuration::WriteRecordCsv(unit.Input()));
        std::map<std::string, int> fields;
        EXPECT_EQ(Fault(record, fields), "") << name;
        EXPECT_EQ(fields.size(), unit.snapshot.values.size());
        for (const Value& value : unit.snapshot.values) EXPECT_EQ(fields[value.page + "." + value.control], 1);
      }
    }
  }
}

}  // namespace
