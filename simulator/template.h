// The device template: which LonMark objects, network variables and configuration properties a controller
// has, with their types and default values. device.json is its readable source. Its loadable form is a .bin
// file, all numbers little-endian: "KVTN", format version (2 bytes), length of the rest behind the header (4
// bytes), CRC-32 of that rest (4 bytes), then the JSON text in UTF-8. The device takes it through AddLmo.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/object.h"
#include "simulator/catalogue.h"

namespace simulator {

/// The field of SCPTnvType that carries the number of the variable's type.
inline constexpr std::size_t kNvTypeIndexField = 9;

struct PropertyTemplate {
  std::string name;
  std::string key;  // where the value is kept: "RoofTopObject.30", "RoofTopObject/nviCO2.1"; aliases share it
  const Type* type = nullptr;
  Fields initial;
  bool readOnly = false;
};

/// Owner and number of "RoofTopObject.30" or "RoofTopObject/nviCO2.1"; nothing for the key of a variable.
std::optional<std::pair<std::string, int>> SplitKey(const std::string& key);

/// True for a property that follows the type of its variable.
bool CarriesNvType(const PropertyTemplate& property);

struct VariableTemplate {
  std::string name;
  std::string key;   // where a changed type is kept: "RoofTopObject/nviCO2"
  std::string type;  // type name, with or without a scope before a point
  std::vector<std::string> allowedTypes;
  std::vector<PropertyTemplate> properties;
};

struct ObjectTemplate {
  std::string name;
  std::vector<PropertyTemplate> properties;
  std::vector<VariableTemplate> variables;
};

struct DeviceTemplate {
  std::string programId;
  std::string version;
  std::vector<ObjectTemplate> objects;

  /// Property `number` (from 1) of the object or variable `owner` ("RoofTopObject", "RoofTopObject/nviCO2"),
  /// or nothing.
  const PropertyTemplate* FindProperty(std::string_view owner, int number) const;
  /// The variable with that key, or nothing.
  const VariableTemplate* FindVariable(std::string_view key) const;
};

/// The loadable form of a JSON text; the text itself is not examined.
automation::Bytes PackTemplate(std::string_view json);

/// The JSON text of a loadable template. Throws base::Error for a wrong mark, version, length or checksum.
std::string UnpackTemplate(const automation::Bytes& bytes);

/// Throws base::Error saying where the text is no template: bad JSON, a missing member, an unknown type, a
/// default outside its type, a property number that is missing or there twice, an alias to nothing.
DeviceTemplate ReadTemplate(std::string_view json, const TypeCatalogue& catalogue);

/// "8000AB0C12340001" and "3.1" give "8000AB0C12340001_3_1.bin".
std::string TemplateFileName(std::string_view programId, std::string_view version);

}  // namespace simulator
