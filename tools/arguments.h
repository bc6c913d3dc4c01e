// The command line of the small programs: words, and options as "--name value". Used by every program of this
// folder.
#pragma once

#include <charconv>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "base/error.h"

namespace tools {

class Arguments {
 public:
  /// Throws base::Error when an option is not one of `known`, has no value or comes twice.
  Arguments(int count, char** words, const std::vector<std::string>& known) {
    for (int i = 1; i < count; ++i) {
      const std::string word = words[i];
      if (!word.starts_with("--")) {
        words_.push_back(word);
        continue;
      }
      if (std::ranges::find(known, word) == known.end())
        throw base::Error("There is no option " + word + ".");
      if (i + 1 == count) throw base::Error("The option " + word + " has no value.");
      if (!options_.emplace(word, words[++i]).second)
        throw base::Error("The option " + word + " is given twice.");
    }
  }

  const std::vector<std::string>& Words() const { return words_; }

  std::string Text(const std::string& option, const std::string& usual) const {
    const auto found = options_.find(option);
    return found == options_.end() ? usual : found->second;
  }

  /// A whole number from `lowest` to `highest`. Throws base::Error naming the option.
  long Number(const std::string& option, long usual, long lowest, long highest) const {
    const auto found = options_.find(option);
    return found == options_.end() ? usual : Whole(option, found->second, lowest, highest);
  }

  static long Whole(const std::string& name, const std::string& text, long lowest, long highest) {
    long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size() && number >= lowest && number <= highest)
      return number;
    throw base::Error(name + " must be a whole number from " + std::to_string(lowest) + " to " +
                      std::to_string(highest) + ", not \"" + text + "\".");
  }

 private:
  std::vector<std::string> words_;
  std::map<std::string, std::string> options_;
};

}  // namespace tools
