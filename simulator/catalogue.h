// The type catalogue: what every value of the controller is made of. A type is a list of fields; a field
// knows its kind, unit, range, decimals and, for an enumeration, its names and codes. A format name is a type
// name, alone or with the suffix #SI, #US or #DegF. Values are kept in SI units at full precision; only texts
// know the other units.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace simulator {

enum class Kind { kNumber, kWhole, kEnumeration, kText, kFlag };

/// shown = stored * factor / divisor + offset for the second system of units; without one `us` is empty.
struct Unit {
  std::string si;
  std::string us;
  double factor = 1;
  double divisor = 1;
  double offset = 0;
  int usDecimals = 0;  // decimals that the second system shows beyond a field's own
};

using Names = std::vector<std::pair<std::string, double>>;

struct Field {
  std::string label;  // for messages; empty in a type of one field
  Kind kind = Kind::kNumber;
  const Unit* unit = nullptr;
  double lowest = 0;   // SI; for a text 0
  double highest = 0;  // SI; for a text its longest length in characters
  int precision = 0;
  const Names* names = nullptr;
};

struct Type {
  std::string name;
  std::vector<Field> fields;
  int index = 0;  // standard number of a network-variable type, else 0
  bool hasUs = false;
  bool hasDegF = false;
};

/// One field: a number (also the code of an enumeration, 0 or 1 of a flag) or a text.
using FieldValue = std::variant<double, std::string>;
using Fields = std::vector<FieldValue>;

struct Format {
  const Type* type = nullptr;
  bool us = false;
};

class TypeCatalogue {
 public:
  /// Reads types.json. Throws base::Error naming the type and what is wrong with it.
  explicit TypeCatalogue(const std::filesystem::path& file);
  TypeCatalogue(const TypeCatalogue&) = delete;
  TypeCatalogue& operator=(const TypeCatalogue&) = delete;

  /// The type, or nothing.
  const Type* Find(std::string_view name) const;
  /// Throws automation::Error (application-defined) for an unknown type or a suffix that the type does not
  /// have.
  Format FindFormat(std::string_view formatName) const;

  const std::map<std::string, Type, std::less<>>& Types() const { return types_; }

 private:
  std::map<std::string, Unit, std::less<>> units_;
  std::map<std::string, Names, std::less<>> enumerations_;
  std::map<std::string, Type, std::less<>> types_;
};

}  // namespace simulator
