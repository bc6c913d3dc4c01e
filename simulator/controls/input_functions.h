// What the maker knows of the functions that an input can have: which sensors can serve it, in which unit it
// is measured and as which types its value can be published.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace controls {

struct InputFunction {
  std::string_view name;
  std::string_view choices;  // numbers of the sensor choices, separated by commas
  std::string_view unit;
  std::string_view types;  // blank-separated
};

/// The functions that the input may have: the stored one, or, when the choice list does not belong to it (it
/// was changed and not yet stored), all that the list belongs to.
std::vector<const InputFunction*> FunctionsFor(std::string_view stored, std::string_view choices);

/// The unit that all of them share, else nothing.
std::string UnitOf(const std::vector<const InputFunction*>& functions);

/// What is published in a network-variable type, for people; nothing for an unknown one.
std::string_view Meaning(std::string_view type);

}  // namespace controls
