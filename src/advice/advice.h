// What the tool knows of a good unit: a table of rules over the fields as they stand on the pages, edits
// included. Each rule says what it found, why it matters, what to do and where its figure comes from. Knows
// no window and no host and keeps nothing; asked again after each key by whoever lists the advice.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "shell/strings.h"

namespace advice {

enum class Severity { kFault, kHint };

/// The content of a field, as fields::Field has it; nothing where there is no such field or nobody has read
/// it, and then the rules that need it stay silent.
using Contents = std::function<std::optional<std::string>(std::string_view page, std::string_view control)>;

struct Input {
  Contents contents;
  bool imperial = false;  // the units of the contents
  base::Numbers numbers;
};

/// What a rule says, in English: keys of the string table.
struct Rule {
  std::string_view name;  // its identity; never shown
  Severity severity;
  const char* text;  // with the values found as placeholders
  const char* why;
  const char* todo;
  const char* source;  // of its figure: a standard with its section, or practice
};

/// A field that a rule looked at. `held` is what it held then: a number in metric units with a point,
/// whatever units and notation are in use; any other content as it is.
struct Concerned {
  std::string page, control;
  std::string held;
  double rounding = 0;  // numbers no further apart may be the same, read in other units
};

/// A piece of a rule's text: a text as it is shown, a key of the string table, or both with a blank between.
struct Value {
  std::string shown = {};
  std::string word = {};
};

/// One case that a rule found. Its identity is the rule with the names of the fields.
struct Advice {
  const Rule* rule;
  std::vector<Concerned> fields;  // the first is where to go
  std::vector<Value> values;
};

/// Everything that is to be said of the unit: faults first, then hints, each in the order of the rules.
std::vector<Advice> Evaluate(const Input& input);

/// The rule's text with its values, in the language in use.
std::string TextOf(const Advice& advice, const shell::Strings& strings);

}  // namespace advice
