#include <array>

#include "base/text.h"
#include "configuration/record_parts.h"

namespace configuration {
namespace {

using namespace record;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF", kLineEnd = "\r\n";
constexpr const char* kHeadings[] = {"Device", "Page", "Group", "Row",        "Column",
                                     "Value",  "Unit", "Used",  "Page class", "Control"};
using Cells = std::array<std::string, std::size(kHeadings)>;

/// Spreadsheets take a text that begins so for a formula.
bool LooksLikeFormula(std::string_view text, const base::Numbers& numbers) {
  return !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos &&
         !numbers.IsNumber(text);
}

std::string Cell(std::string_view text, char separator, const base::Numbers& numbers) {
  std::string cell(text);
  if (LooksLikeFormula(text, numbers)) cell.insert(0, "'");
  if (cell.find_first_of(std::string("\"\r\n") + separator) == std::string::npos) return cell;
  return "\"" + base::ReplaceAll(cell, "\"", "\"\"") + "\"";
}

Cells LineOf(const RecordInput& input, const Value& value) {
  const fields::Caption& caption = value.caption;
  return {input.snapshot.head.device,
          TitleOf(input, value.page),
          caption.frame,
          caption.row,
          caption.column,
          value.shown,
          value.kind == fields::Kind::kText ? caption.unit : std::string(),
          input.strings.GetStrings(value.used ? "Yes" : "No"),
          value.page,
          value.control};
}

}  // namespace

std::string WriteRecordCsv(const RecordInput& input) {
  const char separator = input.numbers.Decimal() == ',' ? ';' : ',';
  std::string text(kByteOrderMark);
  const auto add = [&](const Cells& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (i > 0) text += separator;
      text += Cell(cells[i], separator, input.numbers);
    }
    text += kLineEnd;
  };
  Cells headings;
  for (std::size_t i = 0; i < headings.size(); ++i) headings[i] = input.strings.GetStrings(kHeadings[i]);
  add(headings);
  const std::string record = input.strings.GetStrings("As-left record");
  for (const auto& [fact, value] : Facts(input))
    add({input.snapshot.head.device, record, "", fact, "", value, "", "", "", ""});
  const std::string device = input.snapshot.head.device;
  const auto said = [&](const char* what, const std::string& group, const std::string& row,
                        const std::vector<std::string>& pieces) {
    add({device, input.strings.GetStrings(what), group, row, "", base::Join(pieces, "; "), "", "", "", ""});
  };
  for (const AdviceLine& line : input.advice) {
    const std::string state = input.strings.GetStrings(line.who.empty() ? "Open" : "Accepted");
    std::vector<std::string> pieces = {state};
    if (!line.who.empty()) pieces.insert(pieces.end(), {line.who, TimeOf(line.when), line.reason});
    said("Advice", SeverityOf(input, line), line.text, pieces);
  }
  for (const Line& check : input.checks) {
    said("Check-out of the outputs", OutputOf(input, check), input.strings.GetStrings(TextOf(check, "step")),
         {input.strings.GetStrings(TextOf(check, "result")), TextOf(check, "remark"), TextOf(check, "who"),
          TimeOf(TextOf(check, "when"))});
  }
  for (const Value& value : input.snapshot.values) add(LineOf(input, value));
  return text;
}

}  // namespace configuration
