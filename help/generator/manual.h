// Makes the help in one language of its topics: one HTML page each, and the project, contents and index files
// from which the help compiler makes the help file.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "help/generator/fields.h"
#include "help/generator/language.h"
#include "help/generator/topic.h"

namespace help {

struct Manual {
  std::vector<std::pair<std::string, std::string>> files;  // name and content
  std::set<std::string> pictures;                          // file names
};

/// `topics` in the order of the contents; the first is the one that opens without a number. `asked` are the
/// numbers by which the program asks, each with the page whose fields that topic must explain, or nothing.
/// Throws base::Error for a number that no topic has or two have, a page that its topic does not explain, a
/// link to no topic, and what FieldTable finds.
Manual MakeManual(const Language& language, const std::vector<Topic>& topics,
                  const std::vector<Field>& fields, const std::map<int, std::string>& asked);

}  // namespace help
