// What differs between a unit and a document: one line for each field of either. Shown by the window of
// differences, and answered to scripts.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/snapshot.h"
#include "host/journal.h"

namespace configuration {

struct Difference {
  enum class Kind { kEqual, kDiffers, kCannotBeWritten, kOnlyHere, kOnlyThere };

  Kind kind = Kind::kEqual;
  std::string page, control;  // of the field
  std::string name;           // as fields::PathOf; of one that is not here as the document calls it
  std::string here, there;    // as a person reads them
  std::string unit;
  std::string content;     // there, in the user's notation
  bool ofOneUnit = false;  // not for another unit
};

/// In the order of `here`; what is only in the document comes last. A field that does not apply is told where
/// the document has it.
std::vector<Difference> Compare(const std::vector<Held>& here, const Document& there,
                                const base::Numbers& numbers);

/// Whether two contents are the same as far as the first of them shows: a number is rounded to its decimals.
bool EqualAsShown(const base::Numbers& numbers, std::string_view shown, std::string_view other);

/// Whether the host may have cut the number off: it has as many decimals as hosts give.
bool MayBeCut(const base::Numbers& numbers, std::string_view content);

/// `shown` with the further digits of `exact` where both are the same number as far as it is shown.
std::string WithDigits(const base::Numbers& numbers, const std::string& shown, const std::string& exact);

/// The content of a field before the save under way, with all the digits of what that save has changed.
class DigitsBefore {
 public:
  explicit DigitsBefore(const host::Journal& journal);
  std::string operator()(const Held& held) const;

 private:
  base::Numbers numbers_;
  std::map<std::string, std::string> changed_;  // what stood there, by page class, point, control name
};

}  // namespace configuration
