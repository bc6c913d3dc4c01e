// The processes of the tool, found by the name of its program file. Used by the scripts to see that none
// stays behind.
#pragma once

#include <windows.h>

#include <vector>

namespace simhost {

std::vector<DWORD> ToolProcesses();

/// Ends them by force.
void EndToolProcesses();

}  // namespace simhost
