#include "shell/words.h"

#include "base/error.h"
#include "host/session.h"
#include "shell/page.h"

namespace shell {

std::string InWords(const Strings& strings, const std::exception& error) {
  if (const auto* worded = dynamic_cast<const base::WordedError*>(&error))
    return ReplacePlaceholders(strings.GetStrings(worded->Text()), worded->Arguments());
  const auto* step = dynamic_cast<const host::StepError*>(&error);
  if (!step) return DescribeError(error);
  std::string words = strings.FormatStrings(step->what(), step->Arguments());
  try {
    std::rethrow_if_nested(*step);
  } catch (const std::exception& reason) {
    words += "\r\n" + DescribeError(reason);
  }
  return words;
}

}  // namespace shell
