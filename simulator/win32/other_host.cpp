#include "simulator/win32/other_host.h"

// After windows.h, which it needs.
#include <tlhelp32.h>

#include <functional>

#include "base/error.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/text.h"

namespace simhost {
namespace {

constexpr UINT kEndedItself = 77;

void EachThread(DWORD process, const std::function<void(DWORD id, HANDLE thread)>& work) {
  const win32::Handle threads(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Thread32First(threads.Get(), &entry); more; more = Thread32Next(threads.Get(), &entry)) {
    if (entry.th32OwnerProcessID != process) continue;
    const win32::Handle thread(OpenThread(THREAD_SUSPEND_RESUME, FALSE, entry.th32ThreadID));
    if (thread) work(entry.th32ThreadID, thread.Get());
  }
}

std::wstring Quoted(std::wstring_view text) { return L" \"" + std::wstring(text) + L"\""; }

}  // namespace

void EndOwnProcess() {
  TerminateProcess(GetCurrentProcess(), kEndedItself);
  for (;;) Sleep(INFINITE);
}

void SuspendOwnProcess() {
  const DWORD self = GetCurrentThreadId();
  EachThread(GetCurrentProcessId(), [self](DWORD id, HANDLE thread) {
    if (id != self) SuspendThread(thread);
  });
  SuspendThread(GetCurrentThread());
}

OtherHost::~OtherHost() {
  if (process_) TerminateProcess(process_.Get(), 1);
}

void OtherHost::Start(const std::filesystem::path& script, const std::vector<std::string>& settings) {
  std::wstring line = Quoted(win32::Wide(win32::ProgramPath())) + L" --script" + Quoted(script.wstring());
  for (const std::string& setting : settings) line += L" --set" + Quoted(win32::Wide(setting));
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION made{};
  if (!CreateProcessW(nullptr, line.data() + 1, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &made)) {
    throw base::Error("another host could not be started: " + win32::LastErrorText());
  }
  const win32::Handle thread(made.hThread);
  process_ = win32::Handle(made.hProcess);
  id_ = made.dwProcessId;
}

void OtherHost::Suspend() {
  EachThread(id_, [](DWORD, HANDLE thread) { SuspendThread(thread); });
}

void OtherHost::Resume() {
  EachThread(id_, [](DWORD, HANDLE thread) { ResumeThread(thread); });
}

void OtherHost::WaitEnd(const Patience& patience, bool killed) {
  DWORD code = 0;
  patience.Until([&]() -> std::string {
    if (!process_) return "there is no other host";
    GetExitCodeProcess(process_.Get(), &code);
    return code == STILL_ACTIVE ? "the other host is still running" : "";
  });
  process_.Reset();
  if (code != (killed ? kEndedItself : 0))
    throw base::Error("the other host ended with " + std::to_string(code));
}

}  // namespace simhost
