// The one exception type for faults that the tool itself finds: a text that is no number, a record that is
// too short, a file that cannot be read. Its text is a sentence for the user. Faults of host objects are
// automation::Error.
#pragma once

#include <stdexcept>
#include <string>

namespace base {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace base
