// What a check-out leads through: each assigned output that drives its local hardware, in the positions in
// which a person should see it. Read from the device when the check-out begins.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/device_tree.h"

namespace checkout {

/// One output as it is driven while a step stands. `value` and `state` are the fields of its override.
struct Override {
  int output;  // from 1
  std::string function;
  std::string_view value, state;
};

struct Step {
  const char* position;             // "ON", "50 %": a key of the string table
  std::vector<Override> overrides;  // the output that is looked at; behind it the other half of its actuator

  const Override& Looked() const { return overrides.front(); }
};

/// In the order of the outputs. Throws automation::Error or base::Error.
std::vector<Step> ReadSteps(host::DeviceObjects& device);

}  // namespace checkout
