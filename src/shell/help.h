// Opens the help file at a topic; used by the main window and the dialogs.
#pragma once

#include <string>

namespace shell {

/// HTML Help commands, as the platform's documentation numbers them.
inline constexpr unsigned kHelpDisplayTopic = 0;
inline constexpr unsigned kHelpContext = 15;

/// A port: implemented by the Windows edge with HTML Help.
class HelpViewer {
 public:
  virtual ~HelpViewer() = default;
  /// `target` is the file, ">" and the window name. Answers whether a help window was opened.
  virtual bool Show(const std::string& target, unsigned command, int topic) = 0;
};

/// Opens `helpFile` in the help window "Main" at `topic`; topic 0 opens the file's first page.
bool ShowHelp(HelpViewer& viewer, const std::string& helpFile, int topic);

}  // namespace shell
