// A configuration property of one device: its value as a text in the format and with the decimals last set on
// this object. The value itself lives in the store; two objects may stand on the same value and present it
// differently.
#pragma once

#include <memory>
#include <string>

#include "simulator/core.h"
#include "simulator/value_text.h"

namespace simulator {

class Property : public HostObject<Property> {
 public:
  Property(std::shared_ptr<Core> core, std::string deviceKey, const PropertyTemplate& definition);

  static constexpr std::string_view kClassName = "Property";
  /// Name; formatName (a format of the property's type); Precision (0 to 9, or -1 for the type's own); Value.
  static const automation::MemberOf<Property> kMembers[4];

 private:
  std::string Read() const;
  void Write(const automation::Value& value);
  void SetFormat(const std::string& formatName);
  void SetPrecision(std::int32_t precision);

  std::string deviceKey_;
  PropertyTemplate definition_;
  std::string formatName_;
  Presentation presentation_;
};

/// A network variable: its type, which a caller may change to one of AllowedTypes, and its properties.
class NetworkVariable : public HostObject<NetworkVariable> {
 public:
  NetworkVariable(std::shared_ptr<Core> core, std::string deviceKey, const VariableTemplate& definition);

  static constexpr std::string_view kClassName = "NetworkVariable";
  /// Name; MvFormatType; AllowedTypes (separated by blanks); ConfigProperties.
  static const automation::MemberOf<NetworkVariable> kMembers[4];

 private:
  std::string TypeName() const;
  void ChangeType(const std::string& type);

  std::string deviceKey_;
  VariableTemplate definition_;
  automation::Object properties_;
};

/// The properties of `owner` (its name is for errors) as a collection.
automation::Object MakeProperties(const std::shared_ptr<Core>& core, const std::string& deviceKey,
                                  const std::string& owner, const std::vector<PropertyTemplate>& properties);

}  // namespace simulator
