// How large a NativeWindow is and where its controls stand.
#include <algorithm>
#include <utility>

#include "platform/win32/system/text.h"
#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

constexpr int kMargin = 7;           // dialog units around the controls of a window
constexpr int kTitleExtra = 70;      // dialog units beside the title: icon and buttons, and its wider letters
constexpr int kLeastAreaWidth = 60;  // dialog units of a page area on the smallest screen
constexpr int kLeastAreaHeight = 40;

MONITORINFO ScreenOf(HMONITOR monitor) {
  MONITORINFO screen = {};
  screen.cbSize = sizeof screen;
  GetMonitorInfoW(monitor, &screen);
  return screen;
}

// A window's normal place as the system keeps it is counted from the corner of the screen's work area, behind
// task bars at the left or top ("WINDOWPLACEMENT", remarks).
RECT OnScreen(RECT inWorkArea) {
  const MONITORINFO screen = ScreenOf(MonitorFromRect(&inWorkArea, MONITOR_DEFAULTTONEAREST));
  OffsetRect(&inWorkArea, screen.rcWork.left - screen.rcMonitor.left,
             screen.rcWork.top - screen.rcMonitor.top);
  return inWorkArea;
}

ui::Size SizeOf(const RECT& rect) { return {rect.right - rect.left, rect.bottom - rect.top}; }

}  // namespace

RECT NativeWindow::WorkArea() const {
  if (parent_) return WindowRect(Window());
  return ScreenOf(MonitorFromWindow(Window(), MONITOR_DEFAULTTOPRIMARY)).rcWork;
}

ui::Size NativeWindow::FrameSize() const {
  RECT rect = {};
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_STYLE));
  const auto extended = static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_EXSTYLE));
  AdjustWindowRectExForDpi(&rect, style, menu_.has_value(), extended, GetDpiForWindow(Window()));
  return SizeOf(rect);
}

ui::Size NativeWindow::Margin() const {
  if (parent_) return {};
  return {form_->X(kMargin), form_->Y(kMargin)};
}

ui::Size NativeWindow::MeasureClient() const {
  form_->Unmeasure();
  const ui::Size content = form_->Minimum();
  // A title is cut like any other text when the window is too narrow for it.
  const int title = parent_ ? 0 : look_->font.Width(Wide(data_->Title())) + form_->X(kTitleExtra);
  const ui::Size margin = Margin();
  return {std::max(content.width + 2 * margin.width, title), content.height + 2 * margin.height};
}

ui::Size NativeWindow::LeastSize() {
  if (leastSize_) return *leastSize_;
  const ui::Size work = SizeOf(WorkArea());
  const ui::Size frame = FrameSize();
  const ui::Size most = {work.width - frame.width, work.height - frame.height};
  for (const auto& control : form_->Controls()) {
    if (!control->Limit({})) continue;
    const ui::Size client = MeasureClient();
    const ui::Size wanted = control->Measure();
    const int width =
        std::max(form_->X(kLeastAreaWidth), wanted.width - std::max(0, client.width - most.width));
    const int height =
        std::max(form_->Y(kLeastAreaHeight), wanted.height - std::max(0, client.height - most.height));
    if (width < wanted.width || height < wanted.height) control->Limit({width, height});
  }
  const ui::Size client = MeasureClient();
  leastSize_ = {std::min(client.width, most.width) + frame.width,
                std::min(client.height, most.height) + frame.height};
  return *leastSize_;
}

void NativeWindow::QueueArrange() {
  leastSize_.reset();
  if (std::exchange(arrangeQueued_, true) || Hidden()) return;
  context_.loop.Post(Later([this] { ArrangeQueued(); }));
}

void NativeWindow::ArrangeQueued() {
  if (!std::exchange(arrangeQueued_, false)) return;
  UpdateMenu();
  GrowToLeastSize(false);
  ArrangeNow();
}

void NativeWindow::ArrangeNow() {
  if (IsIconic(Window())) return;
  if (parent_) {
    // How much of its page areas is seen depends on the room that it has now.
    leastSize_.reset();
    LeastSize();
  }
  const RECT client = ClientRect(Window());
  const auto [left, top] = Margin();
  form_->Arrange({left, top, client.right - 2 * left, client.bottom - 2 * top});
}

void NativeWindow::GrowToLeastSize(bool exactly) {
  if (parent_ || IsIconic(Window()) || IsZoomed(Window())) return;
  SetOuterSize(exactly ? ui::Size() : SizeOf(WindowRect(Window())));
}

void NativeWindow::SetOuterSize(const ui::Size& wanted) {
  const RECT work = WorkArea();
  const ui::Size most = SizeOf(work);
  const ui::Size least = LeastSize();
  const int width = std::clamp(wanted.width, least.width, std::max(least.width, most.width));
  const int height = std::clamp(wanted.height, least.height, std::max(least.height, most.height));
  const RECT now = WindowRect(Window());
  if (SizeOf(now) == ui::Size{width, height}) return;
  const int left = std::max<int>(work.left, std::min<int>(now.left, work.right - width));
  const int top = std::max<int>(work.top, std::min<int>(now.top, work.bottom - height));
  SetWindowPos(Window(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

ui::Bounds NativeWindow::GetBounds() const {
  RECT rect = WindowRect(Window());
  if (IsIconic(Window())) {
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    GetWindowPlacement(Window(), &placement);
    rect = OnScreen(placement.rcNormalPosition);
  }
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

void NativeWindow::Resize(int width, int height) {
  if (data_->resizable) SetOuterSize({width, height});
}

// Over the window that it belongs to, else on the screen.
void NativeWindow::Centre() {
  const HWND owner = GetWindow(Window(), GW_OWNER);
  const bool overOwner = owner && IsWindowVisible(owner) && !IsIconic(owner);
  const RECT around = overOwner ? WindowRect(owner) : WorkArea();
  const ui::Size size = SizeOf(WindowRect(Window()));
  const int left = (around.left + around.right - size.width) / 2;
  const int top = (around.top + around.bottom - size.height) / 2;
  SetWindowPos(Window(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace win32
