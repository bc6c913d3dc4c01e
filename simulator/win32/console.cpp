#include "simulator/win32/console.h"

#include <windows.h>

#include <string>

namespace simhost {

void OpenConsole() {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  if (output && output != INVALID_HANDLE_VALUE) return;
  if (AttachConsole(ATTACH_PARENT_PROCESS)) SetConsoleOutputCP(CP_UTF8);
}

void WriteLine(std::string_view text) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  if (!output || output == INVALID_HANDLE_VALUE) return;
  const std::string line = std::string(text) + "\n";
  DWORD written = 0;
  WriteFile(output, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

}  // namespace simhost
