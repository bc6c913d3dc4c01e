#include "platform/win32/system/window_name.h"

#include <algorithm>
#include <vector>

#include "platform/win32/system/utf.h"

namespace win32 {
namespace {

std::vector<ATOM>& Given() {
  static std::vector<ATOM> given;
  return given;
}

}  // namespace

WindowName::WindowName(HWND window, std::string_view name)
    : window_(window), atom_(GlobalAddAtomW(Wide(name).c_str())) {
  if (!atom_) return;
  Given().push_back(atom_);
  SetPropW(window_, kNameProperty, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(atom_)));
}

WindowName::~WindowName() {
  RemovePropW(window_, kNameProperty);
  const auto own = std::ranges::find(Given(), atom_);
  if (own == Given().end()) return;
  GlobalDeleteAtom(atom_);
  Given().erase(own);
}

void WindowName::GiveAllBack() {
  for (const ATOM atom : Given()) GlobalDeleteAtom(atom);
  Given().clear();
}

}  // namespace win32
