// A stand-in host from its command line to its exit code; its entry point calls this alone.
#pragma once

#include "simulator/win32/commands.h"

namespace simhost {

/// `moreCommands` are those that only this program's scripts have.
int Main(std::span<const Command> moreCommands);

}  // namespace simhost
