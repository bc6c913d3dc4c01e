#include "base/text.h"

#include <algorithm>

namespace base {
namespace {

char UpperLetter(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}
char LowerLetter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string Transformed(std::string_view text, char (*change)(char)) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), change);
  return result;
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Upper(std::string_view text) { return Transformed(text, UpperLetter); }
std::string Lower(std::string_view text) { return Transformed(text, LowerLetter); }

std::string Fold(std::string_view text) {
  // The letters U+00C0 to U+00FF; a blank stands for one that is kept.
  static constexpr std::string_view kPlain =
      "aaaaaa ceeeeiiii nooooo ouuuuy saaaaaa ceeeeiiii nooooo ouuuuy y";
  static constexpr unsigned char kLead = 0xC3;  // of these letters in UTF-8
  std::string folded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char plain = static_cast<unsigned char>(text[i]) == kLead && i + 1 < text.size()
                           ? kPlain[static_cast<unsigned char>(text[i + 1]) & 0x3FU]
                           : ' ';
    if (plain == ' ') {
      folded += Lower(text.substr(i, 1));
      continue;
    }
    folded += plain;
    const bool sharpS = static_cast<unsigned char>(text[++i]) == 0x9F;
    if (sharpS) folded += plain;
  }
  return folded;
}

bool EqualsNoCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, UpperLetter, UpperLetter);
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  for (;;) {
    const auto end = text.find(separator);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + separator.size());
  }
}

std::string Join(const std::vector<std::string>& pieces, std::string_view separator) {
  std::string result;
  for (const auto& piece : pieces) {
    if (&piece != &pieces.front()) result += separator;
    result += piece;
  }
  return result;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  return Join(Split(text, from), to);
}

}  // namespace base
