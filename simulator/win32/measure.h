// The script command that measures how long the tool needs from SendCommand to its window.
#pragma once

#include "simulator/win32/commands.h"

namespace simhost {

/// For a tool that was prepared and not yet brought up. Throws base::Error when it is over the limit of 1.25
/// times the time of its host calls plus 150 ms.
void MeasureLoad(Stage& stage, Words words);

}  // namespace simhost
