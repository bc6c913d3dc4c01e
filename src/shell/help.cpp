#include "shell/help.h"

#include <vector>

#include "automation/error.h"
#include "shell/platform.h"
#include "shell/settings.h"
#include "shell/strings.h"

namespace shell {
namespace {

constexpr std::string_view kOwnLanguage = "English";

// Without a language component, as without a file in its language, the help is English.
std::vector<std::string> HelpFiles(const Settings& settings, Strings& strings) {
  const std::string& own = settings.helpFile;
  try {
    const std::string language = strings.Language();
    if (language.empty() || language == kOwnLanguage) return {own};
    std::string file = own;
    return {file.insert(file.rfind('\\') + 1, language + "\\"), own};
  } catch (const automation::Error&) {
    return {own};
  }
}

}  // namespace

void ShowHelp(const Platform& platform, const Settings& settings, Strings& strings, int topic) {
  const unsigned command = topic == 0 ? kHelpDisplayTopic : kHelpContext;
  HelpOutcome outcome = HelpOutcome::kNoFile;
  std::string shown;
  for (const std::string& file : HelpFiles(settings, strings)) {
    if (outcome == HelpOutcome::kNoFile)
      outcome = platform.help.Show((shown = file) + ">Main", command, topic);
  }
  if (outcome == HelpOutcome::kOpened) return;
  const std::string text =
      outcome == HelpOutcome::kNoFile
          ? strings.FormatStrings("The help file is missing: %s%", {shown})
          : strings.FormatStrings("This computer has no viewer for help files. The help is in the file %s%",
                                  {shown});
  platform.prompts.Ask({text, settings.title, ui::Buttons::kOk, ui::Icon::kExclamation});
}

}  // namespace shell
