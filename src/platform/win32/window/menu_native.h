// Native menus made of menu descriptions: the bar of a window with its accelerator keys, and pop-up menus.
// Entries are known by numbers from kFirst on.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/win32/system/handle.h"
#include "ui/menu.h"

namespace win32 {

using AcceleratorTable = Owner<HACCEL, Calls<DestroyAcceleratorTable>>;

class NativeMenu {
 public:
  static constexpr int kFirst = 0x4000;
  enum class Shape { kBar, kPopup };

  NativeMenu(const std::vector<ui::MenuItem>& items, Shape shape);

  HMENU Get() const { return menu_.Get(); }
  HACCEL Accelerators() const { return accelerators_.Get(); }
  /// What the entry of that number does; nothing for an unknown one.
  std::function<void()> Find(int id) const;
  /// Whether this menu shows exactly the captions of `items`.
  bool Shows(const std::vector<ui::MenuItem>& items) const;

 private:
  void Append(HMENU menu, const std::vector<ui::MenuItem>& items);

  Owner<HMENU, Calls<DestroyMenu>> menu_;
  AcceleratorTable accelerators_;
  std::map<int, std::function<void()>> handlers_;
  std::vector<ACCEL> keys_;
  std::string captions_;
};

}  // namespace win32
