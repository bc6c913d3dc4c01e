#include "fleet/result.h"

#include <algorithm>
#include <array>

#include "configuration/csv.h"
#include "configuration/record_parts.h"

namespace fleet {
namespace {

using configuration::WrittenValue;
using configuration::record::Attribute;
using configuration::record::Element;
using configuration::record::Escaped;
using configuration::record::TitleOf;

constexpr std::string_view kStyle = R"(
body{font:10pt/1.4 "Segoe UI",Tahoma,"Helvetica Neue",Arial,sans-serif;color:#1d2733;background:#fff;margin:0 auto;
 max-width:190mm;padding:10mm 4mm}
h1{font-size:18pt;line-height:1.2;margin:0}
h2{font-size:13pt;margin:5mm 0 2mm;border-bottom:2px solid #1d2733;break-after:avoid}
p{margin:.5mm 0}
table{border-collapse:collapse;width:100%;margin:3mm 0 4mm;font-size:9pt}
th,td{border-bottom:1px solid #c9d2da;padding:.5mm 3mm .5mm 0;text-align:left;vertical-align:baseline;
 overflow-wrap:anywhere;white-space:pre-line}
th{color:#56636f}
tr{break-inside:avoid}
.bad{font-weight:600}
@media print{body{padding:0;max-width:none}}
)";

/// The words of each state; those that say a number have a form for one. `count` are the words of all units
/// in it, in the order in which they are told.
struct Words {
  UnitState state;
  const char* text;
  const char* one = nullptr;
  const char* count = nullptr;
  bool bad = false;
};
constexpr Words kWords[] = {
    {UnitState::kWaiting, "waiting"},
    {UnitState::kReading, "reading"},
    {UnitState::kWriting, "writing"},
    {UnitState::kNotTaken, "cannot be copied to"},
    {UnitState::kDone, "done (%s1% values)", "done (1 value)", "%s1% done"},
    {UnitState::kEqual, "nothing to change", nullptr, "%s1% with nothing to change"},
    {UnitState::kDiffers, "%s1% values differ", "1 value differs", "%s1% that differ"},
    {UnitState::kRefused, "refused", nullptr, "%s1% refused", true},
    {UnitState::kFailed, "failed while reading", nullptr, "%s1% failed", true},
    {UnitState::kUnknown, "not known", nullptr, "%s1% not known", true},
};

const Words& WordsOf(UnitState state) { return *std::ranges::find(kWords, state, &Words::state); }

class Writer {
 public:
  Writer(const Result& result, const shell::Strings& strings) : result_(result), strings_(strings) {}

  std::string Page() const {
    std::string body = Element("h1", Word("Copy to units")) + "\n" + Facts() + Units();
    for (const UnitLine& line : result_.lines) body += Values(line);
    const std::string head =
        Element("head", "<meta charset=\"utf-8\"/>\n" + Element("title", Word("Copy to units")) + "\n" +
                            Element("style", kStyle));
    return "<!DOCTYPE html>\n" +
           Element(
               "html xmlns=\"http://www.w3.org/1999/xhtml\"" + Attribute("lang", strings_.GetStrings("en")),
               head + "\n" + Element("body", body)) +
           "\n";
  }

 private:
  std::string Word(std::string_view text) const { return Escaped(strings_.GetStrings(text)); }
  std::string Row(const char* cell, std::initializer_list<std::string> contents) const {
    std::string row;
    for (const std::string& content : contents) row += Element(cell, content);
    return Element("tr", row) + "\n";
  }

  std::string Facts() const {
    std::string facts;
    for (const auto& [name, value] :
         {std::pair{"Source", &result_.source}, std::pair{"Network", &result_.network},
          std::pair{"Date", &result_.time}, std::pair{"Installer", &result_.user}})
      facts += Element("p", Word(name) + ": " + Escaped(*value)) + "\n";
    return facts;
  }

  std::string Units() const {
    std::string rows = Row(
        "th", {Word("Unit name"), Word("Location"), Word("State"), Word("Remark"), Word("As-left record")});
    for (const UnitLine& line : result_.lines) {
      const std::string record = result_.record ? result_.record(line) : std::string();
      const std::string link =
          record.empty() ? std::string() : Element("a" + Attribute("href", record), Word("As-left record"));
      rows +=
          Row("td",
              {Escaped(line.unit.name), Escaped(line.unit.location),
               Element(IsBad(line.state) ? "span class=\"bad\"" : "span", Escaped(StateText(strings_, line))),
               Escaped(line.reason), link});
    }
    return Element("table", "\n" + rows) + "\n";
  }

  std::string Values(const UnitLine& line) const {
    if (line.values.empty()) return {};
    std::string rows = Row("th", {Word("Page"), Word("Field"), Word("Before"), Word("After")});
    for (const WrittenValue& value : line.values)
      rows += Row("td", {Escaped(TitleOf(result_.pages, value.page)), Escaped(value.name),
                         Escaped(value.before), Escaped(value.after)});
    return Element("h2", Escaped(line.unit.name)) + "\n" + Element("table", "\n" + rows) + "\n";
  }

  const Result& result_;
  const shell::Strings& strings_;
};

}  // namespace

std::string StateText(const shell::Strings& strings, const UnitLine& line) {
  if (line.state == UnitState::kFailed && line.failedIn == UnitState::kWriting)
    return strings.GetStrings("failed while writing");
  const Words& words = WordsOf(line.state);
  if (!words.one) return strings.GetStrings(words.text);
  return strings.GetStrings(line.count == 1 ? words.one : words.text, {std::to_string(line.count)});
}

bool IsBad(UnitState state) { return WordsOf(state).bad; }

std::vector<std::string> CountTexts(const shell::Strings& strings, std::span<const UnitLine> lines) {
  std::vector<std::string> texts;
  for (const Words& words : kWords) {
    const auto count = std::ranges::count(lines, words.state, &UnitLine::state);
    if (words.count && count > 0) texts.push_back(strings.GetStrings(words.count, {std::to_string(count)}));
  }
  return texts;
}

std::string WriteResult(const Result& result, const shell::Strings& strings) {
  return Writer(result, strings).Page();
}

std::string WriteResultCsv(const Result& result, const shell::Strings& strings,
                           const base::Numbers& numbers) {
  configuration::Csv csv(numbers);
  std::array<std::string, 8> headings = {"Unit name", "Location", "State", "Page",
                                         "Field",     "Before",   "After", "Remark"};
  for (std::string& heading : headings) heading = strings.GetStrings(heading);
  csv.Add(headings);
  for (const UnitLine& line : result.lines) {
    const auto add = [&](const WrittenValue& value) {
      csv.Add(std::array{line.unit.name, line.unit.location, StateText(strings, line),
                         TitleOf(result.pages, value.page), value.name, value.before, value.after,
                         line.reason});
    };
    std::ranges::for_each(line.values, add);
    if (line.values.empty()) add({});
  }
  return csv.Text();
}

}  // namespace fleet
