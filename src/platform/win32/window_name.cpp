#include "platform/win32/window_name.h"

#include "platform/win32/utf.h"

namespace win32 {

WindowName::WindowName(HWND window, std::string_view name)
    : window_(window), atom_(GlobalAddAtomW(Wide(name).c_str())) {
  SetPropW(window_, kNameProperty, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(atom_)));
}

WindowName::~WindowName() {
  RemovePropW(window_, kNameProperty);
  if (atom_) GlobalDeleteAtom(atom_);
}

}  // namespace win32
