// Drop-down lists and progress bars.
#include <algorithm>

#include "platform/win32/control_kinds.h"
#include "platform/win32/form_native.h"
#include "platform/win32/utf.h"

namespace win32 {
namespace {

constexpr int kListPadding = 30;    // pixels at 96 dots per inch: border, margins and button of a list
constexpr int kLeastWidth = 48;     // dialog units of a drop-down list
constexpr int kMostWidth = 130;     // a longer entry is cut in the closed list and whole in the open one
constexpr int kSelectionFrame = 6;  // pixels of it outside the selection field
constexpr int kMostRows = 12;
constexpr int kBarWidth = 150;  // dialog units
constexpr int kBarHeight = 9;

class NativeListBox : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override {
    const int wanted = Longest() + Metrics().Scale(kListPadding);
    return {std::clamp(wanted, Metrics().X(kLeastWidth), Metrics().X(kMostWidth)), Metrics().BoxHeight()};
  }

  bool Place(const ui::Rect& rect) override {
    const auto rowHeight = static_cast<int>(SendMessageW(Window(), CB_GETITEMHEIGHT, 0, 0));
    const int rows = std::clamp(static_cast<int>(List().Items().size()), 1, kMostRows);
    return NativeControl::Place(
        {rect.left, rect.top, rect.width, rect.height + rows * rowHeight + Metrics().Scale(kSelectionFrame)});
  }

  void Mirror(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::kContent) {
      if (shown_ != List().Items()) Fill();
      if (SendMessageW(Window(), CB_GETCURSEL, 0, 0) != List().Selected()) {
        SendMessageW(Window(), CB_SETCURSEL, static_cast<WPARAM>(List().Selected()), 0);
      }
    }
    if (aspect != ui::Aspect::kText) NativeControl::Mirror(aspect);
  }

  void Command(UINT code) override {
    if (code != CBN_SELCHANGE) return;
    const auto place = static_cast<int>(SendMessageW(Window(), CB_GETCURSEL, 0, 0));
    Act([this, place] { List().Choose(place); });
  }

 private:
  ui::ListBox& List() const { return static_cast<ui::ListBox&>(Control()); }
  Style GetStyle() const override { return {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP}; }

  void Created() override {
    const int field = Metrics().BoxHeight() - kSelectionFrame;
    SendMessageW(Window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
  }

  // The wheel scrolls the page; it must not change a setting in passing.
  std::optional<LRESULT> Filter(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message != WM_MOUSEWHEEL || SendMessageW(Window(), CB_GETDROPPEDSTATE, 0, 0)) return std::nullopt;
    return SendMessageW(GetParent(Window()), message, wParam, lParam);
  }

  // Width of the longest entry in pixels; known before there is a native window.
  int Longest() const {
    if (measuredItems_ == List().Items()) return longest_;
    measuredItems_ = List().Items();
    longest_ = 0;
    for (const std::string& item : measuredItems_) longest_ = std::max(longest_, Metrics().Width(Wide(item)));
    return longest_;
  }

  void Fill() {
    shown_ = List().Items();
    SendMessageW(Window(), CB_RESETCONTENT, 0, 0);
    for (const std::string& item : shown_) {
      const std::wstring text = Wide(item);
      SendMessageW(Window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    const int width = Longest() + Metrics().Scale(kListPadding);
    SendMessageW(Window(), CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width), 0);
  }

  std::vector<std::string> shown_;
  mutable std::vector<std::string> measuredItems_;
  mutable int longest_ = 0;
};

class NativeProgressBar : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override { return {Metrics().X(kBarWidth), Metrics().Y(kBarHeight)}; }

  void Mirror(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::kContent) {
      // The bar of the visual styles creeps up to a larger value, long after the work, and goes back to a
      // smaller one at once.
      const int most = std::max(Bar().Maximum(), 1);
      SendMessageW(Window(), PBM_SETRANGE32, 0, most + 1);
      SendMessageW(Window(), PBM_SETPOS, static_cast<WPARAM>(Bar().Value() + 1), 0);
      SendMessageW(Window(), PBM_SETPOS, static_cast<WPARAM>(Bar().Value()), 0);
      SendMessageW(Window(), PBM_SETRANGE32, 0, most);
    }
    NativeControl::Mirror(aspect);
  }

 private:
  const ui::ProgressBar& Bar() const { return static_cast<const ui::ProgressBar&>(Control()); }
  Style GetStyle() const override { return {PROGRESS_CLASSW}; }
};

}  // namespace

std::unique_ptr<NativeControl> MakeListBox(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeListBox>(form, control);
}

std::unique_ptr<NativeControl> MakeProgressBar(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeProgressBar>(form, control);
}

}  // namespace win32
