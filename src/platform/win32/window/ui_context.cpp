#include "platform/win32/window/ui_context.h"

// After windows.h, which they need.
#include <objbase.h>
#include <oleacc.h>

#include <algorithm>
#include <ranges>

#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

// "Dynamic Annotation" of Microsoft Active Accessibility; UI Automation takes these names too. The compiler's
// libraries do not have the numbers.
constexpr CLSID kServices = {0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr IID kInterface = {0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr MSAAPROPID kName = {0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

}  // namespace

AccessibleNames::AccessibleNames() = default;
AccessibleNames::~AccessibleNames() = default;

// Made for the first name: a program without one need not load the service.
bool AccessibleNames::Ready() {
  if (services_) return true;
  void* services = nullptr;
  if (FAILED(CoCreateInstance(kServices, nullptr, CLSCTX_INPROC_SERVER, kInterface, &services))) return false;
  services_ = ComPtr<IAccPropServices>(static_cast<IAccPropServices*>(services));
  return true;
}

void AccessibleNames::Set(HWND control, const std::wstring& name) {
  constexpr auto kClient = static_cast<DWORD>(OBJID_CLIENT);
  if (name.empty()) {
    if (named_.erase(control) > 0) services_->ClearHwndProps(control, kClient, CHILDID_SELF, &kName, 1);
  } else if (Ready() &&
             SUCCEEDED(services_->SetHwndPropStr(control, kClient, CHILDID_SELF, kName, name.c_str()))) {
    named_.insert(control);
  }
}

NativeWindow* UiContext::FrontWindow() const {
  const auto visible = [](const NativeWindow* window) { return IsWindowVisible(window->Window()) != FALSE; };
  const auto fromFront = std::views::reverse(windows);
  const auto found = std::ranges::find_if(fromFront, visible);
  return found == fromFront.end() ? nullptr : *found;
}

Look& UiContext::LookFor(int dpi) { return looks.try_emplace(dpi, face, dpi).first->second; }

void UiContext::RenewFonts() {
  bool changed = false;
  for (auto& [dpi, look] : looks) changed = look.font.Renew(face) || changed;
  if (!changed) return;
  for (const NativeWindow* window : windows) window->Form().FontChanged();
}

void UiContext::UpdateEnabled() {
  const auto all = windows;  // in another order when one of them comes to the front meanwhile
  for (NativeWindow* window : all) window->UpdateEnabled();
}

}  // namespace win32
