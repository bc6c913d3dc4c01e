#include "help/generator/topic.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/error.h"
#include "base/numbers.h"
#include "base/text.h"

namespace help {
namespace {

constexpr std::string_view kFields = "{fields}";
constexpr std::string_view kEnd = "{end}";

std::vector<std::string> TrimmedPieces(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  for (const std::string& piece : base::Split(text, separator)) {
    if (!base::Trim(piece).empty()) pieces.emplace_back(base::Trim(piece));
  }
  return pieces;
}

class Parser {
 public:
  Parser(std::string_view name, std::string_view content) : lines_(base::Split(content, "\n")), name_(name) {
    const std::size_t dash = name_.find('-');
    topic_.file = dash == std::string::npos ? name_ : name_.substr(dash + 1);
  }

  Topic Parse() {
    for (; at_ < lines_.size() && !lines_[at_].empty(); ++at_) TakeProperty(lines_[at_]);
    if (topic_.title.empty()) Fail("it has no title");
    for (; at_ < lines_.size(); ++at_) TakeLine(lines_[at_]);
    if (inNotes_) Fail("{fields} without {end}");
    if (!translated_ && topic_.page.empty() != topic_.notes.empty())
      Fail("a page needs notes between {fields} and {end}");
    return std::move(topic_);
  }

 private:
  [[noreturn]] void Fail(const std::string& fault) const {
    throw base::Error(fmt::format("{}, line {}: {}", name_, at_ + 1, fault));
  }

  void TakeProperty(std::string_view line) {
    const std::size_t colon = line.find(':');
    const std::string_view key = line.substr(0, colon);
    const std::string_view value = colon == line.npos ? "" : base::Trim(line.substr(colon + 1));
    if (key == "title") {
      topic_.title = value;
    } else if (key == "number") {
      topic_.number = base::Numbers().ToInt16(value);
    } else if (key == "page") {
      topic_.page = value;
    } else if (key == "english") {
      translated_ = true;  // scripts/check-translations.sh compares
    } else if (key == "keywords") {
      topic_.keywords = TrimmedPieces(value, ";");
    } else {
      Fail(fmt::format("\"{}\" is no property of a topic", line));
    }
  }

  void TakeLine(const std::string& line) {
    if (line == kFields || line == kEnd) {
      if (inNotes_ == (line == kFields)) Fail(line + " is out of place");
      inNotes_ = line == kFields;
      if (inNotes_) topic_.text += line + "\n";
    } else if (!inNotes_) {
      topic_.text += line + "\n";
    } else if (line.starts_with('[') && line.ends_with(']')) {
      topic_.notes.push_back({TrimmedPieces(line.substr(1, line.size() - 2), " "), ""});
    } else if (!topic_.notes.empty()) {
      topic_.notes.back().text += line + "\n";
    } else if (!line.empty()) {
      Fail("an explanation stands before its first [control]");
    }
  }

  std::vector<std::string> lines_;
  std::string name_;
  Topic topic_;
  std::size_t at_ = 0;
  bool inNotes_ = false;
  bool translated_ = false;
};

}  // namespace

Topic ParseTopic(std::string_view name, std::string_view content) { return Parser(name, content).Parse(); }

std::vector<Topic> Translated(std::vector<Topic> english, const std::vector<Topic>& topics) {
  for (const Topic& topic : topics) {
    const auto found = std::ranges::find(english, topic.file, &Topic::file);
    if (found == english.end()) throw base::Error(topic.file + ": there is no such topic in English");
    if (found->notes.empty() != topic.notes.empty())
      throw base::Error(topic.file + ": the English topic and this one do not explain the same fields");
    Topic translated = topic;
    translated.number = found->number;
    translated.page = found->page;
    *found = std::move(translated);
  }
  return english;
}

bool Names(std::string_view name, std::string_view control) {
  return control == name || (control.starts_with(name) && control[name.size()] == '(');
}

}  // namespace help
