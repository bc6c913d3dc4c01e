// What the pages of control parameters share beyond PageBase: their values are configuration properties of
// the rooftop object, bound to formats by a table, read and written as records, and the option record that
// several pages share.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/record.h"
#include "pages/page_base.h"

namespace pages {

/// What a property's format name ends in: nothing; the unit suffix ("#SI" metric, "#US" imperial); or nothing
/// in metric and "#DegF" in imperial units, for a temperature difference.
enum class Units { kNone, kSuffixed, kImperialDegrees };

/// One configuration property of the rooftop object as a page uses it.
struct PropertyFormat {
  int number;
  std::string_view type;  // the format name without its unit suffix
  Units units;
  int metricPrecision;  // decimals
  int imperialPrecision;
};

/// A property of one field and the box that shows it.
using PropertyBox = std::pair<const PropertyFormat&, ui::TextBox&>;

class ControlPage : public PageBase {
 protected:
  using PageBase::PageBase;

  /// Sets the format names of the properties in the order of the table, in the unit system in use.
  void BindFormats(std::span<const PropertyFormat> table);
  /// Sets the precision and reads the value; and writes a value of one field.
  std::string ReadText(const PropertyFormat& property);
  void WriteText(const PropertyFormat& property, const ui::TextBox& box);
  /// Sets the precision and reads the value as a record.
  base::Record ReadRecord(const PropertyFormat& property);
  /// Read-modify-write: `change` replaces fields of the present value, all others are written back as they
  /// were read.
  void ChangeRecord(const PropertyFormat& property, const std::function<void(base::Record&)>& change);

  /// The option record that several pages share; each touches only its own fields.
  base::Record ReadOptions();
  void ChangeOptions(const std::function<void(base::Record&)>& change);

  /// Field 0 of the function that is assigned to each control output, for outputs 1 to 7.
  std::vector<std::string> AssignedFunctions();

 private:
  const automation::Object& Property(int number) { return Context().device.RoofTopProperties[number]; }
};

}  // namespace pages
