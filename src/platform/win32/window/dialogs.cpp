#include "platform/win32/window/dialogs.h"

// After windows.h, which it needs.
#include <commdlg.h>

#include <algorithm>
#include <bit>
#include <vector>

#include "base/error.h"
#include "platform/win32/system/files.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/toolkit.h"

namespace win32 {
namespace {

constexpr UINT kButtons[] = {MB_OK, MB_OKCANCEL, MB_YESNO, MB_YESNOCANCEL};
constexpr UINT kIcons[] = {0, MB_ICONINFORMATION, MB_ICONQUESTION, MB_ICONEXCLAMATION, MB_ICONERROR};

constexpr std::size_t kLongestName = 32768;
constexpr DWORD kStyle = OFN_EXPLORER | OFN_ENABLESIZING | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
// The documentation has it for dialogs that open a file; one that saves would refuse every new name.
constexpr DWORD kFlagsTaken = ~DWORD{OFN_FILEMUSTEXIST};

// The extension of the first pattern ("*.log"), which is added to a name typed without one.
std::wstring DefaultExtension(const std::wstring& filter) {
  const auto pattern = filter.find(L"|*.");
  if (pattern == std::wstring::npos) return {};
  const auto begin = pattern + 3;
  const std::wstring extension = filter.substr(begin, filter.find_first_of(L"|;", begin) - begin);
  return extension == L"*" ? std::wstring() : extension;
}

bool MayWriteIn(const std::wstring& folder) {
  wchar_t name[MAX_PATH] = {};
  return GetTempFileNameW(folder.c_str(), L"log", 0, name) != 0 && DeleteFileW(name) != FALSE;
}

// Why the file cannot be written, in the system's words; empty when it can. Leaves no file behind.
std::wstring WhyNotWritable(const std::wstring& file) {
  const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return Wide(LastErrorText());
  const bool isNew = GetLastError() != ERROR_ALREADY_EXISTS;
  CloseHandle(handle);
  if (isNew) DeleteFileW(file.c_str());
  return {};
}

std::wstring TitleOf(HWND window) {
  wchar_t title[256] = {};
  GetWindowTextW(window, title, 256);
  return title;
}

constexpr UINT kCloseAll = 18;  // HH_CLOSE_ALL

}  // namespace

ui::Answer MessagePrompts::Ask(const ui::Prompt& prompt) {
  const NativeToolkit::Modal modal(toolkit_);
  const UINT style =
      kButtons[static_cast<int>(prompt.buttons)] | kIcons[static_cast<int>(prompt.icon)] | MB_SETFOREGROUND;
  switch (MessageBoxW(modal.Owner(), Wide(prompt.text).c_str(), Wide(prompt.title).c_str(), style)) {
    case IDOK:
      return ui::Answer::kOk;
    case IDYES:
      return ui::Answer::kYes;
    case IDNO:
      return ui::Answer::kNo;
    default:
      break;
  }
  // Closed, or the system could not show it: the answer that changes nothing.
  if (prompt.buttons == ui::Buttons::kOk) return ui::Answer::kOk;
  return prompt.buttons == ui::Buttons::kYesNo ? ui::Answer::kNo : ui::Answer::kCancel;
}

std::optional<std::string> FileNameDialog::Ask(const ui::FileRequest& request, bool toSave) {
  std::wstring filter = Wide(request.filter);
  const std::wstring extension = DefaultExtension(filter);
  std::ranges::replace(filter, L'|', L'\0');
  filter.append(2, L'\0');

  const std::wstring proposed = Wide(request.proposedName);
  const auto slash = proposed.find_last_of(L"\\/");
  std::wstring folder = slash == std::wstring::npos ? std::wstring() : proposed.substr(0, slash + 1);
  // Most users may not write where programs lie.
  if (toSave && !folder.empty() && !MayWriteIn(folder)) folder = Wide(DocumentsFolder());
  std::vector<wchar_t> name(kLongestName);
  const std::wstring file = slash == std::wstring::npos ? proposed : proposed.substr(slash + 1);
  std::copy_n(file.begin(), std::min(file.size(), kLongestName - 1), name.begin());

  const NativeToolkit::Modal modal(toolkit_);
  OPENFILENAMEW dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = modal.Owner();
  dialog.lpstrFilter = filter.c_str();
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = name.data();
  dialog.nMaxFile = static_cast<DWORD>(name.size());
  dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  dialog.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  dialog.Flags = kStyle | (toSave ? request.flags & kFlagsTaken : OFN_FILEMUSTEXIST | OFN_HIDEREADONLY);
  while (toSave ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog)) {
    if (!toSave) return Utf8(name.data());
    const std::wstring reason = WhyNotWritable(name.data());
    if (reason.empty()) return Utf8(name.data());
    const std::wstring text = std::wstring(name.data()) + L"\n" + reason;
    MessageBoxW(modal.Owner(), text.c_str(), TitleOf(modal.Owner()).c_str(),
                MB_OK | MB_ICONEXCLAMATION | MB_SETFOREGROUND);
  }
  if (const DWORD fault = CommDlgExtendedError())
    throw base::Error("The dialog for the name of a file could not be shown (" + std::to_string(fault) + ")");
  return std::nullopt;
}

HtmlHelpViewer::~HtmlHelpViewer() {
  if (entry_) entry_(nullptr, nullptr, kCloseAll, 0);
}

// The library is never freed: its windows have a thread of their own, which may still run its code.
HtmlHelpViewer::Entry HtmlHelpViewer::Load() {
  const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  return library ? std::bit_cast<Entry>(GetProcAddress(library, "HtmlHelpW")) : nullptr;
}

shell::HelpOutcome HtmlHelpViewer::Show(const std::string& target, unsigned command, int topic) {
  if (!FileExists(target.substr(0, target.rfind('>')))) return shell::HelpOutcome::kNoFile;
  if (!entry_) entry_ = Load();
  const bool opened =
      entry_ && entry_(nullptr, Wide(target).c_str(), command, static_cast<DWORD_PTR>(topic)) != nullptr;
  return opened ? shell::HelpOutcome::kOpened : shell::HelpOutcome::kNoViewer;
}

}  // namespace win32
