// What the pages of control parameters share beyond PageBase: their values are configuration properties of
// the rooftop object, bound to formats by a table, read and written as records, and the option record that
// several pages share.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
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
  int metricPrecision;  // decimals; kHostPrecision: as the host has them
  int imperialPrecision;
};

/// A property of one field and the box that shows it.
struct PropertyBox {
  const PropertyFormat& property;
  ui::TextBox& box;
};

class ControlPage : public PageBase {
 protected:
  using PageBase::PageBase;

  /// Sets the format names of the properties in the order of the table, in the unit system in use.
  void BindFormats(std::span<const PropertyFormat> table);
  /// Reads the properties for their boxes, and writes the boxes to them, in the order given.
  void ReadBoxes(const std::vector<PropertyBox>& boxes);
  void WriteBoxes(const std::vector<PropertyBox>& boxes);
  /// Sets the precision and reads the value; and writes boxes as the fields of one whole value.
  std::string ReadText(const PropertyFormat& property);
  void WriteFields(const PropertyFormat& property, const std::vector<const ui::TextBox*>& boxes);
  /// Sets the precision and reads the value as a record.
  base::Record ReadRecord(const PropertyFormat& property);
  /// Read-modify-write: `change` replaces fields of the present value, all others are written back as they
  /// were read.
  using Change = std::function<void(host::Edit&)>;
  void ChangeRecord(const PropertyFormat& property, const Change& change);

  /// The option record that several pages share; each touches only its own fields.
  static constexpr std::string_view kOptionsType = "UCPTobjectOptions";
  base::Record ReadOptions();
  void ChangeOptions(const Change& change);

  /// The content of a box as a whole number, halves to the even one. Throws base::Error with the name of the
  /// property when it is none.
  std::int32_t WholeNumber(std::string_view property, const ui::Control& box) const;

  /// Field 0 of the function that is stored for each control output, for outputs 1 to 7, in upper case.
  std::vector<std::string> AssignedFunctions();
  /// The functions chosen for them at this moment, also before they are saved.
  std::vector<std::string> SelectedFunctions() const;
  bool Assigned(std::string_view function) const {
    return Context().selections.GetOutputTypeSelectedIndex(function) != -1;
  }

 private:
  host::Property& Property(int number) { return Context().device.RoofTopProperties[number]; }
  /// Decimals in the unit system in use.
  int Precision(const PropertyFormat& property) const {
    return IsImperial() ? property.imperialPrecision : property.metricPrecision;
  }
};

}  // namespace pages
