// Late-bound objects that live in this process. A class derives from LocalClass<itself> and describes its
// members in one constexpr table kMembers; the same table serves calls inside the process and, through the
// Windows edge, callers in other processes, whose member id is the place in the table plus 1. All members run
// on the owner's thread.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "automation/error.h"
#include "automation/object.h"
#include "base/text.h"

namespace automation {

/// The arguments of one call; an argument that is missing is kBadArgumentCount.
class Arguments {
 public:
  explicit Arguments(std::span<const Value> values) : values_(values) {}

  std::size_t Count() const { return values_.size(); }
  const Value& operator[](std::size_t index) const {
    if (index < values_.size()) return values_[index];
    throw Error(kBadArgumentCount, "Argument " + std::to_string(index + 1) + " is missing.");
  }

 private:
  std::span<const Value> values_;
};

/// One member of class T; a function that is left out says that this kind of access is refused.
template <class T>
struct MemberOf {
  std::string_view name;
  Value (*get)(T&, const Arguments&) = nullptr;
  void (*put)(T&, const Value&) = nullptr;
  Value (*call)(T&, const Arguments&) = nullptr;
  /// A write with arguments in front of the content, which comes last.
  void (*putAt)(T&, const Arguments&) = nullptr;
};

class LocalObject : public Target {
 public:
  /// Place of the member in the table, or -1.
  virtual int Find(std::string_view member) const = 0;
  virtual int MemberCount() const = 0;
  virtual std::string_view MemberName(int place) const = 0;
  /// Whether a write of the member has arguments in front of the content.
  virtual bool HasIndex(int) const { return false; }
  /// kMemberNotFound when the member does not allow this access. A call of a readable member reads it and the
  /// other way round, as late-bound callers do not tell the two apart.
  virtual Value InvokeAt(int place, Access access, std::span<const Value> arguments) = 0;

  Value Invoke(Access access, std::string_view member, std::span<const Value> arguments) final {
    const int place = Find(member);
    if (place < 0) throw Error(kUnknownName, "Unknown member \"" + std::string(member) + "\".");
    return InvokeAt(place, access, arguments);
  }
};

template <class T>
class LocalClass : public LocalObject {
 public:
  int Find(std::string_view member) const final {
    for (std::size_t i = 0; i < std::size(T::kMembers); ++i) {
      if (base::EqualsNoCase(T::kMembers[i].name, member)) return static_cast<int>(i);
    }
    return -1;
  }

  int MemberCount() const final { return static_cast<int>(std::size(T::kMembers)); }
  std::string_view MemberName(int place) const final { return At(place).name; }
  bool HasIndex(int place) const override { return At(place).putAt != nullptr; }

  Value InvokeAt(int place, Access access, std::span<const Value> arguments) final {
    const MemberOf<T>& member = At(place);
    T& self = static_cast<T&>(*this);
    self.BeforeCall(member.name);
    const Arguments list(arguments);
    if (access == Access::kPut) {
      if (member.putAt) {
        member.putAt(self, list);
        return {};
      }
      if (!member.put)
        throw Error(kMemberNotFound, "\"" + std::string(member.name) + "\" cannot be written.");
      member.put(self, list[0]);
      return {};
    }
    const auto first = access == Access::kGet ? member.get : member.call;
    const auto second = access == Access::kGet ? member.call : member.get;
    if (first) return first(self, list);
    if (second) return second(self, list);
    throw Error(kMemberNotFound, "\"" + std::string(member.name) + "\" cannot be read or called.");
  }

  /// Hidden by a class that counts or refuses calls.
  void BeforeCall(std::string_view) {}

 private:
  static const MemberOf<T>& At(int place) { return T::kMembers[static_cast<std::size_t>(place)]; }
};

}  // namespace automation
