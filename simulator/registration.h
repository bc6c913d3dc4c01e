// The host's registry of plug-ins. A plug-in asks for a new description, sets its values on it and on its
// records DeviceCommand, BlockCommand and DeviceType by whatever member names it uses, and hands it back. The
// member ServerProgId of the description is what tells one plug-in from another: registering it again
// replaces the old entry.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/core.h"

namespace simulator {

/// An object that takes any member: a member comes into being when it is first named.
class PropertyBag : public automation::LocalObject {
 public:
  int Find(std::string_view member) const override;
  int MemberCount() const override { return static_cast<int>(entries_.size()); }
  std::string_view MemberName(int place) const override {
    return entries_[static_cast<std::size_t>(place)].first;
  }
  automation::Value InvokeAt(int place, automation::Access access,
                             std::span<const automation::Value> arguments) override;

  /// Adds a member that callers can read and not replace.
  void AddRecord(const std::string& name);
  std::string Text(std::string_view member) const;
  /// The values that were set, as texts, without the records.
  RegistrationRecord Values() const;
  /// The record of that name, or nothing.
  std::shared_ptr<PropertyBag> Record(std::string_view name) const;

 private:
  // Naming a member adds it, and late-bound callers name a member before they use it: hence mutable.
  mutable std::vector<std::pair<std::string, automation::Value>> entries_;
};

class Registration : public HostObject<Registration> {
 public:
  using HostObject::HostObject;

  static constexpr std::string_view kClassName = "Registration";
  /// NewDescription(); Register(description); Deregister(description), refused when it is not registered.
  static const automation::MemberOf<Registration> kMembers[3];

 private:
  void Register(const automation::Arguments& arguments);
  void Deregister(const automation::Arguments& arguments);
};

}  // namespace simulator
