// Pictures of windows, taken by an outside program that the environment names: SIMHOST_SHOT is called with a
// window and the file to write, SIMHOST_SHOTS is the folder of the pictures. Without them no picture is
// taken.
#pragma once

#include <windows.h>

#include <string>

#include "simulator/win32/patience.h"

namespace simhost {

/// Further pictures go to this folder below that of all pictures.
void UseShotFolder(const std::string& name);

/// Brings the window to the front and waits until the file `name`.png is there. Throws base::Error.
void TakeShot(HWND window, const std::string& name, const Patience& patience);

}  // namespace simhost
