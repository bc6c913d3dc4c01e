#include "platform/win32/file_dialog.h"

#include <windows.h>
// After windows.h, which it needs.
#include <commdlg.h>

#include <algorithm>
#include <vector>

#include "base/error.h"
#include "platform/win32/toolkit.h"
#include "platform/win32/utf.h"

namespace win32 {
namespace {

constexpr std::size_t kLongestName = 32768;
constexpr DWORD kStyle = OFN_EXPLORER | OFN_ENABLESIZING | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;

// The extension of the first pattern ("*.log"), which is added to a name typed without one.
std::wstring DefaultExtension(const std::wstring& filter) {
  const auto pattern = filter.find(L"|*.");
  if (pattern == std::wstring::npos) return {};
  const auto begin = pattern + 3;
  const std::wstring extension = filter.substr(begin, filter.find_first_of(L"|;", begin) - begin);
  return extension == L"*" ? std::wstring() : extension;
}

}  // namespace

std::optional<std::string> SaveDialog::AskSaveFile(const ui::SaveRequest& request) {
  std::wstring filter = Wide(request.filter);
  const std::wstring extension = DefaultExtension(filter);
  std::ranges::replace(filter, L'|', L'\0');
  filter.append(2, L'\0');

  const std::wstring proposed = Wide(request.proposedName);
  const auto slash = proposed.find_last_of(L"\\/");
  const bool hasFolder = slash != std::wstring::npos;
  const std::wstring folder = hasFolder ? proposed.substr(0, slash + 1) : std::wstring();
  std::vector<wchar_t> name(kLongestName);
  const std::wstring file = hasFolder ? proposed.substr(slash + 1) : proposed;
  std::copy_n(file.begin(), std::min(file.size(), kLongestName - 1), name.begin());

  const NativeToolkit::Modal modal(toolkit_);
  OPENFILENAMEW dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = modal.Owner();
  dialog.lpstrFilter = filter.c_str();
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = name.data();
  dialog.nMaxFile = static_cast<DWORD>(name.size());
  dialog.lpstrInitialDir = hasFolder ? folder.c_str() : nullptr;
  dialog.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  // A new name is as good as one that is there; the flag belongs to dialogs for opening a file.
  dialog.Flags = (request.flags & ~static_cast<DWORD>(OFN_FILEMUSTEXIST)) | kStyle;
  if (GetSaveFileNameW(&dialog)) return Utf8(name.data());
  if (const DWORD fault = CommDlgExtendedError()) {
    throw base::Error("The dialog for saving a file could not be shown (" + std::to_string(fault) + ")");
  }
  return std::nullopt;
}

}  // namespace win32
