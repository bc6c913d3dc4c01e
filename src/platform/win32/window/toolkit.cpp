#include "platform/win32/window/toolkit.h"

// After windows.h, which it needs.
#include <commctrl.h>

#include <algorithm>
#include <ranges>
#include <utility>

#include "platform/win32/system/text.h"
#include "platform/win32/window/ui_context.h"
#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

void LoadControlClasses() {
  INITCOMMONCONTROLSEX classes = {};
  classes.dwSize = sizeof classes;
  classes.dwICC = ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES;
  InitCommonControlsEx(&classes);
}

// With its first window a process loads the display driver, which the user need not wait for later: the host
// is still handing over its properties now.
void LoadDisplay() {
  const WindowHandle window(
      CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 1, 1, nullptr, nullptr, ThisModule(), nullptr));
}

}  // namespace

NativeToolkit::NativeToolkit(MessageLoop& loop) : loop_(loop) {
  LoadControlClasses();
  LoadDisplay();
  context_ = std::make_unique<UiContext>(loop);
  loop_.AddFilter(*this);
}

NativeToolkit::~NativeToolkit() {
  loop_.RemoveFilter(*this);
  for (const auto& [data, window] : windows_) window->Detach();
}

void NativeToolkit::RealizeInside(ui::Window& window, HWND parent) {
  if (windows_.contains(&window)) return;
  const auto native = std::make_shared<NativeWindow>(*context_, window, parent);
  native->Create();
  windows_[&window] = native;
}

void NativeToolkit::Discard(ui::Window& window) {
  const auto node = windows_.extract(&window);
  if (node) node.mapped()->Detach();
}

void NativeToolkit::UseFont(const std::string& face) {
  context_->face = Wide(face);
  context_->RenewFonts();
}

HWND NativeToolkit::HandleOf(const ui::Form& form) const {
  for (const auto& [data, window] : windows_) {
    if (data == &form) return window->Window();
  }
  for (const auto& [handle, control] : context_->controls) {
    if (&control->Control().GetForm() == &form) return control->Form().Window();
  }
  return nullptr;
}

HWND NativeToolkit::HandleOf(const ui::Control& control) const {
  for (const auto& [handle, native] : context_->controls) {
    if (&native->Control() == &control) return handle;
  }
  return nullptr;
}

bool NativeToolkit::Translate(MSG& message) {
  const auto windows = context_->windows;
  return std::ranges::any_of(windows, [&](NativeWindow* window) { return window->Translate(message); });
}

NativeToolkit::Modal::Modal(NativeToolkit& toolkit)
    : context_(*toolkit.context_),
      owner_(context_.FrontWindow()),
      before_(std::exchange(context_.modalOwner, owner_)) {
  ++context_.modalDepth;
  if (owner_ && owner_ != before_) EnableWindow(owner_->Window(), TRUE);
  context_.UpdateEnabled();
}

NativeToolkit::Modal::~Modal() {
  --context_.modalDepth;
  context_.modalOwner = before_;
  context_.UpdateEnabled();
}

HWND NativeToolkit::Modal::Owner() const {
  if (!owner_) return nullptr;
  return owner_ == before_ ? GetLastActivePopup(owner_->Window()) : owner_->Window();
}

}  // namespace win32
