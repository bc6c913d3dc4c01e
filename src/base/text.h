// Small operations on UTF-8 texts that every room uses: trimming, case, splitting, replacing.
// Case operations change the letters A to Z only, so they never damage a multi-byte character.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

/// The text without leading and trailing blanks (only the blank character, not tabs or line breaks).
std::string_view Trim(std::string_view text);

std::string Upper(std::string_view text);
std::string Lower(std::string_view text);

/// For comparing what people type in Western European languages: lower case, without accents ("Köhler-Größe"
/// becomes "kohler-grosse").
std::string Fold(std::string_view text);

/// True when both texts are the same but for the case of the letters A to Z.
bool EqualsNoCase(std::string_view left, std::string_view right);

/// The pieces between separators; always at least one piece, which may be empty.
std::vector<std::string> Split(std::string_view text, std::string_view separator);

std::string Join(const std::vector<std::string>& pieces, std::string_view separator);

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace base
