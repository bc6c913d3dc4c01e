// The script commands that measure what the tool costs on top of its host's own calls.
#pragma once

#include "simulator/win32/commands.h"

namespace simhost {

/// NAME RESULTS: the time from SendCommand to the window of a tool that was prepared and not yet brought up,
/// against the calls alone.
void MeasureLoad(Stage& stage, Words words);

/// NAME: the time from the start of that tool's process to the end of its SendCommand.
void MeasureActivation(Stage& stage, Words words);

/// From here on calls count for the next MeasureEnd.
void MeasureStart(Stage& stage, Words words);
/// OPERATION RESULTS: the time from the operation's first call to its last one, against the calls alone.
void MeasureEnd(Stage& stage, Words words);

/// PROGRAM: the most memory that the tool has held so far, against a program that opens an empty window.
void MeasureMemory(Stage& stage, Words words);
/// NAME CAPTION CONTROL: the time from the click on a page's row until that control of the page is on the
/// screen.
void MeasurePage(Stage& stage, Words words);

}  // namespace simhost
