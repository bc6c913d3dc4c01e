#include "platform/win32/window/menu_native.h"

#include <string_view>

#include "platform/win32/system/text.h"

namespace win32 {
namespace {

// The names that menus use: a letter with Ctrl, and the function keys. Nothing (key 0) for no name.
ACCEL AcceleratorOf(const std::string& key) {
  constexpr std::string_view kControl = "Ctrl+";
  if (key.starts_with(kControl)) return {FVIRTKEY | FCONTROL, static_cast<WORD>(key.back()), 0};
  if (key.starts_with('F')) return {FVIRTKEY, static_cast<WORD>(VK_F1 + std::stoi(key.substr(1)) - 1), 0};
  return {};
}

std::string Captions(const std::vector<ui::MenuItem>& items) {
  std::string all;
  for (const ui::MenuItem& item : items)
    all += item.caption + (item.checked ? "*\n" : "\n") +
           (item.items.empty() ? "" : "{" + Captions(item.items) + "}");
  return all;
}

}  // namespace

NativeMenu::NativeMenu(const std::vector<ui::MenuItem>& items, Shape shape)
    : menu_(shape == Shape::kBar ? CreateMenu() : CreatePopupMenu()), captions_(Captions(items)) {
  Append(menu_.Get(), items);
  if (shape == Shape::kBar && !keys_.empty())
    accelerators_ = AcceleratorTable(CreateAcceleratorTableW(keys_.data(), static_cast<int>(keys_.size())));
}

void NativeMenu::Append(HMENU menu, const std::vector<ui::MenuItem>& items) {
  for (const ui::MenuItem& item : items) {
    const std::wstring caption = Wide(item.caption);
    if (!item.items.empty()) {
      const HMENU submenu = CreatePopupMenu();
      Append(submenu, item.items);
      AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu), caption.c_str());
      continue;
    }
    if (caption.empty()) {
      AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    const int id = kFirst + static_cast<int>(handlers_.size());
    handlers_[id] = item.onClick;
    AppendMenuW(menu, MF_STRING | (item.checked ? MF_CHECKED : 0U), static_cast<UINT_PTR>(id),
                caption.c_str());
    ACCEL accelerator = AcceleratorOf(item.key);
    accelerator.cmd = static_cast<WORD>(id);
    if (accelerator.key) keys_.push_back(accelerator);
  }
}

std::function<void()> NativeMenu::Find(int id) const {
  const auto found = handlers_.find(id);
  return found == handlers_.end() ? nullptr : found->second;
}

bool NativeMenu::Shows(const std::vector<ui::MenuItem>& items) const { return Captions(items) == captions_; }

}  // namespace win32
