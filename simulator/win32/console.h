// The standard output that the program was started with: a pipe, a file or the console of the shell. A
// program with windows has none of its own. Lines are UTF-8; without an output they are dropped.
#pragma once

#include <string_view>

namespace simhost {

/// To be called once, first: takes the console of the program that started this one when nothing else was
/// handed down.
void OpenConsole();

/// Writes the text and a line end at once, so that nothing is lost when the program ends early.
void WriteLine(std::string_view text);

}  // namespace simhost
