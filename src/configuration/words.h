// A fault in the words of the language in use, for boxes and the log.
#pragma once

#include <exception>
#include <string>

#include "shell/strings.h"

namespace configuration {

/// With the reason of the host or the system, where there is one.
std::string WordsOf(const std::exception& error, const shell::Strings& strings);

}  // namespace configuration
