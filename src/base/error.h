// The exception types for faults that the tool itself finds: a text that is no number, a record that is too
// short, a file that cannot be read. Their text is a sentence for the user. Faults of host objects are
// automation::Error.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace base {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A sentence that the string table can translate: `text` is English and has a place "%s1%", "%s2%" for each
/// of `arguments`.
class WordedError : public Error {
 public:
  WordedError(std::string_view text, std::vector<std::string> arguments);

  const std::string& Text() const { return text_; }
  const std::vector<std::string>& Arguments() const { return arguments_; }

 private:
  std::string text_;
  std::vector<std::string> arguments_;
};

}  // namespace base
