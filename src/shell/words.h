// A fault in words for a person, whichever room threw it. Called where a command or a work in the background
// ends, to be shown, logged or kept in a result.
#pragma once

#include <exception>
#include <string>

#include "shell/strings.h"

namespace shell {

/// In the language in use, with what the host said where it had a reason.
std::string InWords(const Strings& strings, const std::exception& error);

}  // namespace shell
