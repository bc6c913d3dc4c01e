#include "platform/win32/window/focus_keeper.h"

#include <utility>

#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

ui::TextBox* TextBoxOf(NativeControl* control) {
  if (!control || control->Control().GetKind() != ui::Kind::kTextBox) return nullptr;
  return static_cast<ui::TextBox*>(&control->Control());
}

bool CanTakeFocus(HWND control) { return IsWindowVisible(control) && IsWindowEnabled(control); }

}  // namespace

// A combo box and the like give the focus to a window inside them.
NativeControl* FocusKeeper::Focused() const {
  for (HWND window = GetFocus(); window && window != window_.Window(); window = GetParent(window)) {
    if (NativeControl* control = context_.Find(window))
      return &control->Form().Top() == &window_ ? control : nullptr;
  }
  return nullptr;
}

void FocusKeeper::Give(HWND control) {
  saved_ = control;
  if (window_.Active() && CanTakeFocus(control)) Restore();
}

void FocusKeeper::Save() {
  const HWND focus = GetFocus();
  if (focus && IsChild(window_.Window(), focus)) saved_ = focus;
}

void FocusKeeper::Restore() {
  const HWND window = window_.Window();
  if (!IsWindowEnabled(window) || IsIconic(window)) return;
  const bool usable = saved_ && IsChild(window, saved_) && CanTakeFocus(saved_);
  const HWND target = usable ? saved_ : GetNextDlgTabItem(window, nullptr, FALSE);
  if (target && target != GetFocus()) SetFocus(target);
}

void FocusKeeper::Moved() {
  if (std::exchange(queued_, true)) return;
  context_.loop.Post(window_.Later([this] {
    queued_ = false;
    const NativeControl* focused = Focused();
    const bool goesOn = focused && focused != awaited_;
    if (!(goesOn ? Settle() : SettleFocus()) || !window_.Alive()) return;
    Reveal();
    MarkDefaultButton();
  }));
}

bool FocusKeeper::Settle() { return SettleFocus() && TakeAwaited(); }

bool FocusKeeper::TakeAwaited() {
  if (!awaited_ || settling_ || !window_.Alive() || !window_.TakesInput()) return true;
  NativeControl* control = std::exchange(awaited_, nullptr);
  settling_ = true;
  const bool accepted = control->Take();
  settling_ = false;
  if (!accepted) ++refusals_;
  return accepted;
}

bool FocusKeeper::SettleFocus() {
  if (settling_ || !window_.Alive() || !window_.TakesInput()) return true;
  NativeControl* focused = Focused();
  if (!focused || focused == entered_ || window_.IsCancelButton(focused->Control())) return true;
  if (entered_ && !Leave(*entered_)) return false;
  if (window_.Alive()) Enter();
  return window_.Alive();
}

bool FocusKeeper::Leave(NativeControl& box) {
  entered_ = nullptr;
  if (!box.Control().Usable()) return true;
  const auto form = box.Form().shared_from_this();
  bool accepted = true;  // a check that fails by itself does not hold the person in the box
  settling_ = true;
  context_.loop.Guard([&] { accepted = TextBoxOf(&box)->Leave(); });
  settling_ = false;
  if (accepted) return true;
  ++refusals_;
  if (awaited_) std::exchange(awaited_, nullptr)->Mirror(ui::Aspect::kContent);
  if (form->Alive()) entered_ = &box;
  return false;
}

void FocusKeeper::Enter() {
  NativeControl* focused = Focused();
  if (focused == entered_) return;
  ui::TextBox* box = TextBoxOf(focused);
  entered_ = box ? focused : nullptr;
  if (box) context_.loop.Guard([box] { box->Enter(); });
}

void FocusKeeper::Forget(const NativeForm& form) {
  if (entered_ && &entered_->Form() == &form) entered_ = nullptr;
  if (awaited_ && &awaited_->Form() == &form) awaited_ = nullptr;
}

void FocusKeeper::Reveal() const {
  const HWND focus = GetFocus();
  if (!focus || !IsChild(window_.Window(), focus)) return;
  for (HWND window = GetParent(focus); window && window != window_.Window(); window = GetParent(window)) {
    if (NativeControl* control = context_.Find(window)) control->Reveal(focus);
  }
}

// The button with the focus is the one that Enter presses; otherwise the window's own one shows that it is.
void FocusKeeper::MarkDefaultButton() const {
  const NativeControl* focused = Focused();
  if (!focused || focused->Control().GetKind() == ui::Kind::kButton) return;
  for (const auto& button : window_.Form().Controls()) {
    if (button->Control().GetKind() != ui::Kind::kButton) continue;
    const auto type = GetWindowLongPtrW(button->Window(), GWL_STYLE) & BS_TYPEMASK;
    const LONG_PTR wanted = window_.IsDefaultButton(button->Control()) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    if (type != wanted) SendMessageW(button->Window(), BM_SETSTYLE, static_cast<WPARAM>(wanted), TRUE);
  }
}

}  // namespace win32
