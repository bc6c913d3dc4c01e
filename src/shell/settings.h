// Process-wide settings: filled once by the start-up helper, read by every room.
#pragma once

#include <string>

#include "base/numbers.h"

namespace shell {

struct Settings {
  std::string title;              // caption of message boxes, source of raised errors
  std::string applicationFolder;  // where the executable lies, without a closing backslash
  std::string commonFilesFolder;
  std::string iconFile;
  std::string helpFile;
  std::string manufacturerId;  // decimal text
  std::string manufacturerName;
  std::string requiredServerVersion;  // for example "2.7"
  std::string version;                // major.minor.revision of the running program
  std::string licences;               // of the libraries in the program, one a line
  std::string settingsKey;            // registry key below the current user for the tool's own choices
  std::string documentsFolder;        // the user's, without a closing backslash; may be empty
  std::string userName;               // as the system knows the user
  base::Numbers numbers;              // the user's decimal separator
};

}  // namespace shell
