#include "configuration/csv.h"

#include <string_view>

#include "base/text.h"

namespace configuration {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF", kLineEnd = "\r\n";

/// Spreadsheets take a text that begins so for a formula.
bool LooksLikeFormula(std::string_view text, const base::Numbers& numbers) {
  return !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos &&
         !numbers.IsNumber(text);
}

}  // namespace

Csv::Csv(const base::Numbers& numbers)
    : numbers_(numbers), separator_(numbers.Decimal() == ',' ? ';' : ','), text_(kByteOrderMark) {}

void Csv::Add(std::span<const std::string> cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text_ += separator_;
    text_ += Cell(cells[i]);
  }
  text_ += kLineEnd;
}

std::string Csv::Cell(const std::string& text) const {
  std::string cell = LooksLikeFormula(text, numbers_) ? "'" + text : text;
  if (cell.find_first_of(std::string("\"\r\n") + separator_) == std::string::npos) return cell;
  return "\"" + base::ReplaceAll(cell, "\"", "\"\"") + "\"";
}

}  // namespace configuration
