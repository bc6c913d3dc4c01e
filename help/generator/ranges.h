// What each text box of the pages accepts, found by trying: every number that the device keeps is set to its
// lowest and its highest value, and the boxes that follow show their own range, with the decimals and in the
// units that a person meets. Nothing is listed twice, so the help cannot differ from the program.
#pragma once

#include <map>
#include <string>

#include "simulator/catalogue.h"
#include "simulator/template.h"
#include "tests/core/tool.h"

namespace help {

struct Range {
  std::string lowest;
  std::string highest;

  bool operator==(const Range&) const = default;
};

/// By "page.control", for example "fPID.txtPIDTemp(0)".
using Ranges = std::map<std::string, Range>;

class RangeFinder {
 public:
  /// `tool` has its window open on a device. Throws base::Error or automation::Error, as Find does.
  explicit RangeFinder(tests::Tool& tool);

  /// In the units that the tool shows now. Afterwards the device holds the same values as before.
  Ranges Find();

 private:
  enum class End { kLowest, kHighest };
  using Texts = std::map<std::string, std::string>;

  void TryAll(const automation::Object& owner, const std::vector<simulator::PropertyTemplate>& properties);
  void Try(const automation::Object& property, const simulator::Type& type);
  /// The boxes that follow field `only`, or any field when that is kAll.
  Ranges Following(const automation::Object& property, const simulator::Type& type, std::size_t only);
  Texts Shown() const;

  tests::Tool& tool_;
  simulator::TypeCatalogue catalogue_;
  simulator::DeviceTemplate template_;
  Ranges found_;
};

}  // namespace help
