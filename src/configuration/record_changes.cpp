// The section on what is different from an earlier record of the same unit.
#include <unordered_map>

#include "configuration/record_parts.h"

namespace configuration::record {
namespace {

constexpr std::size_t kDateLength = 10;  // of "2026-11-22T14:05:00Z"

bool Same(const Value& value, const Entry& entry) {
  if (value.content == entry.content) return true;
  const base::Numbers stored('.');
  const auto now = stored.Parse(value.content);
  return value.kind == fields::Kind::kText && now && now == stored.Parse(entry.content);
}

struct Line {
  std::string page, field, before, now;  // plain
};

/// An earlier content as it would be shown now.
std::string Before(const RecordInput& input, const Value& value, const Entry& entry) {
  Value before = value;
  before.shown = Local(input.numbers, value.kind, entry.content, value.shown);
  if (input.shown) before.shown = input.shown(value.page, value.control, before.shown);
  return WithUnit(before);
}

std::vector<Line> Changes(const RecordInput& input) {
  std::unordered_map<std::string, const Entry*> left;
  for (const Entry& entry : input.earlier->entries) left[entry.page + "." + entry.control] = &entry;
  std::vector<Line> lines;
  for (const Value& value : input.snapshot.values) {
    const auto found = left.find(value.page + "." + value.control);
    const Entry* entry = found == left.end() ? nullptr : found->second;
    if (entry) left.erase(found);
    if (entry && Same(value, *entry)) continue;
    const std::string path = fields::PathOf(value.caption);
    lines.push_back({TitleOf(input.pages, value.page), path.empty() ? value.control : path,
                     entry ? Before(input, value, *entry) : input.strings.GetStrings("not recorded then"),
                     WithUnit(value)});
  }
  for (const Entry& entry : input.earlier->entries) {
    if (!left.contains(entry.page + "." + entry.control)) continue;
    const std::string unit = entry.unit.empty() ? "" : " " + entry.unit;
    lines.push_back({TitleOf(input.pages, entry.page), entry.caption.empty() ? entry.control : entry.caption,
                     Local(input.numbers, fields::Kind::kText, entry.content, "0") + unit,
                     input.strings.GetStrings("not there any more")});
  }
  return lines;
}

std::string TableOf(const RecordInput& input, const std::string& heading, const std::vector<Line>& lines) {
  std::string body;
  for (const Line& line : lines) {
    body +=
        Element("tr", Element("td", Escaped(line.page)) + Element("th scope=\"row\"", Escaped(line.field)) +
                          Element("td", Escaped(line.before)) + Element("td", Escaped(line.now))) +
        "\n";
  }
  return Table("table", Element("caption class=\"vh\"", heading),
               ColumnHeads(input, {"Page", "Field", "Before", "Now"}), body);
}

}  // namespace

std::string ChangeSection(const RecordInput& input) {
  if (!input.earlier) return {};
  const Head& then = input.earlier->head;
  const std::string heading =
      Sentence(input, "Changes since the record of %s1%", {then.time.substr(0, kDateLength)});
  std::string markup = Element("h2", heading) + "\n";
  const auto say = [&](std::string_view text) { return markup + Element("p", Word(input, text)) + "\n"; };
  if (then.imperial != input.snapshot.head.imperial)
    return say(
        "The earlier record is in the other measurement units, so its values cannot be compared with these.");
  const std::vector<Line> lines = Changes(input);
  if (lines.empty()) return say("No value is different.");
  return markup + TableOf(input, heading, lines);
}

}  // namespace configuration::record
