// Numbers from text and back, by the rules of the platform's automation library: the user's decimal
// separator, surrounding blanks allowed, whole numbers rounded half to even, overflow an error. Used by every
// page and rule.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace base {

class Numbers {
 public:
  /// `decimal` is the user's decimal separator (a point or a comma, as a rule).
  explicit Numbers(char decimal = '.') : decimal_(decimal) {}

  char Decimal() const { return decimal_; }

  /// True for an optional sign, digits, the decimal separator and an exponent, within the range of a double.
  bool IsNumber(std::string_view text) const { return Parse(text).has_value(); }

  /// The number, or nothing when the text is none.
  std::optional<double> Parse(std::string_view text) const;

  /// The number that ParseEither reads: also what a host wrote with a point. These throw base::Error with the
  /// offending text when it is none or does not fit.
  double ToDouble(std::string_view text) const;
  float ToSingle(std::string_view text) const;
  std::int16_t ToInt16(std::string_view text) const;
  std::int32_t ToInt32(std::string_view text) const;

  /// The shortest text that gives `value` again (15 digits at most), with the user's decimal separator.
  std::string Text(double value) const;

  /// `value` with exactly `precision` decimals (0 to 9), with the user's decimal separator; never "-0".
  std::string Text(double value, int precision) const;

 private:
  std::int32_t ToWhole(std::string_view text, double lowest, double highest) const;

  char decimal_;
};

/// A number as people or hosts write it: with the user's decimal separator, or with a point.
std::optional<double> ParseEither(const Numbers& numbers, std::string_view text);

/// The whole number that the text is, written with nothing but digits and "-"; nothing when it is another
/// text, or one that does not fit.
template <class Whole>
std::optional<Whole> ParseWhole(std::string_view text, int base = 10) {
  Whole whole = 0;
  const char* end = text.data() + text.size();
  const auto [rest, fault] = std::from_chars(text.data(), end, whole, base);
  return fault == std::errc() && rest == end ? std::optional(whole) : std::nullopt;
}

/// The nearest whole number, halves to the even one, as the platform's automation conversions do.
double RoundHalfToEven(double value);

}  // namespace base
