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
  for (const Value& value : input.snapshot.values) add(LineOf(input, value));
  return text;
}

}  // namespace configuration
