#include "simulator/value_text.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/text.h"
#include "simulator/refusal.h"

namespace simulator {
namespace {

constexpr std::size_t kFewNames = 8;
// Limits in a refusal show at least so many decimals: converted ones are rarely round.
constexpr int kLimitDecimals = 3;

bool IsUs(const Presentation& presentation, const Field& field) {
  return presentation.format.us && field.unit && !field.unit->us.empty();
}

double Shown(const Presentation& presentation, const Field& field, double stored) {
  if (!IsUs(presentation, field)) return stored;
  return stored * field.unit->factor / field.unit->divisor + field.unit->offset;
}

double Stored(const Presentation& presentation, const Field& field, double shown) {
  if (!IsUs(presentation, field)) return shown;
  return (shown - field.unit->offset) * field.unit->divisor / field.unit->factor;
}

int Decimals(const Presentation& presentation, const Field& field) {
  if (field.kind != Kind::kNumber) return 0;
  if (presentation.precision >= 0) return presentation.precision;
  return field.precision + (IsUs(presentation, field) ? field.unit->usDecimals : 0);
}

std::string FieldText(const Presentation& presentation, const Field& field, const FieldValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  const double number = std::get<double>(value);
  if (field.kind == Kind::kFlag) return number == 0 ? "0" : "1";
  if (field.kind != Kind::kEnumeration) {
    return presentation.numbers.Text(Shown(presentation, field, number), Decimals(presentation, field));
  }
  for (const auto& [name, code] : *field.names) {
    if (code == number) return name;
  }
  return base::Numbers().Text(number);
}

/// A number by the users' separator. Callers in other programs also write constants such as "100.0" with a
/// point; they are taken too, unless three digits follow: "1.000" may well mean a thousand.
std::optional<double> ParseNumber(const base::Numbers& numbers, std::string_view text) {
  const std::optional<double> number = numbers.Parse(text);
  const std::size_t point = text.find('.');
  if (number || point == std::string_view::npos || text.size() - point == 4) return number;
  return base::Numbers().Parse(text);
}

/// Parses the texts of one property; every refusal speaks of that property.
class Parser {
 public:
  Parser(const Presentation& presentation, std::string_view property)
      : presentation_(presentation), property_(property) {}

  Fields Parse(std::string_view text, const Fields& present) const {
    const std::vector<Field>& fields = presentation_.format.type->fields;
    if (fields.front().kind == Kind::kText) return {ParseText(fields.front(), text)};
    const std::vector<std::string> pieces = base::Split(base::Trim(text), " ");
    if (pieces.size() != fields.size()) {
      Refuse(property_ + ": \"" + std::string(text) + "\" has " + Amount(pieces.size()) + "; " +
             std::to_string(fields.size()) + (fields.size() == 1 ? " is" : " are") + " expected.");
    }
    Fields result;
    result.reserve(fields.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
      result.push_back(ParseField(i, pieces[i], i < present.size() ? &present[i] : nullptr));
    }
    return result;
  }

 private:
  static std::string Amount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " field" : " fields");
  }

  FieldValue ParseText(const Field& field, std::string_view text) const {
    const std::size_t length = Characters(text);
    if (static_cast<double>(length) > field.highest) {
      Refuse(property_ + ": \"" + std::string(text) + "\" has " + std::to_string(length) +
             " characters; at most " + base::Numbers().Text(field.highest) + " are allowed.");
    }
    return std::string(text);
  }

  FieldValue ParseField(std::size_t index, const std::string& text, const FieldValue* present) const {
    const Field& field = presentation_.format.type->fields[index];
    const std::string now = present ? FieldText(presentation_, field, *present) : std::string();
    if (present && text == now) return *present;
    if (field.kind == Kind::kEnumeration) return ParseName(index, text);
    const std::optional<double> number = ParseNumber(presentation_.numbers, text);
    if (!number) RefuseField(index, text, " is not " + Range(field, true));
    if (present && presentation_.numbers.Parse(now) == number) return *present;
    const bool whole = field.kind != Kind::kNumber;
    if (whole && *number != std::trunc(*number)) RefuseField(index, text, " is not " + Range(field, true));
    return Within(index, text, *number);
  }

  FieldValue ParseName(std::size_t index, const std::string& text) const {
    const Names& names = *presentation_.format.type->fields[index].names;
    std::string list;
    for (const auto& [name, code] : names) {
      if (base::EqualsNoCase(name, text)) return code;
      list += (list.empty() ? "" : ", ") + name;
    }
    RefuseField(index, text, " is not allowed" + (names.size() <= kFewNames ? "; allowed: " + list : ""));
  }

  /// The stored number, or a refusal. A text that equals a limit as refusals show it means that limit.
  double Within(std::size_t index, const std::string& text, double shown) const {
    const Field& field = presentation_.format.type->fields[index];
    const double stored = Stored(presentation_, field, shown);
    if (stored >= field.lowest && stored <= field.highest) return stored;
    const double limit = stored < field.lowest ? field.lowest : field.highest;
    if (presentation_.numbers.Text(shown) == LimitText(field, limit)) return limit;
    RefuseField(index, text, " is outside the range " + Range(field, false));
  }

  std::string LimitText(const Field& field, double limit) const {
    const int decimals = std::max(kLimitDecimals, Decimals(presentation_, field));
    const double shown = Shown(presentation_, field, limit);
    const std::optional<double> rounded = base::Numbers().Parse(base::Numbers().Text(shown, decimals));
    return presentation_.numbers.Text(rounded.value_or(shown));
  }

  /// "0 to 100 %", or in words "a whole number from 0 to 100 %".
  std::string Range(const Field& field, bool inWords) const {
    if (field.kind == Kind::kFlag) return inWords ? "0 or 1" : "0 to 1";
    std::string text = LimitText(field, field.lowest) + " to " + LimitText(field, field.highest);
    if (field.unit) text += " " + (IsUs(presentation_, field) ? field.unit->us : field.unit->si);
    if (!inWords) return text;
    return (field.kind == Kind::kWhole ? "a whole number from " : "a number from ") + text;
  }

  [[noreturn]] void RefuseField(std::size_t index, const std::string& text, const std::string& reason) const {
    const std::vector<Field>& fields = presentation_.format.type->fields;
    std::string where;
    if (fields.size() > 1) where = " (field " + std::to_string(index + 1) + ", " + fields[index].label + ")";
    Refuse(property_ + ": \"" + text + "\"" + reason + where + ".");
  }

  const Presentation& presentation_;
  std::string property_;
};

}  // namespace

std::size_t Characters(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string FormatValue(const Presentation& presentation, const Fields& value) {
  const std::vector<Field>& fields = presentation.format.type->fields;
  std::string text;
  for (std::size_t i = 0; i < fields.size() && i < value.size(); ++i) {
    if (i > 0) text += ' ';
    text += FieldText(presentation, fields[i], value[i]);
  }
  return text;
}

Fields ParseValue(const Presentation& presentation, std::string_view property, std::string_view text,
                  const Fields& present) {
  return Parser(presentation, property).Parse(text, present);
}

}  // namespace simulator
