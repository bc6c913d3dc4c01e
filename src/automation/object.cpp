#include "automation/object.h"

#include <cmath>
#include <optional>

#include "automation/error.h"
#include "base/numbers.h"
#include "base/text.h"

namespace automation {
namespace {

[[noreturn]] void Mismatch(const std::string& what) {
  throw Error(kTypeMismatch, "The value is not " + what + ".");
}

// "&H1F" and "&O17", as the platform's languages write them: the bits of a number of 32 bits.
std::optional<double> BitsOf(std::string_view text) {
  text = base::Trim(text);
  if (text.size() < 3 || text[0] != '&') return std::nullopt;
  const char kind = base::Lower(text.substr(1, 1))[0];
  if (kind != 'h' && kind != 'o') return std::nullopt;
  const auto bits = base::ParseWhole<std::uint32_t>(text.substr(2), kind == 'h' ? 16 : 8);
  return bits ? std::optional<double>(static_cast<std::int32_t>(*bits)) : std::nullopt;
}

// A decimal point, whatever the user's notation: what is written in a host's code is the same everywhere.
std::optional<double> NumberOf(std::string_view text) {
  const auto bits = BitsOf(text);
  return bits ? bits : base::Numbers().Parse(text);
}

// Nothing counts as 0, as the platform's conversion of an empty variant has it.
double RealOf(const Value::Content& content, const char* wanted) {
  std::optional<double> number;
  if (std::holds_alternative<std::monostate>(content)) number = 0.0;
  if (const auto* flag = std::get_if<bool>(&content))
    number = *flag ? -1.0 : 0.0;  // the platform's TRUE is -1
  if (const auto* whole = std::get_if<std::int32_t>(&content)) number = *whole;
  if (const auto* real = std::get_if<double>(&content)) number = *real;
  if (const auto* text = std::get_if<std::string>(&content)) number = NumberOf(*text);
  if (!number || !std::isfinite(*number)) Mismatch(wanted);
  return *number;
}

// The words that the platform's VarBoolFromStr takes in every language.
std::optional<bool> FlagOf(const Value::Content& content) {
  const auto* text = std::get_if<std::string>(&content);
  if (!text) return std::nullopt;
  if (base::EqualsNoCase(*text, "True") || *text == "#TRUE#") return true;
  if (base::EqualsNoCase(*text, "False") || *text == "#FALSE#") return false;
  return std::nullopt;
}

// Repeats a type fault with the member's name, so that a message tells where it happened.
template <class Read>
auto Named(std::string_view member, Read read) {
  try {
    return read();
  } catch (const Error& error) {
    throw Error(error.Code(), std::string(member) + ": " + error.Description(), error.Source());
  }
}

}  // namespace

std::string Value::AsText() const {
  if (const auto* text = std::get_if<std::string>(&content_)) return *text;
  if (const auto* flag = std::get_if<bool>(&content_)) return *flag ? "True" : "False";
  if (std::holds_alternative<std::int32_t>(content_) || std::holds_alternative<double>(content_))
    return base::Numbers().Text(RealOf(content_, "a text"));
  Mismatch("a text");
}

bool Value::AsBool() const {
  const auto flag = FlagOf(content_);
  return flag ? *flag : RealOf(content_, "a yes or no") != 0.0;
}

std::int32_t Value::AsWhole() const {
  const double value = base::RoundHalfToEven(RealOf(content_, "a whole number"));
  if (value < -2147483648.0 || value > 2147483647.0)
    throw Error(kOverflow, "The value is not a whole number of 32 bits.");
  return static_cast<std::int32_t>(value);
}

double Value::AsReal() const { return RealOf(content_, "a number"); }

const Bytes& Value::AsBytes() const {
  if (const auto* bytes = std::get_if<Bytes>(&content_)) return *bytes;
  Mismatch("an array of bytes");
}

Object Value::AsObject() const {
  if (const auto* object = std::get_if<Object>(&content_)) return *object;
  if (IsEmpty()) return {};
  Mismatch("an object");
}

const List& Value::AsList() const {
  if (const auto* list = std::get_if<List>(&content_)) return *list;
  Mismatch("a list");
}

Value Object::Invoke(Access access, std::string_view member, std::span<const Value> arguments) const {
  if (!target_) throw Error(kTypeMismatch, "There is no object to ask for " + std::string(member) + ".");
  const std::shared_ptr<Target> target =
      target_;  // this object may be reassigned while the call is under way
  return target->Invoke(access, member, arguments);
}

void Object::Put(std::string_view member, const Value& value) const {
  Invoke(Access::kPut, member, {&value, 1});
}

std::string Object::Text(std::string_view member) const {
  return Named(member, [&] { return Get(member).AsText(); });
}

std::int32_t Object::Whole(std::string_view member) const {
  return Named(member, [&] {
    const Value value = Get(member);
    if (value.IsEmpty()) Mismatch("a whole number");
    return value.AsWhole();
  });
}

Object RequireObject(const Value& value, std::string_view member) {
  return Named(member, [&] {
    Object object = value.AsObject();
    if (!object) Mismatch("an object");
    return object;
  });
}

}  // namespace automation
