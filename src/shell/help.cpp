#include "shell/help.h"

namespace shell {

bool ShowHelp(HelpViewer& viewer, const std::string& helpFile, int topic) {
  return viewer.Show(helpFile + ">Main", topic == 0 ? kHelpDisplayTopic : kHelpContext, topic);
}

}  // namespace shell
