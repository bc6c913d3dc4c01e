#include "platform/win32/window/help_viewer.h"

#include <bit>

#include "platform/win32/system/files.h"
#include "platform/win32/system/utf.h"

namespace win32 {
namespace {

constexpr UINT kCloseAll = 18;  // HH_CLOSE_ALL

}  // namespace

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
