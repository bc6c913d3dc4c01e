#include "platform/win32/help_viewer.h"

#include <bit>

#include "platform/win32/files.h"
#include "platform/win32/utf.h"

namespace win32 {
namespace {

constexpr UINT kCloseAll = 18;  // HH_CLOSE_ALL

}  // namespace

HtmlHelpViewer::~HtmlHelpViewer() {
  // A help window that outlives the library would run freed code.
  if (entry_) entry_(nullptr, nullptr, kCloseAll, 0);
}

shell::HelpOutcome HtmlHelpViewer::Show(const std::string& target, unsigned command, int topic) {
  if (!FileExists(target.substr(0, target.rfind('>')))) return shell::HelpOutcome::kNoFile;
  if (!library_) library_ = Owner<HMODULE, FreeLoadedLibrary>(LoadLibraryW(L"hhctrl.ocx"));
  if (library_ && !entry_) entry_ = std::bit_cast<Entry>(GetProcAddress(library_.Get(), "HtmlHelpW"));
  const bool opened =
      entry_ && entry_(nullptr, Wide(target).c_str(), command, static_cast<DWORD_PTR>(topic)) != nullptr;
  return opened ? shell::HelpOutcome::kOpened : shell::HelpOutcome::kNoViewer;
}

}  // namespace win32
