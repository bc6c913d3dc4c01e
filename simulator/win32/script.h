// The text of a script, read into steps: one line is one step, its words stand between blanks, a word in
// quotation marks may hold blanks and the escapes \" \\ \n \t, a line that starts with # is a remark. ${name}
// stands for a text that an earlier step remembered. Used by the runner alone.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace simhost {

struct Word {
  std::string text;
  bool quoted = false;
};

struct Step {
  std::size_t line = 0;
  std::string source;  // the line as it was written, for messages
  std::vector<Word> words;
};

using Remembered = std::map<std::string, std::string, std::less<>>;

/// The steps of a text. Throws base::Error with the line number: a quotation mark that is not closed, an
/// unknown escape.
std::vector<Step> ParseScript(std::string_view text);

/// The steps of a file. Throws base::Error naming the file, and the line where there is one.
std::vector<Step> ReadScript(const std::filesystem::path& file);

/// The text with every ${name} replaced. Throws base::Error for a name that was never remembered.
std::string Expand(std::string_view text, const Remembered& remembered);

}  // namespace simhost
