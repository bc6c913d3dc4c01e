// The place of a control of another maker: an empty window, whose one child always fills it.
#include "platform/win32/control/kinds.h"
#include "platform/win32/system/window_class.h"
#include "platform/win32/window/form_native.h"

namespace win32 {
namespace {

constexpr const wchar_t* kClass = L"TarnControlSite";

class NativeControlSite : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override {
    const auto& site = static_cast<const ui::ControlSite&>(Control());
    return {Metrics().X(site.Width()), Metrics().Y(site.Height())};
  }

 private:
  Style GetStyle() const override {
    RegisterWindowClass(kClass, &DefWindowProcW);
    return {kClass, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
  }

  std::optional<LRESULT> Filter(UINT message, WPARAM, LPARAM lParam) override {
    const HWND inside = GetWindow(Window(), GW_CHILD);
    if (inside && message == WM_SIZE) {
      SetWindowPos(inside, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // The site itself does nothing with the keys.
    if (inside && message == WM_SETFOCUS) SetFocus(GetNextDlgTabItem(Window(), nullptr, FALSE));
    return std::nullopt;
  }
};

}  // namespace

std::unique_ptr<NativeControl> MakeControlSite(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeControlSite>(form, control);
}

}  // namespace win32
