// Process start: fills the process-wide settings, and runs a stand-alone start from the command line, which
// only registers or deregisters the plug-in with the host and ends.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "plugin/plugin_description.h"
#include "shell/settings.h"

namespace plugin {

/// What the start-up helper must know of the running program and the machine.
struct StartUpFacts {
  ProgramIdentity identity;
  std::string applicationFolder;  // where the executable lies, without a closing backslash
  std::string lonWorksFolder;     // the machine-wide registry value "LonWorks Path"; may be empty
  std::string licences;           // of the libraries in the program
  std::string documentsFolder;    // the user's
  std::string userName;
  char decimalSeparator = '.';
  std::function<bool(const std::string&)> fileExists;
};

/// The maker and family folder below the LonWorks folder, which holds the common files of the device family.
std::string CommonFilesFolder(const std::string& lonWorksFolder);

shell::Settings MakeSettings(const StartUpFacts& facts, const PlugInDescription& description);

/// Runs a start that was not an activation by the automation system: "/regplugin" or "/deregplugin" as the
/// first word, in any case, registers or deregisters the plug-in; anything else does nothing. Throws
/// automation::Error.
void RunStandAlone(std::string_view commandLine, const PlugInDescription& description,
                   const std::function<automation::Object(std::string_view)>& createObject);

}  // namespace plugin
