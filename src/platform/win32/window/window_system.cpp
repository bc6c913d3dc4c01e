// A NativeWindow among those of other programs, and what the system tells it: another density, other colours
// and fonts, the end of the session.
#include <algorithm>
#include <ranges>

#include "platform/win32/system/text.h"
#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

constexpr UINT_PTR kTopmostTimer = 1;
constexpr UINT kTopmostTime =
    333;  // milliseconds, long enough for the desktop to have put the window in front

BOOL CALLBACK Tell(HWND child, LPARAM what) {
  const MSG& told = *reinterpret_cast<const MSG*>(what);
  SendMessageW(child, told.message, told.wParam, told.lParam);
  return TRUE;
}

}  // namespace

void NativeWindow::BringToFront() {
  if (IsIconic(Window())) ShowWindow(Window(), SW_RESTORE);
  // The system lets a program in the background flash its button in the task bar instead
  // ("SetForegroundWindow", remarks). In the topmost band the window stands in front without that right.
  if (GetForegroundWindow() != Window()) {
    SetTopmost(true);
    SetTimer(Window(), kTopmostTimer, kTopmostTime, nullptr);
  }
  SetForegroundWindow(Window());
}

void NativeWindow::LeaveTopmost() {
  KillTimer(Window(), kTopmostTimer);
  SetTopmost(false);
}

void NativeWindow::SetTopmost(bool topmost) {
  SetWindowPos(Window(), topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

// The system would activate another program when the tool's next window is busy.
void NativeWindow::PassActivationOn() const {
  if (GetForegroundWindow() != Window()) return;
  const auto fromFront = std::views::reverse(context_.windows);
  const auto next = std::ranges::find_if(fromFront, [this](const NativeWindow* other) {
    return other != this && IsWindowVisible(other->Window()) && !IsIconic(other->Window());
  });
  if (next != fromFront.end()) SetForegroundWindow((*next)->Window());
}

// Nobody can work in a window that is held up: what it waits for stands over it, or was in front before.
void NativeWindow::PassActivationBack(const std::weak_ptr<const NativeWindow>& before) const {
  if (IsWindowEnabled(Window()) || GetForegroundWindow() != Window()) return;
  const auto front = before.lock();
  const bool shown =
      front && front->Alive() && IsWindowVisible(front->Window()) && !IsIconic(front->Window());
  HWND receiver = EnabledOver(Window());
  if (receiver == Window() && shown) receiver = EnabledOver(front->Window());
  if (IsWindowEnabled(receiver)) SetForegroundWindow(receiver);
}

void NativeWindow::UseDensity(int dpi) {
  Look& look = context_.LookFor(dpi);
  if (&look == look_) return;
  look_ = &look;
  if (!parent_) SetIcons();
  form_->FontChanged();
}

// The system proposes the same place and size in the new density. A window of fixed size has its least size
// in any: the one that it has now may belong to this density already, when it was put over a window on
// another screen.
void NativeWindow::DensityChanged(int dpi, const RECT& proposed) {
  UseDensity(dpi);
  const UINT size = data_->resizable ? 0 : SWP_NOSIZE;
  SetWindowPos(Window(), nullptr, proposed.left, proposed.top, proposed.right - proposed.left,
               proposed.bottom - proposed.top, SWP_NOZORDER | SWP_NOACTIVATE | size);
  if (!data_->resizable) GrowToLeastSize(true);
}

// The system tells top-level windows alone; the common controls expect to hear it from them.
void NativeWindow::PassOn(UINT message, WPARAM wParam, LPARAM lParam) const {
  const MSG told = {Window(), message, wParam, lParam, 0, {}};
  EnumChildWindows(Window(), Tell, reinterpret_cast<LPARAM>(&told));
}

// The system shows the reason beside the window, and lets the user end the session all the same.
LRESULT NativeWindow::SessionMayEnd() {
  const std::string reason = data_->onQueryEnd ? data_->onQueryEnd() : std::string();
  if (reason.empty()) return TRUE;
  ShutdownBlockReasonCreate(Window(), Wide(reason).c_str());
  return FALSE;
}

void NativeWindow::SessionEnds(bool ends) {
  ShutdownBlockReasonDestroy(Window());
  if (ends && data_->onSessionEnd) data_->onSessionEnd();
}

}  // namespace win32
