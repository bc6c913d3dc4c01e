#include "simulator/property.h"

#include <algorithm>

#include "base/text.h"
#include "simulator/collection.h"

namespace simulator {

using automation::Arguments;
using automation::Value;

constexpr automation::MemberOf<Property> Property::kMembers[] = {
    {"Name", [](Property& self, const Arguments&) -> Value { return self.definition_.name; }},
    {"formatName", [](Property& self, const Arguments&) -> Value { return self.formatName_; },
     [](Property& self, const Value& value) { self.SetFormat(value.AsText()); }},
    {"Precision", [](Property& self, const Arguments&) -> Value { return self.presentation_.precision; },
     [](Property& self, const Value& value) { self.SetPrecision(value.AsWhole()); }},
    {"Value", [](Property& self, const Arguments&) -> Value { return self.Read(); },
     [](Property& self, const Value& value) { self.Write(value); }},
};

Property::Property(std::shared_ptr<Core> core, std::string deviceKey, const PropertyTemplate& definition)
    : HostObject(std::move(core)),
      deviceKey_(std::move(deviceKey)),
      definition_(definition),
      formatName_(definition.type->name),
      presentation_{{definition.type, false}, -1, GetCore().numbers} {}

std::string Property::Read() const {
  return FormatValue(presentation_, GetCore().ValueOf(deviceKey_, definition_.key, definition_.initial));
}

void Property::Write(const Value& value) {
  if (definition_.readOnly) Refuse(definition_.name + " cannot be written.");
  const auto* real = std::get_if<double>(&value.Get());
  const std::string text = real ? GetCore().numbers.Text(*real) : value.AsText();
  const Fields& present = GetCore().ValueOf(deviceKey_, definition_.key, definition_.initial);
  Fields next = ParseValue(presentation_, definition_.name, text, present);
  if (next == present) return;
  Refusing([&] {
    GetCore().store.Change(deviceKey_,
                           [&](DeviceValues& device) { device.values[definition_.key] = std::move(next); });
  });
}

void Property::SetFormat(const std::string& formatName) {
  const Format format = GetCore().catalogue.FindFormat(formatName);
  if (format.type != definition_.type) {
    Refuse(definition_.name + " is of type " + definition_.type->name + "; the format \"" + formatName +
           "\" does not fit it.");
  }
  presentation_.format = format;
  formatName_ = formatName;
}

void Property::SetPrecision(std::int32_t precision) {
  if (precision < -1 || precision > 9) {
    Refuse(definition_.name + ": the precision " + std::to_string(precision) +
           " is outside the range 0 to 9.");
  }
  presentation_.precision = precision;
}

constexpr automation::MemberOf<NetworkVariable> NetworkVariable::kMembers[] = {
    {"Name", [](NetworkVariable& self, const Arguments&) -> Value { return self.definition_.name; }},
    {"MvFormatType", [](NetworkVariable& self, const Arguments&) -> Value { return self.TypeName(); },
     [](NetworkVariable& self, const Value& value) { self.ChangeType(value.AsText()); }},
    {"AllowedTypes",
     [](NetworkVariable& self, const Arguments&) -> Value {
       return base::Join(self.definition_.allowedTypes, " ");
     }},
    {"ConfigProperties", [](NetworkVariable& self, const Arguments&) -> Value { return self.properties_; }},
};

NetworkVariable::NetworkVariable(std::shared_ptr<Core> core, std::string deviceKey,
                                 const VariableTemplate& definition)
    : HostObject(std::move(core)),
      deviceKey_(std::move(deviceKey)),
      definition_(definition),
      properties_(MakeProperties(SharedCore(), deviceKey_, definition_.name, definition_.properties)) {}

std::string NetworkVariable::TypeName() const {
  const Fields initial{definition_.type};
  return std::get<std::string>(GetCore().ValueOf(deviceKey_, definition_.key, initial).front());
}

void NetworkVariable::ChangeType(const std::string& type) {
  if (type == TypeName()) return;
  const std::vector<std::string>& allowed = definition_.allowedTypes;
  if (std::ranges::find(allowed, BareType(type)) == allowed.end()) {
    Refuse(definition_.name + ": the type \"" + type +
           "\" is not allowed; allowed: " + base::Join(allowed, ", ") + ".");
  }
  Refusing([&] {
    GetCore().store.Change(deviceKey_, [&](DeviceValues& device) {
      SetVariableType(GetCore().catalogue, definition_, type, device);
    });
  });
}

automation::Object MakeProperties(const std::shared_ptr<Core>& core, const std::string& deviceKey,
                                  const std::string& owner, const std::vector<PropertyTemplate>& properties) {
  CollectionItems items;
  for (const PropertyTemplate& property : properties) {
    items.push_back(
        {property.name, automation::Object(std::make_shared<Property>(core, deviceKey, property))});
  }
  return MakeCollection(core, "ConfigProperties of " + owner, std::move(items));
}

}  // namespace simulator
