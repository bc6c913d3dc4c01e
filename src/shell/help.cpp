#include "shell/help.h"

#include "shell/platform.h"
#include "shell/settings.h"
#include "shell/strings.h"

namespace shell {

void ShowHelp(const Platform& platform, const Settings& settings, const Strings& strings, int topic) {
  const unsigned command = topic == 0 ? kHelpDisplayTopic : kHelpContext;
  const HelpOutcome outcome = platform.help.Show(settings.helpFile + ">Main", command, topic);
  if (outcome == HelpOutcome::kOpened) return;
  const std::string text =
      outcome == HelpOutcome::kNoFile
          ? strings.FormatStrings("The help file is missing: %s%", {settings.helpFile})
          : strings.FormatStrings("This computer has no viewer for help files. The help is in the file %s%",
                                  {settings.helpFile});
  platform.prompts.Ask({text, settings.title, ui::Buttons::kOk, ui::Icon::kExclamation});
}

}  // namespace shell
