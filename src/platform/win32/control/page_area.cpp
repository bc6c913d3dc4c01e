// The part of a window where one of several forms is shown. Each form has a page window of its own, a child
// without caption and border; the area scrolls the shown page where it is larger than the area and follows
// the focus.
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "base/error.h"
#include "platform/win32/control/kinds.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/form_native.h"
#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

constexpr const wchar_t* kAreaClass = L"TarnPageArea";
constexpr const wchar_t* kPageClass = L"TarnPage";
constexpr int kEmptyWidth = 120;  // dialog units of an area without pages
constexpr int kEmptyHeight = 60;
constexpr int kRevealMargin = 8;  // dialog units left free around what is scrolled into view
constexpr int kWheelStep = 24;    // dialog units of a wheel notch or a click on the arrow

LRESULT CALLBACK PageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  std::optional<LRESULT> answer;
  if (auto* context = reinterpret_cast<UiContext*>(GetWindowLongPtrW(window, GWLP_USERDATA))) {
    context->loop.Guard([&] { answer = DispatchToControl(*context, message, wParam, lParam); });
  }
  return answer ? *answer : DefWindowProcW(window, message, wParam, lParam);
}

class NativePageArea : public NativeControl {
 public:
  using NativeControl::NativeControl;
  ~NativePageArea() override;

  bool Limit(const ui::Size& most) override;
  /// The largest page, within the limit.
  ui::Size Measure() const override;
  bool Place(const ui::Rect& rect) override;
  void Mirror(ui::Aspect aspect) override;
  void FontChanged() override;
  void Disconnect() override;
  void Reveal(HWND inside) override;

 private:
  struct Page {
    ui::Form* data;
    WindowHandle window;
    std::shared_ptr<NativeForm> form;
  };

  ui::PageArea& Area() const { return static_cast<ui::PageArea&>(Control()); }
  Style GetStyle() const override;
  std::optional<LRESULT> Filter(UINT message, WPARAM wParam, LPARAM lParam) override;

  void MirrorPages();
  void MirrorEnabled();
  void AddPage(ui::Form& form);
  static void DropPage(Page& page);
  void ShowPage();
  Page* Shown();
  void ArrangeShown();
  void ScrollTo(int bar, int position);
  void Scroll(int bar, UINT code);
  void ScrollWheel(WPARAM wParam);
  int Position(int bar) const { return GetScrollPos(Window(), bar); }

  std::vector<Page> pages_;
  ui::Form* shown_ = nullptr;
  ui::Size limit_;
  POINT wheelRest_ = {};
};

NativePageArea::~NativePageArea() {
  for (Page& page : pages_) DropPage(page);
}

NativeControl::Style NativePageArea::GetStyle() const {
  RegisterWindowClass(kAreaClass, &DefWindowProcW);
  RegisterWindowClass(kPageClass, &PageProcedure);
  return {kAreaClass, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
}

void NativePageArea::Disconnect() {
  for (Page& page : pages_) DropPage(page);
  pages_.clear();
  NativeControl::Disconnect();
}

// The rest of a page is scrolled.
bool NativePageArea::Limit(const ui::Size& most) {
  limit_ = most;
  return true;
}

ui::Size NativePageArea::Measure() const {
  ui::Size size = {Metrics().X(kEmptyWidth), Metrics().Y(kEmptyHeight)};
  for (const Page& page : pages_) {
    const ui::Size least = page.form->Minimum();
    size = {std::max(size.width, least.width), std::max(size.height, least.height)};
  }
  const bool scrollsDown = limit_.height > 0 && size.height > limit_.height;
  if (scrollsDown) size.width += Metrics().System(SM_CXVSCROLL);
  if (limit_.width > 0 && size.width > limit_.width)
    size = {limit_.width, size.height + Metrics().System(SM_CYHSCROLL)};
  if (limit_.height > 0) size.height = std::min(size.height, limit_.height);
  return size;
}

void NativePageArea::Mirror(ui::Aspect aspect) {
  if (aspect == ui::Aspect::kContent) {
    MirrorPages();
    ShowPage();
  }
  if (aspect == ui::Aspect::kEnabled) return MirrorEnabled();
  if (aspect != ui::Aspect::kText) NativeControl::Mirror(aspect);
}

// The pages alone: the area's scroll bars go on working.
void NativePageArea::MirrorEnabled() {
  for (const Page& page : pages_) EnableWindow(page.window.Get(), Area().EnabledInFrame());
}

void NativePageArea::FontChanged() {
  for (const Page& page : pages_) page.form->FontChanged();
}

void NativePageArea::MirrorPages() {
  const std::vector<ui::Form*> wanted = Area().Forms();
  for (Page& page : pages_) {
    if (std::ranges::find(wanted, page.data) != wanted.end()) continue;
    if (shown_ == page.data) shown_ = nullptr;
    DropPage(page);
  }
  std::erase_if(pages_, [](const Page& page) { return !page.form; });
  for (ui::Form* form : wanted) {
    if (std::ranges::find(pages_, form, &Page::data) == pages_.end()) AddPage(*form);
  }
}

void NativePageArea::AddPage(ui::Form& form) {
  WindowHandle window(CreateWindowExW(WS_EX_CONTROLPARENT, kPageClass, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0,
                                      0, 0, Window(), nullptr, ThisModule(), nullptr));
  if (!window) throw base::Error("The page " + form.Name() + " could not be created: " + LastErrorText());
  SetWindowLongPtrW(window.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&Context()));
  auto native = std::make_shared<NativeForm>(Context(), Form().Top(), form, window.Get());
  pages_.push_back({&form, std::move(window), std::move(native)});
}

