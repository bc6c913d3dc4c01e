#include "platform/win32/system/process.h"

#include <windows.h>

#include <vector>

#include "base/text.h"
#include "platform/win32/system/handle.h"
#include "platform/win32/system/own_window.h"

namespace win32 {
namespace {

// The one language of the version resource: English, Unicode.
constexpr const wchar_t* kVersionTexts = L"\\StringFileInfo\\040904B0\\";

std::string VersionText(const std::vector<BYTE>& block, const wchar_t* name) {
  void* text = nullptr;
  UINT length = 0;
  const std::wstring path = std::wstring(kVersionTexts) + name;
  if (!VerQueryValueW(block.data(), path.c_str(), &text, &length)) return {};
  return Utf8(static_cast<const wchar_t*>(text));
}

std::string FileOf(HMODULE module) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return Utf8(path.substr(0, length));
    path.resize(path.size() * 2);
  }
}

bool WriteTo(HANDLE output, const std::string& line) {
  DWORD written = 0;
  return output && output != INVALID_HANDLE_VALUE &&
         WriteFile(output, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

}  // namespace

std::string ProgramPath() { return FileOf(nullptr); }

std::string ModulePath() { return FileOf(ThisModule()); }

std::string ProgramFolder() {
  const std::string path = ProgramPath();
  return path.substr(0, path.rfind('\\'));
}

ProgramVersion OwnVersion() {
  ProgramVersion version;
  const std::wstring path = Wide(ProgramPath());
  std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), nullptr));
  if (block.empty() ||
      !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data())) {
    return version;
  }
  void* fixed = nullptr;
  UINT length = 0;
  if (VerQueryValueW(block.data(), L"\\", &fixed, &length)) {
    const auto* info = static_cast<const VS_FIXEDFILEINFO*>(fixed);
    version.major = HIWORD(info->dwProductVersionMS);
    version.minor = LOWORD(info->dwProductVersionMS);
    version.revision = HIWORD(info->dwProductVersionLS);
  }
  version.product = VersionText(block, L"ProductName");
  version.company = VersionText(block, L"CompanyName");
  return version;
}

std::string OwnText(int resource) {
  const HRSRC place = FindResourceW(nullptr, MAKEINTRESOURCEW(resource), RT_RCDATA);
  const HGLOBAL block = place ? LoadResource(nullptr, place) : nullptr;
  const auto* text = block ? static_cast<const char*>(LockResource(block)) : nullptr;
  return text ? std::string(text, SizeofResource(nullptr, place)) : std::string();
}

void LimitLibraryFolders() {
  // The empty text takes the current folder out of the search and changes nothing else of it.
  SetDllDirectoryW(L"");
}

std::string UserName() {
  wchar_t name[257] = {};
  DWORD size = 257;
  return GetUserNameW(name, &size) ? Utf8(name) : std::string();
}

std::string CommandTail() {
  const std::string line = Utf8(GetCommandLineW());
  // The system never puts an escaped quote into the program's name.
  const std::size_t end = line.starts_with('"') ? line.find('"', 1) : line.find_first_of(" \t");
  if (end == std::string::npos) return {};
  return line.substr(end + 1);
}

bool StartedByActivation(const std::string& commandTail) {
  const std::string first = base::Split(base::Trim(commandTail), " ").front();
  return base::EqualsNoCase(first, "-Embedding") || base::EqualsNoCase(first, "/Embedding");
}

void EndProcess() {
  WindowName::GiveAllBack();
  TerminateProcess(GetCurrentProcess(), 0);
  for (;;) Sleep(INFINITE);
}

void ReportDone(const std::string& title, const std::string& text) {
  const std::string line = title + ": " + text + "\r\n";
  if (WriteTo(GetStdHandle(STD_OUTPUT_HANDLE), line)) return;
  // A program with windows is given none by a command prompt.
  if (!AttachConsole(ATTACH_PARENT_PROCESS)) return;
  const Handle console(
      CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  WriteTo(console.Get(), line);
}

void ReportFailure(const std::string& title, const std::string& text) {
  if (WriteTo(GetStdHandle(STD_ERROR_HANDLE), title + ": " + text + "\r\n")) return;
  MessageBoxW(nullptr, Wide(text).c_str(), Wide(title).c_str(), MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
}

}  // namespace win32
