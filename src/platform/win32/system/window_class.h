// Window classes and windows of this program, registered and destroyed in pairs.
#pragma once

#include "platform/win32/system/handle.h"

namespace win32 {

struct DestroyWindowHandle {
  void operator()(HWND window) const { DestroyWindow(window); }
};
using WindowHandle = Owner<HWND, DestroyWindowHandle>;

/// The program or library that this code is part of: its window classes are its own, also where another part
/// of the process has classes of the same names.
HINSTANCE ThisModule();

/// Registers a window class with the dialog background; harmless when it is there already.
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure);

}  // namespace win32