void NativePageArea::DropPage(Page& page) {
  if (!page.form) return;
  page.form->Top().Focus().Forget(*page.form);
  page.form->Detach();
  page.form.reset();
  page.window.Reset();
}

void NativePageArea::ShowPage() {
  if (shown_ == Area().Shown()) return;
  shown_ = Area().Shown();
  // Asked before anything is hidden: with its window the focus goes to whatever the system chooses.
  const bool focused = IsChild(Window(), GetFocus());
  if (Page* page = Shown()) {
    page->form->CreateControls();
    ScrollTo(SB_HORZ, 0);
    ScrollTo(SB_VERT, 0);
    ArrangeShown();
    SetWindowPos(page->window.Get(), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  }
  for (const Page& page : pages_) {
    if (page.data != shown_) ShowWindow(page.window.Get(), SW_HIDE);
  }
  // A hidden window would keep the keys to itself.
  const Page* now = Shown();
  if (focused && !(now && IsChild(now->window.Get(), GetFocus())))
    SetFocus(GetNextDlgTabItem(Form().Top().Window(), nullptr, FALSE));
}

NativePageArea::Page* NativePageArea::Shown() {
  const auto found = std::ranges::find(pages_, shown_, &Page::data);
  return found == pages_.end() ? nullptr : &*found;
}

bool NativePageArea::Place(const ui::Rect& rect) {
  const bool moved = NativeControl::Place(rect);
  ArrangeShown();
  return moved;
}

void NativePageArea::ArrangeShown() {
  Page* page = Shown();
  if (!page) return;
  const RECT outer = WindowRect(Window());
  const ui::Size area = {outer.right - outer.left, outer.bottom - outer.top};
  const ui::Size least = page->form->Minimum();
  // One scroll bar takes room from the other direction.
  const int barWidth = Metrics().System(SM_CXVSCROLL);
  const int barHeight = Metrics().System(SM_CYHSCROLL);
  bool down = least.height > area.height;
  const bool across = least.width > area.width - (down ? barWidth : 0);
  down = least.height > area.height - (across ? barHeight : 0);
  const ui::Size seen = {area.width - (down ? barWidth : 0), area.height - (across ? barHeight : 0)};
  const ui::Size size = {std::max(least.width, seen.width), std::max(least.height, seen.height)};

  const auto setBar = [this](int bar, int whole, int part) {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = whole - 1;
    info.nPage = static_cast<UINT>(std::max(part, 0));
    SetScrollInfo(Window(), bar, &info, TRUE);
  };
  setBar(SB_HORZ, size.width, seen.width);
  setBar(SB_VERT, size.height, seen.height);
  SetWindowPos(page->window.Get(), nullptr, -Position(SB_HORZ), -Position(SB_VERT), size.width, size.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  page->form->Arrange({0, 0, size.width, size.height});
}

void NativePageArea::ScrollTo(int bar, int position) {
  SetScrollPos(Window(), bar, position, TRUE);
  if (Page* page = Shown())
    SetWindowPos(page->window.Get(), nullptr, -Position(SB_HORZ), -Position(SB_VERT), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void NativePageArea::Scroll(int bar, UINT code) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(Window(), bar, &info);
  const int step = Metrics().Y(kWheelStep);
  const int page = std::max(step, static_cast<int>(info.nPage) - step);
  switch (code) {
    case SB_LINEUP:
      return ScrollTo(bar, info.nPos - step);
    case SB_LINEDOWN:
      return ScrollTo(bar, info.nPos + step);
    case SB_PAGEUP:
      return ScrollTo(bar, info.nPos - page);
    case SB_PAGEDOWN:
      return ScrollTo(bar, info.nPos + page);
    case SB_TOP:
      return ScrollTo(bar, 0);
    case SB_BOTTOM:
      return ScrollTo(bar, info.nMax);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return ScrollTo(bar, info.nTrackPos);
    default:
      return;
  }
}

void NativePageArea::ScrollWheel(WPARAM wParam) {
  // Fine wheels send parts of a notch.
  wheelRest_.y += static_cast<short>(HIWORD(wParam)) * Metrics().Y(kWheelStep);
  const int distance = wheelRest_.y / WHEEL_DELTA;
  wheelRest_.y -= distance * WHEEL_DELTA;
  ScrollTo(SB_VERT, Position(SB_VERT) - distance);
}

void NativePageArea::Reveal(HWND inside) {
  Page* page = Shown();
  if (!page || !IsChild(page->window.Get(), inside)) return;
  RECT rect = WindowRect(inside);
  MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&rect), 2);
  const RECT client = ClientRect(Window());
  const auto follow = [&](int bar, int low, int high, int length, int margin) {
    if (low - margin < 0) ScrollTo(bar, Position(bar) + low - margin);
    if (high + margin > length) ScrollTo(bar, Position(bar) + high + margin - length);
  };
  follow(SB_VERT, rect.top, rect.bottom, client.bottom, Metrics().Y(kRevealMargin));
  follow(SB_HORZ, rect.left, rect.right, client.right, Metrics().X(kRevealMargin));
}

std::optional<LRESULT> NativePageArea::Filter(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_VSCROLL:
    case WM_HSCROLL:
      Scroll(message == WM_VSCROLL ? SB_VERT : SB_HORZ, LOWORD(wParam));
      return 0;
    case WM_MOUSEWHEEL:
      ScrollWheel(wParam);
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::unique_ptr<NativeControl> MakePageArea(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativePageArea>(form, control);
}

}  // namespace win32
