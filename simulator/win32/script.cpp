#include "simulator/win32/script.h"

#include <fstream>
#include <iterator>

#include "base/error.h"
#include "base/text.h"

namespace simhost {
namespace {

constexpr std::string_view kBlanks = " \t";

class LineReader {
 public:
  LineReader(std::string_view line, std::size_t number) : rest_(line), number_(number) {}

  std::vector<Word> Words() {
    std::vector<Word> words;
    while (SkipBlanks()) words.push_back(rest_.front() == '"' ? Quoted() : Plain());
    return words;
  }

 private:
  bool SkipBlanks() {
    const std::size_t start = rest_.find_first_not_of(kBlanks);
    rest_.remove_prefix(start == rest_.npos ? rest_.size() : start);
    return !rest_.empty();
  }

  Word Plain() {
    const std::size_t end = std::min(rest_.find_first_of(kBlanks), rest_.size());
    Word word{std::string(rest_.substr(0, end)), false};
    rest_.remove_prefix(end);
    return word;
  }

  Word Quoted() {
    Word word{{}, true};
    for (std::size_t i = 1; i < rest_.size(); ++i) {
      if (rest_[i] == '"') {
        rest_.remove_prefix(i + 1);
        return word;
      }
      word.text += rest_[i] == '\\' ? Escaped(++i) : rest_[i];
    }
    Fail("the closing quotation mark is missing");
  }

  char Escaped(std::size_t place) const {
    const char mark = place < rest_.size() ? rest_[place] : ' ';
    if (mark == '"' || mark == '\\') return mark;
    if (mark == 'n') return '\n';
    if (mark == 't') return '\t';
    Fail(std::string("unknown escape \\") + mark);
  }

  [[noreturn]] void Fail(const std::string& what) const {
    throw base::Error("line " + std::to_string(number_) + ": " + what);
  }

  std::string_view rest_;
  std::size_t number_;
};

}  // namespace

std::vector<Step> ParseScript(std::string_view text) {
  std::vector<Step> steps;
  std::size_t number = 0;
  for (const std::string& raw : base::Split(text, "\n")) {
    ++number;
    std::string_view line = raw;
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::size_t start = line.find_first_not_of(kBlanks);
    if (start == line.npos || line[start] == '#') continue;
    line.remove_prefix(start);
    steps.push_back({number, std::string(line), LineReader(line, number).Words()});
  }
  return steps;
}

std::vector<Step> ReadScript(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw base::Error("The script " + file.string() + " cannot be read.");
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  try {
    return ParseScript(text);
  } catch (const base::Error& error) {
    throw base::Error(file.string() + ", " + error.what());
  }
}

std::string Expand(std::string_view text, const Remembered& remembered) {
  std::string result;
  while (!text.empty()) {
    const std::size_t start = text.find("${");
    const std::size_t end = start == text.npos ? text.npos : text.find('}', start);
    if (end == text.npos) break;
    const std::string_view name = text.substr(start + 2, end - start - 2);
    const auto found = remembered.find(name);
    if (found == remembered.end())
      throw base::Error("nothing is remembered as \"" + std::string(name) + "\"");
    result.append(text.substr(0, start)).append(found->second);
    text.remove_prefix(end + 1);
  }
  return result.append(text);
}

}  // namespace simhost
