// Makes the help of its topics: one HTML page each, and the project, contents and index files from which the
// help compiler makes the help file.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "help/generator/fields.h"
#include "help/generator/topic.h"

namespace help {

struct Manual {
  std::vector<std::pair<std::string, std::string>> files;  // name and content
  std::set<std::string> pictures;                          // file names
};

/// `topics` in the order of the contents; the first is the one that opens without a number. `pageTopics` are
/// the numbers by which the program asks. Throws base::Error for a number that no topic has or two have, a
/// link to no topic, and what FieldTable finds.
Manual MakeManual(const std::vector<Topic>& topics, const std::vector<Field>& fields,
                  const std::vector<int>& pageTopics);

}  // namespace help
