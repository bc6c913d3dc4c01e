// The native side of one form: its controls, in the window that carries them (a top-level window or a page).
// It mirrors the form's changes, arranges the controls and hands their notifications to them. Owned by the
// window or page area; whoever runs a handler keeps it alive until the handler has returned.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/win32/system/own_window.h"
#include "platform/win32/window/control_native.h"
#include "ui/form.h"

namespace win32 {

class NativeWindow;

class NativeForm : public ui::Peer, public ui::Metrics, public std::enable_shared_from_this<NativeForm> {
 public:
  NativeForm(UiContext& context, NativeWindow& top, ui::Form& form, HWND window);
  ~NativeForm() override { Detach(); }

  /// Creates the native windows of all controls of the layout, in its order, unless that is done. Until then
  /// the form can only be measured, which is all that a page needs before it is shown. Throws base::Error.
  void CreateControls();
  /// Ends the connection with the form, which may then be destroyed. No handler runs any more.
  void Detach();
  bool Alive() const { return form_ != nullptr; }

  NativeWindow& Top() const { return top_; }
  HWND Window() const { return window_; }
  UiContext& Context() const { return context_; }
  /// Only while alive.
  ui::Form& Form() const { return *form_; }

  /// The least size of all its controls, in pixels.
  ui::Size Minimum() const;
  /// Forgets the measured size, because something was measured that has changed.
  void Unmeasure() { minimum_.reset(); }
  void Arrange(const ui::Rect& area);
  /// The fonts in use are others now: everything is measured anew.
  void FontChanged();
  /// The size of a control changed, so the window is to be arranged anew, when the present call is done.
  void QueueArrange();

  /// `work` for the loop: not done when the form has ended meanwhile, which is kept alive with its window
  /// while it runs.
  std::function<void()> Later(std::function<void()> work);

  NativeControl* Find(const ui::Control& control) const;
  const std::vector<std::unique_ptr<NativeControl>>& Controls() const { return controls_; }

  void ShowTip(const NativeControl& control);

  void Changed(ui::Control& control, ui::Aspect aspect) override;
  void TakeFocus(ui::Control& control) override;
  void LayoutChanged() override { QueueArrange(); }
  ui::Size Measure(const ui::Control& control) const override;
  int X(int units) const override;
  int Y(int units) const override;

 private:
  void SetTipWidth() const;

  UiContext& context_;
  NativeWindow& top_;
  ui::Form* form_;
  HWND window_;
  std::optional<WindowName> name_;
  std::vector<std::unique_ptr<NativeControl>> controls_;  // in the order of the layout
  std::unordered_map<const ui::Control*, NativeControl*> byControl_;
  bool created_ = false;
  WindowHandle tips_;
  mutable std::optional<ui::Size> minimum_;
};

/// Hands a message that controls send to their parent (commands, notifications, context menus) to the
/// control; nothing when it is none of these. Used by every window that carries controls.
std::optional<LRESULT> DispatchToControl(UiContext& context, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace win32
