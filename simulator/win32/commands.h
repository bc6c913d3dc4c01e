// The commands of the scripts, each a line of a table: its name, how it is written, how many words it takes,
// what it does. A command throws base::Error or automation::Error in words when it does not hold.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "simulator/win32/stage.h"

namespace simhost {

using Words = std::span<const Word>;

struct Command {
  std::string_view name;   // one word or two
  std::string_view usage;  // what follows the name
  std::size_t least;       // number of words behind the name
  std::size_t most;
  void (*run)(Stage& stage, Words words);
};

/// Orders to the host: the tool's automation object, stored values, faults.
std::span<const Command> HostCommands();
/// What a person does at the tool's windows and sees there.
std::span<const Command> WindowCommands();

/// The text that a question of a script is answered with; a text in quotation marks is its own answer. The
/// questions stand in the table at the end of questions.cpp.
std::string Answer(Stage& stage, Words question);
/// How the questions are written, one a line.
std::string QuestionUsage();

/// The window or control of that name; waits until it is there.
HWND Named(Stage& stage, const std::string& name);

/// Throws base::Error when the word is no whole number of 32 bits.
std::int32_t WholeNumber(const Word& word);

/// Nothing when both texts are the same, else what is different.
std::string Difference(std::string_view what, std::string_view expected, std::string_view there);

}  // namespace simhost
