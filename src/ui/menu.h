// The entries of menus as plain data: of a window's menu bar, and of the one that a list shows at the
// pointer.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ui {

/// A menu entry; one with entries of its own is a submenu, one with an empty caption a separator. `caption`
/// shows the name of the key in the user's language behind a tab; `key` is the key itself, in a menu bar:
/// "Ctrl+S", "F5".
struct MenuItem {
  std::string caption;
  std::function<void()> onClick;
  std::vector<MenuItem> items;
  std::string key = {};
  bool checked = false;  // what it turns on is on
};

}  // namespace ui
