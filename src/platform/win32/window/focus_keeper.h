// Where the keyboard focus of one top-level window is: which text box a person is in, the check when he
// leaves it for another control of the same window, and the place the focus comes back to. The check runs
// after the focus has moved, never inside the move, and not when the person goes to another window, to the
// cancel button, or closes.
#pragma once

#include <windows.h>

#include "platform/win32/window/ui_context.h"

namespace win32 {

class NativeForm;
class NativeWindow;

class FocusKeeper {
 public:
  FocusKeeper(UiContext& context, NativeWindow& window) : context_(context), window_(window) {}

  /// Puts the focus on a control of the window, now or when the window is next active and takes input.
  void Give(HWND control);
  /// The focus moved within or out of the window: the check follows when the present call is done.
  void Moved();
  /// Before anything else happens in the window: runs the leave check of a text box that was left for another
  /// control, and takes what awaits being taken; no when either was refused.
  bool Settle();
  /// `control` shows what a person has in mind there; it is taken when the person goes on. None: nothing
  /// awaits being taken.
  void Await(NativeControl* control) { awaited_ = control; }
  bool Awaits(const NativeControl& control) const { return awaited_ == &control; }
  /// Takes what awaits being taken; no when it was refused.
  bool TakeAwaited();
  /// How often either was refused so far.
  int Refusals() const { return refusals_; }
  /// `form` goes away with its controls.
  void Forget(const NativeForm& form);

  void Save();
  void Restore();

 private:
  NativeControl* Focused() const;
  bool SettleFocus();
  bool Leave(NativeControl& box);
  void Enter();
  void Reveal() const;
  void MarkDefaultButton() const;

  UiContext& context_;
  NativeWindow& window_;
  bool queued_ = false;
  bool settling_ = false;
  HWND saved_ = nullptr;
  NativeControl* entered_ = nullptr;  // the text box that a person is in
  NativeControl* awaited_ = nullptr;
  int refusals_ = 0;
};

}  // namespace win32
