// Opens the help file at a topic; used by the main window and the dialogs.
#pragma once

#include <string>

namespace shell {

class Strings;
struct Platform;
struct Settings;

/// HTML Help commands, as the platform's documentation numbers them.
inline constexpr unsigned kHelpDisplayTopic = 0;
inline constexpr unsigned kHelpContext = 15;

enum class HelpOutcome { kOpened, kNoFile, kNoViewer };

/// A port: implemented by the Windows edge with HTML Help.
class HelpViewer {
 public:
  virtual ~HelpViewer() = default;
  /// `target` is the file, ">" and the window name.
  virtual HelpOutcome Show(const std::string& target, unsigned command, int topic) = 0;
};

/// Opens the help file of the language in use, where there is one in the folder of that name beside the file
/// of the settings, which is English; else that one. In the help window "Main" at `topic`; topic 0 opens the
/// file's first page. Where that cannot be done, a message box says where the file is.
void ShowHelp(const Platform& platform, const Settings& settings, Strings& strings, int topic);

}  // namespace shell
