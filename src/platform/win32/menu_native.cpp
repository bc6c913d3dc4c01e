#include "platform/win32/menu_native.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "platform/win32/utf.h"

namespace win32 {
namespace {

struct NamedKey {
  std::wstring_view name;
  WORD key;
};

constexpr NamedKey kKeys[] = {
    {L"Del", VK_DELETE},   {L"Ins", VK_INSERT}, {L"Home", VK_HOME},
    {L"End", VK_END},      {L"PgUp", VK_PRIOR}, {L"PgDn", VK_NEXT},
    {L"Enter", VK_RETURN}, {L"Esc", VK_ESCAPE}, {L"Space", VK_SPACE},
};
constexpr NamedKey kModifiers[] = {{L"Ctrl", FCONTROL}, {L"Shift", FSHIFT}, {L"Alt", FALT}};

const NamedKey* FindKey(std::span<const NamedKey> keys, std::wstring_view name) {
  const auto found = std::ranges::find(keys, name, &NamedKey::name);
  return found == keys.end() ? nullptr : &*found;
}

WORD KeyOf(std::wstring_view name) {
  if (const NamedKey* known = FindKey(kKeys, name)) return known->key;
  const bool plain =
      name.size() == 1 && ((name[0] >= L'A' && name[0] <= L'Z') || (name[0] >= L'0' && name[0] <= L'9'));
  if (plain) return static_cast<WORD>(name[0]);
  if (name.size() < 2 || name.size() > 3 || name[0] != L'F') return 0;
  int number = 0;
  for (const wchar_t digit : name.substr(1)) {
    if (digit < L'0' || digit > L'9') return 0;
    number = number * 10 + (digit - L'0');
  }
  return number >= 1 && number <= 24 ? static_cast<WORD>(VK_F1 + number - 1) : WORD{0};
}

std::string Captions(const std::vector<ui::MenuItem>& items) {
  std::string all;
  for (const ui::MenuItem& item : items)
    all += item.caption + "\n" + (item.items.empty() ? "" : "{" + Captions(item.items) + "}");
  return all;
}

}  // namespace

ACCEL ParseAccelerator(std::wstring_view caption) {
  ACCEL accelerator = {};
  const auto tab = caption.find(L'\t');
  if (tab == std::wstring_view::npos) return accelerator;
  BYTE flags = FVIRTKEY;
  std::wstring_view rest = caption.substr(tab + 1);
  for (auto plus = rest.find(L'+'); plus != std::wstring_view::npos; plus = rest.find(L'+')) {
    const NamedKey* modifier = FindKey(kModifiers, rest.substr(0, plus));
    if (!modifier) return accelerator;
    flags = static_cast<BYTE>(flags | modifier->key);
    rest.remove_prefix(plus + 1);
  }
  accelerator.key = KeyOf(rest);
  accelerator.fVirt = flags;
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
    ACCEL accelerator = ParseAccelerator(caption);
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
