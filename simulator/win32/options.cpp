#include "simulator/win32/options.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shlobj.h>

#include "base/error.h"
#include "base/text.h"
#include "platform/win32/system/handle.h"
#include "platform/win32/system/text.h"

namespace simhost {
namespace {

struct Switch {
  std::string_view name;
  Task task;
};

// The system starts a server with "-Embedding"; installers write the others with a slash.
constexpr Switch kSwitches[] = {{"/RegServer", Task::kRegister},
                                {"-RegServer", Task::kRegister},
                                {"/UnregServer", Task::kUnregister},
                                {"-UnregServer", Task::kUnregister},
                                {"-Embedding", Task::kServe},
                                {"/Embedding", Task::kServe},
                                {"--help", Task::kHelp},
                                {"/?", Task::kHelp}};

bool TakeSwitch(std::string_view word, Options& options) {
  for (const Switch& entry : kSwitches) {
    if (!base::EqualsNoCase(entry.name, word)) continue;
    options.task = entry.task;
    return true;
  }
  if (word != "--fresh") return false;
  options.fresh = true;
  return true;
}

bool TakeValue(std::string_view word, const std::wstring& file, Options& options) {
  if (word == "--script") {
    options.task = Task::kScripts;
    options.scripts.emplace_back(file);
  } else if (word == "--set") {
    const std::string text = win32::Utf8(file);
    const std::size_t equals = std::min(text.find('='), text.size());
    options.settings[text.substr(0, equals)] = equals < text.size() ? text.substr(equals + 1) : "";
  } else if (word == "--store") {
    options.storeFile = file;
  } else if (word == "--data") {
    options.dataFolder = file;
  } else {
    return false;
  }
  return true;
}

struct FreeTaskMemory {
  void operator()(wchar_t* text) const { CoTaskMemFree(text); }
};

std::filesystem::path PersonalFolder() {
  win32::Owner<wchar_t*, FreeTaskMemory> folder;
  if (FAILED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, folder.Put())))
    throw base::Error("The system does not name the folder for this person's data.");
  return std::filesystem::path(folder.Get()) / L"Veldran, Inc" / L"Virtual building";
}

// Beside the program, as it was built. Installed, the programs of both widths share the data, to which most
// people may not write: there everyone keeps values of their own.
void ChooseFolders(const std::filesystem::path& folder, Options& options) {
  std::filesystem::path storeFolder = options.dataFolder;
  if (options.dataFolder.empty()) {
    const std::filesystem::path shared = folder.parent_path() / "data";
    const bool installed = !std::filesystem::exists(folder / "data") && std::filesystem::exists(shared);
    options.dataFolder = installed ? shared : folder / "data";
    storeFolder = installed ? PersonalFolder() : options.dataFolder;
  }
  // A script changes values at will, so it never works on the values that a person keeps.
  if (options.storeFile.empty())
    options.storeFile = storeFolder / (options.task == Task::kScripts ? "script-store.json" : "store.json");
}

}  // namespace

Options ParseOptions(std::span<const std::wstring> arguments, const std::filesystem::path& folder) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string word = win32::Utf8(arguments[i]);
    if (TakeSwitch(word, options)) continue;
    const bool last = i + 1 == arguments.size();
    if (!TakeValue(word, last ? std::wstring() : arguments[i + 1], options)) {
      throw base::Error("The host does not understand \"" + word + "\".\n\n" + Usage());
    }
    if (last) throw base::Error("\"" + word + "\" needs a value behind it.");
    ++i;
  }
  ChooseFolders(folder, options);
  return options;
}

std::string Usage() {
  return "SimHost                    opens the virtual building\n"
         "SimHost --script FILE ...  works through a script; repeat --script for more, the exit code is 0 "
         "when all held\n"
         "  --set NAME=TEXT          gives the scripts a text to use as ${NAME}\n"
         "  --store FILE             keeps the units and their values there instead of in the data folder "
         "or, where the building is installed, among the person's own data\n"
         "  --fresh                  starts from the controllers' initial values\n"
         "  --data FOLDER            takes the building from there instead of from \"data\" beside the "
         "program\n"
         "SimHost /RegServer         makes the building known as the host of the tool; /UnregServer undoes "
         "it";
}

}  // namespace simhost
