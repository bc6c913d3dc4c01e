#include "simulator/win32/shot.h"

#include <thread>

#include "base/error.h"
#include "platform/win32/system/handle.h"
#include "platform/win32/system/text.h"
#include "simulator/win32/console.h"
#include "simulator/win32/foreign.h"

namespace simhost {
namespace {

constexpr std::chrono::milliseconds kPaintTime{400};

std::wstring Environment(const wchar_t* name) {
  std::wstring text(4096, L'\0');
  text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
  return text;
}

// The name by which this process reaches a file of the system that Wine runs on.
std::wstring Reachable(const std::wstring& name) {
  return name.starts_with(L'/') ? L"\\\\?\\unix" + name : name;
}

// What tells the window to the outside program: under X its number, else its title.
std::wstring Designation(HWND window) {
  const auto number = reinterpret_cast<std::uintptr_t>(GetPropW(window, L"__wine_x11_whole_window"));
  if (number == 0) return win32::Wide(TextOf(window));
  wchar_t text[32];
  swprintf(text, std::size(text), L"0x%llx", static_cast<unsigned long long>(number));
  return text;
}

void Start(const std::wstring& program, const std::wstring& window, const std::wstring& file) {
  const std::wstring application = Reachable(program);
  std::wstring command = L"\"" + application + L"\" \"" + window + L"\" \"" + file + L"\"";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION information{};
  if (!CreateProcessW(application.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &start, &information)) {
    throw base::Error("the picture program cannot be started: " + win32::LastErrorText());
  }
  // Of a program that is none of this system's Wine gives no process, and in the other members whatever was
  // there.
  if (!information.hProcess) return;
  const win32::Handle process(information.hProcess);
  const win32::Handle thread(information.hThread);
}

}  // namespace

void UseShotFolder(const std::string& name) {
  const std::wstring folder = Environment(L"SIMHOST_SHOTS") + L"/" + win32::Wide(name);
  SetEnvironmentVariableW(L"SIMHOST_SHOTS", folder.c_str());
}

void TakeShot(HWND window, const std::string& name, const Patience& patience) {
  const std::wstring program = Environment(L"SIMHOST_SHOT");
  if (program.empty()) return WriteLine("        (no picture: SIMHOST_SHOT is not set)");
  const std::wstring file = Environment(L"SIMHOST_SHOTS") + L"/" + win32::Wide(name) + L".png";
  const std::wstring reachable = Reachable(file);
  DeleteFileW(reachable.c_str());
  SetForegroundWindow(window);
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  std::this_thread::sleep_for(kPaintTime);
  // The program is no process of this system, so its end shows only by the file.
  Start(program, Designation(window), file);
  patience.Until([&] { return GetFileAttributesW(reachable.c_str()) != INVALID_FILE_ATTRIBUTES; },
                 "the picture was not taken");
}

}  // namespace simhost
