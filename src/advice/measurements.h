// What the unit can measure: by a function of its inputs, or by a variable that the network sends.
#pragma once

#include <string_view>
#include <vector>

#include "advice/unit.h"

namespace advice {

/// One is enough of several functions or variables.
struct Measurement {
  std::vector<std::string_view> inputs;
  std::vector<std::string_view> variables;

  /// An input has a function, or the network is known to send a variable: its receive time is not 0.
  bool IsThere(const Unit& unit) const;
  /// No input has a function, and no variable has a receive time. What is not known counts as neither.
  bool IsMissing(const Unit& unit) const;
  /// The receive times.
  std::vector<Place> Places() const;
};

extern const Measurement kSpaceTemp, kReturnTemp, kSupplyTemp, kMixedTemp, kOutdoorTemp, kOutdoorAir, kWater,
    kSpaceHumidity, kCO2, kSupplyPressure, kDuctPressure, kPressure, kFanState, kAuxiliaryAlarm;

}  // namespace advice
