// The command line of the small programs: words, and options as "--name value"; and what all of them answer
// with. Used by every program of this folder.
#pragma once

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "base/numbers.h"

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
    const auto number = base::ParseWhole<long>(text);
    if (number && *number >= lowest && *number <= highest) return *number;
    throw base::Error(name + " must be a whole number from " + std::to_string(lowest) + " to " +
                      std::to_string(highest) + ", not \"" + text + "\".");
  }

 private:
  std::vector<std::string> words_;
  std::map<std::string, std::string> options_;
};

/// Runs what `read` makes of the command line. Answers the exit code of the program: 1 when `run` fails, 2
/// when the command line is wrong.
template <class Read, class Run>
int Main(int count, char** words, const std::string& usage, Read read, Run run) {
  try {
    if (count == 2 && std::string_view(words[1]) == "--help") return std::fputs(usage.c_str(), stdout) < 0;
    const auto order = read(count, words);
    try {
      run(order);
      return 0;
    } catch (const std::exception& error) {
      std::fprintf(stderr, "%s\n", error.what());
      return 1;
    }
  } catch (const base::Error& error) {
    std::fprintf(stderr, "%s\n\n%s", error.what(), usage.c_str());
    return 2;
  }
}

}  // namespace tools
