// The words of the link. It knows no string table: whoever owns a client hands in how a sentence is said.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace serverlink {

/// Gives a whole English sentence in the user's language, with its placeholders (%s1%, %s2% ...) replaced by
/// the arguments, of which there may be more than placeholders.
using Texts = std::function<std::string(std::string_view english, const std::vector<std::string>& arguments)>;

}  // namespace serverlink
