#include "platform/win32/system/window_class.h"

// The linker's name for the beginning of the program or library.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace win32 {

HINSTANCE ThisModule() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = ThisModule();
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_3DFACE + 1));
  description.lpszClassName = name;
  RegisterClassExW(&description);
}

}  // namespace win32
