// The command line of the stand-in host.
#pragma once

#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace simhost {

enum class Task { kWindow, kScripts, kServe, kRegister, kUnregister, kHelp };

struct Options {
  Task task = Task::kWindow;
  std::vector<std::filesystem::path> scripts;
  std::map<std::string, std::string, std::less<>> settings;  // texts that the scripts find remembered
  std::filesystem::path dataFolder;                          // types.json, device.json, building.json
  std::filesystem::path storeFile;                           // where the controllers' values are kept
  bool fresh = false;                                        // forget the store first; each script starts so
};

/// `arguments` without the program's own name; `folder` is where the program lies. Throws base::Error naming
/// the word that is not understood or that lacks its value.
Options ParseOptions(std::span<const std::wstring> arguments, const std::filesystem::path& folder);

/// What the program can be asked for.
std::string Usage();

}  // namespace simhost
