#include "base/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/error.h"
#include "base/text.h"

namespace base {
namespace {

// Only these may stand in a number, so that "inf", "nan" and hexadecimal digits are refused.
constexpr const char* kNumberCharacters = "0123456789.+-eE";

}  // namespace

std::optional<double> ParseEither(const Numbers& numbers, std::string_view text) {
  const auto number = numbers.Parse(text);
  return number ? number : Numbers().Parse(text);
}

double RoundHalfToEven(double value) {
  const double lower = std::floor(value);
  const double rest = value - lower;
  if (rest != 0.5) return rest < 0.5 ? lower : lower + 1;
  return std::fmod(lower, 2.0) == 0.0 ? lower : lower + 1;
}

std::optional<double> Numbers::Parse(std::string_view text) const {
  std::string plain(Trim(text));
  if (decimal_ != '.') {
    if (plain.find('.') != std::string::npos) return std::nullopt;
    std::ranges::replace(plain, decimal_, '.');
  }
  if (plain.find_first_not_of(kNumberCharacters) != std::string::npos) return std::nullopt;
  std::string_view digits = plain;
  if (digits.starts_with('+')) {
    digits.remove_prefix(1);
    if (digits.starts_with('-')) return std::nullopt;
  }
  double value = 0;
  const char* end = digits.data() + digits.size();
  const auto [rest, fault] = std::from_chars(digits.data(), end, value);
  if (fault != std::errc() || rest != end) return std::nullopt;
  return value;
}

double Numbers::ToDouble(std::string_view text) const {
  if (const auto value = ParseEither(*this, text)) return *value;
  throw Error("\"" + std::string(text) + "\" is not a number.");
}

float Numbers::ToSingle(std::string_view text) const {
  const double value = ToDouble(text);
  if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
    throw Error("\"" + std::string(text) + "\" is too large.");
  return static_cast<float>(value);
}

std::int32_t Numbers::ToWhole(std::string_view text, double lowest, double highest) const {
  const double value = RoundHalfToEven(ToDouble(text));
  if (value >= lowest && value <= highest) return static_cast<std::int32_t>(value);
  throw Error("\"" + std::string(text) + "\" is outside the range " + Text(lowest, 0) + " to " +
              Text(highest, 0) + ".");
}

std::int16_t Numbers::ToInt16(std::string_view text) const {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(ToWhole(text, Limits::min(), Limits::max()));
}

std::int32_t Numbers::ToInt32(std::string_view text) const {
  using Limits = std::numeric_limits<std::int32_t>;
  return ToWhole(text, Limits::min(), Limits::max());
}

std::string Numbers::Text(double value) const {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value == 0.0 ? 0.0 : value,
                                    std::chars_format::general, 15);
  std::string text(buffer, result.ptr);
  std::ranges::replace(text, '.', decimal_);
  return text;
}

std::string Numbers::Text(double value, int precision) const {
  char buffer[400];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, precision);
  std::string text(buffer, result.ptr);
  if (text.find_first_not_of("-0.") == std::string::npos && text.starts_with('-')) text.erase(0, 1);
  std::ranges::replace(text, '.', decimal_);
  return text;
}

}  // namespace base
