#include "simulator/win32/tool_process.h"

// After windows.h, which it needs.
#include <tlhelp32.h>

#include "platform/win32/system/handle.h"
#include "simulator/win32/setup.h"

namespace simhost {

std::vector<DWORD> ToolProcesses() {
  std::vector<DWORD> found;
  const win32::Handle processes(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32FirstW(processes.Get(), &entry); more;
       more = Process32NextW(processes.Get(), &entry)) {
    if (lstrcmpiW(entry.szExeFile, kToolFile) == 0) found.push_back(entry.th32ProcessID);
  }
  return found;
}

void EndToolProcesses() {
  for (const DWORD id : ToolProcesses()) {
    const win32::Handle process(OpenProcess(PROCESS_TERMINATE, FALSE, id));
    if (process) TerminateProcess(process.Get(), 1);
  }
}

}  // namespace simhost
