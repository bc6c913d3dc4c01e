// Many contents taken at once, in the way of a person: fields follow each other's rules, so what is refused
// now may be taken after another. Taking back, filling in a file and copying a unit go this way.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "fields/page_prompts.h"

namespace fields {

struct Wanted {
  std::string page, field;  // names
  std::string content;      // in the user's notation
  std::string reason = {};  // why it was not taken; empty where there is no such field
};

/// By names; nothing when there is none now. Asked again for each content, as taking one may bring others.
using FindField = std::function<const Field*(std::string_view page, std::string_view field)>;

/// In the order given, again and again until nothing more moves. Nobody is asked. Answers what was not taken.
std::vector<Wanted> TakeAll(const std::vector<Wanted>& wanted, const FindField& find,
                            const base::Numbers& numbers, PagePrompts& prompts);

}  // namespace fields
