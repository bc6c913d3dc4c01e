// The sections on what people have said of the unit: the advice that is open, what of it was accepted, and
// the outputs that were checked.
#include "base/text.h"
#include "configuration/record_parts.h"

namespace configuration::record {
namespace {

using Rows = std::vector<std::vector<std::string>>;  // plain

/// Nothing without rows.
std::string TableOf(const RecordInput& input, std::string_view caption,
                    std::initializer_list<const char*> heads, const Rows& rows) {
  if (rows.empty()) return {};
  std::string body;
  for (const auto& row : rows) {
    std::string cells;
    for (const std::string& cell : row) cells += Element("td", Escaped(cell));
    body += Element("tr", cells) + "\n";
  }
  return Table("table", Element("caption", Word(input, caption)), ColumnHeads(input, heads), body);
}

std::string Say(const RecordInput& input, std::string_view text) {
  return Element("p", Word(input, text)) + "\n";
}

}  // namespace

std::string SeverityOf(const RecordInput& input, const AdviceLine& line) {
  return input.strings.GetStrings(line.fault ? "Fault" : "Hint");
}

std::string TimeOf(std::string_view utc) {
  constexpr std::size_t kMinutes = 16;  // of "2026-11-22T14:05:00Z"
  return base::ReplaceAll(utc.substr(0, kMinutes), "T", " ") + " UTC";
}

std::string OutputOf(const RecordInput& input, const Line& check) {
  return Filled(input, "Output %s1%", {TextOf(check, "output")}) + ", " + TextOf(check, "function");
}

std::string AdviceSection(const RecordInput& input) {
  if (!input.advice) return {};
  if (input.advice->empty())
    return Heading(input, "Advice") + Say(input, "There is no advice on these values.");
  Rows open, accepted;
  for (const AdviceLine& line : *input.advice) {
    const std::string severity = SeverityOf(input, line);
    if (line.who.empty()) {
      open.push_back({severity, line.text, line.why});
    } else {
      accepted.push_back({severity, line.text, line.who, TimeOf(line.when), line.reason});
    }
  }
  return Heading(input, "Advice") + TableOf(input, "Open", {"Severity", "Advice", "Why"}, open) +
         TableOf(input, "Accepted", {"Severity", "Advice", "By", "When", "Reason"}, accepted);
}

std::string CheckSection(const RecordInput& input) {
  const std::string heading = Heading(input, "Check-out of the outputs");
  if (input.checks.empty()) return heading + Say(input, "No output has been checked.");
  Rows rows;
  for (const Line& check : input.checks) {
    rows.push_back({OutputOf(input, check), input.strings.GetStrings(TextOf(check, "step")),
                    input.strings.GetStrings(TextOf(check, "result")), TextOf(check, "remark"),
                    TextOf(check, "who"), TimeOf(TextOf(check, "when"))});
  }
  return heading +
         TableOf(input, "Seen at the unit", {"Output", "Step", "Result", "Remark", "By", "When"}, rows);
}

}  // namespace configuration::record
