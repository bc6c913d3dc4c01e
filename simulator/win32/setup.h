// What must stand on a machine before the tool can be started from here: this program registered as the host,
// the tool and the editing controls registered, the common folder named in the registry, and the device
// template in that folder.
// Everything is done only where it is missing, so it can be asked for before each start.
#pragma once

#include <filesystem>
#include <vector>

#include "platform/win32/com/com_server.h"
#include "simulator/building.h"

namespace simhost {

/// Program id of the tool's automation class.
inline constexpr char kToolProgramId[] = "QVRKvTARNCfg.LNSPlugInAPI";
/// The tool's program file, looked for beside this one.
inline constexpr wchar_t kToolFile[] = L"QVRKvTARNCfg.exe";

/// The library of the maker's editing controls, looked for beside this program.
inline constexpr wchar_t kControlsFile[] = L"SimControls.dll";

/// Registers this program where its classes are not registered with its present path. Throws base::Error,
/// also when they are those of a real host.
void RegisterHost(const std::vector<win32::ServerClass>& classes);

/// Lets the tool beside this program register itself, unless it is registered with that path. Throws
/// base::Error when the tool answers with a fault or not within 30 s. Without a tool beside this program
/// nothing is done.
void RegisterTool();

/// Registers the controls beside this program, unless they are registered with that path; UnregisterControls
/// undoes it. Without a library beside this program nothing is done. Throws base::Error.
void RegisterControls();
void UnregisterControls();

/// Writes the device template to the common folder; names `ownFolder` as that folder in the machine-wide
/// registry when none is named yet. Throws base::Error.
void ProvideTemplates(const simulator::Building& building, const std::filesystem::path& ownFolder);

}  // namespace simhost
