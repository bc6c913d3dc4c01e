// The functions that a hardware input can be given, what the sensor dialog may offer for each, the sensor
// that each usually has, and the defaults that the page offers to load.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"

namespace host {

inline constexpr std::string_view kUnused = "UNUSED";

struct InputFunction {
  std::string_view name;
  std::string_view choices;      // sensor-choice numbers for the sensor dialog; empty: nothing to configure
  std::string_view usualSensor;  // empty: any of its choices
};

std::span<const InputFunction> InputFunctions();

/// The row of a function, or nothing for an unknown name.
const InputFunction* FindInputFunction(std::string_view function);

/// One property of an input that the defaults set.
struct DefaultValue {
  int number;  // among the input's configuration properties
  std::string_view format;
  std::string text;
};

/// The defaults of a function: its sensor type, its scaling and the type of the variable that publishes the
/// value.
struct InputDefaults {
  std::vector<DefaultValue> properties;
  std::string_view variableType;
};

/// Nothing for a function that has no defaults to offer. Numbers are written in the user's notation.
std::optional<InputDefaults> DefaultsOf(std::string_view function, const base::Numbers& numbers);

}  // namespace host
