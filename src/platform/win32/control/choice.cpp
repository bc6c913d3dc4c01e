// Drop-down lists and progress bars.
//
// A choice in a list may ask a question, call the host and change other pages, so that keys alone make none:
// an open list chooses once, when it closes with a choice, and an entry that keys bring up in a closed one is
// chosen when the person goes on to something else (another control, a button's or menu's key, closing).
// Escape brings the entry back that was chosen before. Inside a window of somebody else it cannot be seen
// that the person goes on, so that a list there waits for nothing.
#include <algorithm>
#include <utility>

#include "platform/win32/control/kinds.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/form_native.h"
#include "platform/win32/window/window_native.h"

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

  bool Place(const ui::Rect& rect) override;
  void Mirror(ui::Aspect aspect) override;
  void FontChanged() override;
  void Command(UINT code) override;
  bool Take() override;

 private:
  enum class State { kClosed, kOpen, kClosing };

  ui::ListBox& List() const { return static_cast<ui::ListBox&>(Control()); }
  Style GetStyle() const override { return {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP}; }
  int Shown() const { return static_cast<int>(Send(CB_GETCURSEL)); }
  FocusKeeper& Focus() const { return Form().Top().Focus(); }

  void Created() override;
  std::optional<LRESULT> Filter(UINT message, WPARAM wParam, LPARAM lParam) override;
  void Closed();
  void Choose(int place);
  int Longest() const;
  void SetHeights();
  void SetDroppedWidth();
  void Fill();

  std::vector<std::string> shown_;
  mutable std::vector<std::string> measuredItems_;
  mutable int longest_ = 0;
  State state_ = State::kClosed;
  bool cancelled_ = false;
  bool inKey_ = false;
};

void NativeListBox::Created() {
  SetHeights();
  Send(CB_SETMINVISIBLE, kMostRows);
}

// The native control takes the height of its entries from the first font alone.
void NativeListBox::SetHeights() {
  Send(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), Metrics().BoxHeight() - kSelectionFrame);
  Send(CB_SETITEMHEIGHT, 0, Metrics().LineHeight());
}

void NativeListBox::FontChanged() {
  measuredItems_.clear();
  NativeControl::FontChanged();
  if (!Window()) return;
  SetHeights();
  SetDroppedWidth();
}

void NativeListBox::SetDroppedWidth() {
  const int width = Longest() + Metrics().Scale(kListPadding);
  Send(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width));
}

bool NativeListBox::Place(const ui::Rect& rect) {
  const auto rowHeight = static_cast<int>(Send(CB_GETITEMHEIGHT));
  const int rows = std::clamp(static_cast<int>(List().Items().size()), 1, kMostRows);
  return NativeControl::Place(
      {rect.left, rect.top, rect.width, rect.height + rows * rowHeight + Metrics().Scale(kSelectionFrame)});
}

void NativeListBox::Mirror(ui::Aspect aspect) {
  if (aspect == ui::Aspect::kContent) {
    if (shown_ != List().Items()) Fill();
    if (Shown() != List().Selected()) Send(CB_SETCURSEL, static_cast<WPARAM>(List().Selected()));
  }
  if (aspect != ui::Aspect::kText) NativeControl::Mirror(aspect);
  if (aspect == ui::Aspect::kMark) SetHeights();  // the native control takes another one with the font
}

void NativeListBox::Command(UINT code) {
  switch (code) {
    case CBN_DROPDOWN:
      state_ = State::kOpen;
      cancelled_ = false;
      return;
    case CBN_SELENDCANCEL:
      // A closed list that loses the focus may send it too.
      cancelled_ = state_ == State::kOpen;
      return;
    case CBN_CLOSEUP:
      return Closed();
    case CBN_SELCHANGE:
      if (state_ != State::kClosed) return;
      return inKey_ && !Form().Top().Inside() ? Focus().Await(this) : Choose(Shown());
    default:
      return;
  }
}

// The documentation leaves open whether a changed selection is told before the list closes or after it.
void NativeListBox::Closed() {
  state_ = State::kClosing;
  Focus().Await(this);
  Context().loop.Post(Form().Later([this] {
    if (Focus().Awaits(*this) && state_ == State::kClosing) Focus().Settle();
  }));
}

bool NativeListBox::Take() {
  const bool cancelled = std::exchange(cancelled_, false);
  state_ = State::kClosed;
  const int place = cancelled ? List().Selected() : Shown();
  bool taken = place == List().Selected();
  const auto form = Form().shared_from_this();
  if (!taken) {
    Context().loop.Guard([&] { List().Choose(place); });
    taken = form->Alive() && List().Selected() == place;
  }
  if (form->Alive()) Mirror(ui::Aspect::kContent);
  return taken;
}

// By the mouse, or by another program.
void NativeListBox::Choose(int place) {
  if (Focus().Awaits(*this)) Focus().Await(nullptr);
  Act([this, place] { List().Choose(place); });
}

std::optional<LRESULT> NativeListBox::Filter(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto open = [this] { return Native(CB_GETDROPPEDSTATE, 0, 0) != FALSE; };
  const auto takesBack = [&](WPARAM key) { return key == VK_ESCAPE && Focus().Awaits(*this) && !open(); };
  switch (message) {
    // The wheel scrolls the page; it must not change a setting in passing.
    case WM_MOUSEWHEEL:
      if (open()) return std::nullopt;
      return SendMessageW(GetParent(Window()), message, wParam, lParam);
    case WM_GETDLGCODE:
      if (!lParam || !takesBack(reinterpret_cast<const MSG*>(lParam)->wParam)) return std::nullopt;
      return DLGC_WANTMESSAGE | Native(message, wParam, lParam);
    case WM_KEYDOWN:
      if (takesBack(wParam)) {
        Focus().Await(nullptr);
        Mirror(ui::Aspect::kContent);
        return 0;
      }
      [[fallthrough]];
    case WM_CHAR: {
      inKey_ = true;
      const LRESULT answer = Native(message, wParam, lParam);
      inKey_ = false;
      return answer;
    }
    default:
      return std::nullopt;
  }
}

// Width of the longest entry in pixels; known before there is a native window.
int NativeListBox::Longest() const {
  if (measuredItems_ == List().Items()) return longest_;
  measuredItems_ = List().Items();
  longest_ = 0;
  for (const std::string& item : measuredItems_) longest_ = std::max(longest_, Metrics().Width(Wide(item)));
  return longest_;
}

void NativeListBox::Fill() {
  shown_ = List().Items();
  Send(CB_RESETCONTENT);
  for (const std::string& item : shown_) {
    const std::wstring text = Wide(item);
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
  SetDroppedWidth();
}

class NativeProgressBar : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override { return {Metrics().X(kBarWidth), Metrics().Y(kBarHeight)}; }

  void Mirror(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::kContent) {
      // The bar of the visual styles creeps up to a larger value, long after the work, and goes back to a
      // smaller one at once.
      const int most = std::max(Bar().Maximum(), 1);
      Send(PBM_SETRANGE32, 0, most + 1);
      Send(PBM_SETPOS, static_cast<WPARAM>(Bar().Value() + 1), 0);
      Send(PBM_SETPOS, static_cast<WPARAM>(Bar().Value()), 0);
      Send(PBM_SETRANGE32, 0, most);
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
