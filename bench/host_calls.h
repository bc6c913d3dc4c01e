// The calls that each operation of the tool makes to the host: counted, and written down for those who make
// them again without the tool.
#pragma once

#include <filesystem>

#include "simulator/call_trace.h"

namespace bench {

/// Loading the window and what an installer does then, over a new virtual building.
simulator::CallTrace TraceHostCalls();

/// The units of the building in `folder` get what its "Unit 1" holds: listed, compared, copied, and all
/// again.
simulator::CallTrace TraceCopying(const std::filesystem::path& folder);

/// How many calls an operation makes; releases of objects do not count.
std::size_t CountCalls(const simulator::CallTrace::Operation& operation);

}  // namespace bench
