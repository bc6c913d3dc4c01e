// Late-bound objects: the tool reaches everything of the host by member name. Object is a small value that
// can be copied freely; behind it stands a Target, either a COM object of another process or a LocalObject of
// this one, and the caller cannot tell which. Every failure is an automation::Error.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace automation {

class Value;

enum class Access { kGet, kPut, kCall };

/// What an Object stands on. `member` is compared without regard to case. kPut has exactly one argument.
class Target {
 public:
  virtual ~Target() = default;
  virtual Value Invoke(Access access, std::string_view member, std::span<const Value> arguments) = 0;
};

class Object {
 public:
  Object() = default;
  explicit Object(std::shared_ptr<Target> target) : target_(std::move(target)) {}

  explicit operator bool() const { return target_ != nullptr; }
  const std::shared_ptr<Target>& GetTarget() const { return target_; }

  template <class... Arguments>
  Value Get(std::string_view member, Arguments&&... arguments) const;
  void Put(std::string_view member, const Value& value) const;
  template <class... Arguments>
  Value Call(std::string_view member, Arguments&&... arguments) const;

  /// Reads that insist on a type; another type, or nothing, is kTypeMismatch naming the member.
  std::string Text(std::string_view member) const;
  std::int32_t Whole(std::string_view member) const;
  /// A missing object (nothing) is kTypeMismatch too.
  template <class... Arguments>
  Object Child(std::string_view member, Arguments&&... arguments) const;

 private:
  Value Invoke(Access access, std::string_view member, std::span<const Value> arguments) const;

  std::shared_ptr<Target> target_;
};

using Bytes = std::vector<std::uint8_t>;
using List = std::vector<Value>;

/// One argument or result: nothing, boolean, whole number, real number, UTF-8 text, bytes, an object or, as a
/// result only, a list of further ones.
class Value {
 public:
  Value() = default;
  Value(bool value) : content_(value) {}
  Value(std::int32_t value) : content_(value) {}
  Value(double value) : content_(value) {}
  Value(std::string value) : content_(std::move(value)) {}
  Value(std::string_view value) : content_(std::string(value)) {}
  Value(const char* value) : content_(std::string(value)) {}
  Value(Bytes value) : content_(std::move(value)) {}
  Value(Object value) : content_(std::move(value)) {}
  Value(List value) : content_(std::move(value)) {}

  bool IsEmpty() const { return std::holds_alternative<std::monostate>(content_); }

  /// The content as the named type, converted as the platform does (object.cpp). What does not convert throws
  /// kTypeMismatch, infinity too; a whole number beyond 32 bits kOverflow. Nothing is 0 and no, but no text.
  std::string AsText() const;
  bool AsBool() const;
  std::int32_t AsWhole() const;
  double AsReal() const;
  const Bytes& AsBytes() const;
  /// The object, which may be nothing.
  Object AsObject() const;
  const List& AsList() const;

  using Content = std::variant<std::monostate, bool, std::int32_t, double, std::string, Bytes, Object, List>;
  const Content& Get() const { return content_; }

 private:
  Content content_;
};

template <class... Arguments>
Value Object::Get(std::string_view member, Arguments&&... arguments) const {
  const std::vector<Value> list{Value(std::forward<Arguments>(arguments))...};
  return Invoke(Access::kGet, member, list);
}

template <class... Arguments>
Value Object::Call(std::string_view member, Arguments&&... arguments) const {
  const std::vector<Value> list{Value(std::forward<Arguments>(arguments))...};
  return Invoke(Access::kCall, member, list);
}

/// Throws kTypeMismatch naming the member unless `value` is an object.
Object RequireObject(const Value& value, std::string_view member);

template <class... Arguments>
Object Object::Child(std::string_view member, Arguments&&... arguments) const {
  return RequireObject(Get(member, std::forward<Arguments>(arguments)...), member);
}

}  // namespace automation
