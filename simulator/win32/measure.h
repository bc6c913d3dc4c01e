// The script commands that measure what the tool costs on top of its host's own calls. The same calls, made
// again by a process that does nothing else, are the measure.
#pragma once

#include "simulator/win32/commands.h"

namespace simhost {

/// TRACE RESULTS: makes the calls of a trace against the host that is running, and writes how long each
/// operation of it took.
void ReplayCalls(Stage& stage, Words words);

/// RESULTS: the time from SendCommand to the window of a tool that was prepared and not yet brought up.
/// Throws base::Error when it is over 1.25 times the time of the calls alone plus 150 ms.
void MeasureLoad(Stage& stage, Words words);

/// From here on calls count for the next MeasureEnd.
void MeasureStart(Stage& stage, Words words);
/// OPERATION RESULTS: the time from the operation's first call to its last one, against the calls alone.
void MeasureEnd(Stage& stage, Words words);

}  // namespace simhost
