// Where the parts of a file stand, for messages that name a line. The first of two looks at a file: it finds
// what no reader of JSON tells, a name that stands twice in an object. Asked by the reader of documents.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace configuration {

struct Places {
  std::map<std::string, std::size_t> head;  // the lines of the names of the outermost object
  std::vector<std::size_t> fields;          // the lines in which the items of its list "fields" begin
};

/// Throws base::WordedError, with the line, when the text is no JSON or when the head or a field has a part
/// twice.
Places FindPlaces(std::string_view text);

}  // namespace configuration
