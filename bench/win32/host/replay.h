// The script commands with which another process makes the tool's calls without the tool: what its own work
// is measured against.
#pragma once

#include "simulator/win32/commands.h"

namespace simhost {

/// TRACE RESULTS: makes the calls of a trace against the host that is running, and writes how long each
/// operation of it took. The first one waits for that host's CommandReplay, as a tool does: calls to a host
/// that itself waits in a call take longer.
void ReplayCalls(Stage& stage, Words words);
/// Lets the other host begin its replay, and waits as for a tool that loads.
void CommandReplay(Stage& stage, Words words);

}  // namespace simhost
