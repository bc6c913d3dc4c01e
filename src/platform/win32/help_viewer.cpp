#include "platform/win32/help_viewer.h"

namespace win32 {
namespace {

constexpr UINT kCloseAll = 18;  // HH_CLOSE_ALL

}  // namespace

HtmlHelpViewer::~HtmlHelpViewer() {
  // A help window that outlives the library would run freed code.
  if (entry_) entry_(nullptr, nullptr, kCloseAll, 0);
}

bool HtmlHelpViewer::Show(const std::string& target, unsigned command, int topic) {
  if (!library_) library_ = Owner<HMODULE, FreeLoadedLibrary>(LoadLibraryW(L"hhctrl.ocx"));
  if (!library_) return false;
  if (!entry_)
    entry_ = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(library_.Get(), "HtmlHelpW")));
  if (!entry_) return false;
  return entry_(nullptr, Wide(target).c_str(), command, static_cast<DWORD_PTR>(topic)) != nullptr;
}

}  // namespace win32
