// The languages of the help, and the words that it adds to those of its topics and of the program's pages.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace help {

struct Language {
  std::string_view name;     // of the folder of its topics, as the host's language component names it
  std::string_view code;     // of its pages (BCP 47)
  std::string_view project;  // of the help file: the number that Windows gives it, and its name
  std::string_view help;     // "Help", in the title of its window
  std::string_view field, accepts, meaning;  // heads of the tables
  std::string_view range;                    // with places for both ends
  std::string_view onOrOff, oneOfGroup;
  char decimalSeparator;  // where it is usual
};

/// English, which is the one of the topics that are missing in another language, comes first.
std::span<const Language> Languages();

/// "0 to 9"; numbers as this language writes them.
std::string RangeText(const Language& language, std::string_view lowest, std::string_view highest);

}  // namespace help
