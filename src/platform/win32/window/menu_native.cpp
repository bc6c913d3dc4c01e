#include "platform/win32/window/menu_native.h"

#include <charconv>

#include "platform/win32/system/text.h"

namespace win32 {
namespace {

constexpr std::string_view kControl = "Ctrl+";

WORD KeyOf(std::string_view name) {
  const bool plain =
      name.size() == 1 && ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= '0' && name[0] <= '9'));
  if (plain) return static_cast<WORD>(name[0]);
  int number = 0;
  const char* last = name.data() + name.size();
  const bool function = name.size() > 1 && name[0] == 'F';
  if (!function || std::from_chars(name.data() + 1, last, number).ptr != last) return 0;
  return number >= 1 && number <= 24 ? static_cast<WORD>(VK_F1 + number - 1) : WORD{0};
}

std::string Captions(const std::vector<ui::MenuItem>& items) {
  std::string all;
  for (const ui::MenuItem& item : items)
    all += item.caption + "\n" + (item.items.empty() ? "" : "{" + Captions(item.items) + "}");
  return all;
}

}  // namespace

ACCEL ParseAccelerator(std::string_view key) {
  const bool control = key.starts_with(kControl);
  if (control) key.remove_prefix(kControl.size());
  ACCEL accelerator = {};
  accelerator.fVirt = static_cast<BYTE>(FVIRTKEY | (control ? FCONTROL : 0));
  accelerator.key = KeyOf(key);
  return accelerator;
}

NativeMenu::NativeMenu(const std::vector<ui::MenuItem>& items, Shape shape)
    : menu_(shape == Shape::kBar ? CreateMenu() : CreatePopupMenu()), captions_(Captions(items)) {
  Append(menu_.Get(), items);
  if (shape == Shape::kBar && !keys_.empty()) {
    accelerators_ = Owner<HACCEL, DestroyAcceleratorTableHandle>(
        CreateAcceleratorTableW(keys_.data(), static_cast<int>(keys_.size())));
  }
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
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), caption.c_str());
    ACCEL accelerator = ParseAccelerator(item.key);
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
