// Process-wide settings: filled once by the start-up helper, read by every room.
#pragma once

#include <string>

#include "base/numbers.h"
#include "base/registry.h"

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

/// A choice of the tool's own that the user has made; empty when it never was.
inline std::string ReadChoice(base::Registry& registry, const Settings& settings, const std::string& name) {
  return base::ReadRegistryString(registry, base::RegistryRoot::kCurrentUser, settings.settingsKey, name);
}
inline void KeepChoice(base::Registry& registry, const Settings& settings, const std::string& name,
                       const std::string& text) {
  base::WriteRegistryString(registry, base::RegistryRoot::kCurrentUser, settings.settingsKey, name, text);
}

}  // namespace shell
