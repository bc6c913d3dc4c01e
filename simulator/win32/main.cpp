// Entry point of the stand-in host.
#include <windows.h>

#include "simulator/win32/entry.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) { return simhost::Main({}); }
