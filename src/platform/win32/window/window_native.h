// The native top-level window of one ui::Window: its frame, menu, size, activation and closing. The controls
// in it belong to its form. Inside a window of somebody else it has no frame, and its size and keys are that
// one's business. Owned by the toolkit; whoever runs a handler keeps it alive until the handler has returned.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "platform/win32/system/own_window.h"
#include "platform/win32/window/focus_keeper.h"
#include "platform/win32/window/form_native.h"
#include "platform/win32/window/menu_native.h"
#include "ui/form.h"

namespace win32 {

class NativeWindow : public ui::WindowPeer, public std::enable_shared_from_this<NativeWindow> {
 public:
  /// `parent` null: a top-level window.
  NativeWindow(UiContext& context, ui::Window& window, HWND parent = nullptr)
      : context_(context), data_(&window), parent_(parent), focus_(context, *this) {}
  ~NativeWindow() override { Detach(); }

  /// Creates the hidden native window with all its controls. Throws base::Error.
  void Create();
  /// Ends the connection with the ui::Window, which may then be destroyed, and destroys the native one.
  void Detach();
  bool Alive() const { return data_ != nullptr; }
  /// Whether the active window of the desktop is this one, or the one around it.
  bool Active() const { return GetActiveWindow() == GetAncestor(Window(), GA_ROOT); }

  HWND Window() const { return window_.Get(); }
  /// Fonts and pictures for the screen that the window stands on. Only once it was created.
  Look& GetLook() const { return *look_; }
  NativeForm& Form() const { return *form_; }
  FocusKeeper& Focus() { return focus_; }

  /// Whether it stands in a window of somebody else, whose keys and clicks it does not see.
  bool Inside() const { return parent_ != nullptr; }

  /// Number of a control as the dialog keys know it: the cancel button has a fixed one, and none has IDOK.
  int IdOf(const ui::Control& control) const;
  bool IsCancelButton(const ui::Control& control) const { return &control == data_->cancelButton; }
  bool IsDefaultButton(const ui::Control& control) const { return &control == data_->defaultButton; }

  /// False while the window is busy or closing, and while a system dialog holds it up.
  bool TakesInput() const { return !closing_ && !HeldUp() && data_->AcceptsInput(); }
  /// Follows what the window may take now; the focus comes back to where it was.
  void UpdateEnabled();

  /// `work` for the loop: not done when the window has ended meanwhile, which is kept alive while it runs.
  std::function<void()> Later(std::function<void()> work);

  /// Arranges the controls anew when the present call is done; several requests become one.
  void QueueArrange();
  /// Keys of this window: tab steps, mnemonics, default and cancel button, accelerators.
  bool Translate(MSG& message);

  void SetTitle(const std::string& title) override;
  void SetVisible(bool visible) override;
  void SetAcceptsInput(bool accepts) override;
  void SetState(ui::WindowState state) override;
  void Move(int left, int top) override;
  void Resize(int width, int height) override;
  ui::Bounds GetBounds() const override;
  void BringToFront() override;
  void LeaveTopmost() override;
  void HandleInput() override { context_.loop.TurnFor(Window()); }
  std::int32_t Handle() const override { return HandleToLong(Window()); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> HandleSystem(UINT message, WPARAM wParam, LPARAM lParam);
  void Command(WPARAM wParam);
  void Activated(bool active);
  void UseDensity(int dpi);
  void DensityChanged(int dpi, const RECT& proposed);
  void PassOn(UINT message, WPARAM wParam, LPARAM lParam) const;
  LRESULT SessionMayEnd();
  void SessionEnds(bool ends);
  void InMenu(bool inside);
  void Sized(WPARAM how);
  void CloseAsked();
  void SetTopmost(bool topmost);
  void UpdateMenu();
  void SetIcons();
  void PrepareToShow();
  void PassActivationOn() const;
  void PassActivationBack(const std::weak_ptr<const NativeWindow>& before) const;
  bool HeldUp() const { return context_.modalDepth > 0 && !data_->duringDialogs; }

  // --- size, in window_size.cpp ---
  /// What the window may take of the screen, or of its parent.
  RECT WorkArea() const;
  /// Left free on each side of the controls; inside another window there is a margin already.
  ui::Size Margin() const;
  ui::Size FrameSize() const;
  /// Least outer size: shows everything, but no larger than the screen; page areas scroll instead.
  ui::Size LeastSize();
  ui::Size MeasureClient() const;
  /// What happens in a hidden window is arranged once, when it is shown.
  bool Hidden() const { return !parent_ && !IsWindowVisible(Window()); }
  void ArrangeQueued();
  void ArrangeNow();
  void GrowToLeastSize(bool exactly);
  /// As near to `wanted` as the least size and the screen allow, and within the screen.
  void SetOuterSize(const ui::Size& wanted);
  void Centre();

  UiContext& context_;
  ui::Window* data_;
  HWND parent_;
  FocusKeeper focus_;
  WindowHandle window_;
  Look* look_ = nullptr;
  std::shared_ptr<NativeForm> form_;
  std::optional<NativeMenu> menu_;
  std::optional<ui::Size> leastSize_;
  bool placed_ = false;  // by code or by a person: no longer centred when shown
  bool arrangeQueued_ = false;
  bool closing_ = false;
  bool inMenu_ = false;
};

}  // namespace win32
