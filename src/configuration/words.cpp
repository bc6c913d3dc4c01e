#include "configuration/words.h"

#include "base/error.h"
#include "host/session.h"
#include "shell/page.h"

namespace configuration {

std::string WordsOf(const std::exception& error, const shell::Strings& strings) {
  if (const auto* worded = dynamic_cast<const base::WordedError*>(&error))
    return shell::ReplacePlaceholders(strings.GetStrings(worded->Text()), worded->Arguments());
  const auto* step = dynamic_cast<const host::StepError*>(&error);
  if (!step) return shell::DescribeError(error);
  std::string words = strings.FormatStrings(step->what(), step->Arguments());
  try {
    std::rethrow_if_nested(*step);
  } catch (const std::exception& reason) {
    words += "\r\n" + shell::DescribeError(reason);
  }
  return words;
}

}  // namespace configuration
