// A form is a set of controls with a layout; a window is a form that stands on the screen by itself. Both are
// plain data: a Toolkit (the Windows edge) turns a window into a native one when it is first shown. Without a
// toolkit a window keeps its state all the same, so tests drive it as a person would.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/control.h"
#include "ui/layout.h"
#include "ui/list_view.h"
#include "ui/menu.h"

namespace ui {

/// The menu of a control: entries of its form, and the captions under which the native control's own commands
/// stand behind them, in the order undo, cut, copy, paste, select all; only text boxes have these.
struct ContextMenu {
  std::vector<MenuItem> items;
  std::vector<std::string> editing;
};

class Form {
 public:
  explicit Form(std::string name) : name_(std::move(name)) {}
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form() = default;

  /// The window-class name, for example "fPID".
  const std::string& Name() const { return name_; }

  /// Runs when a control shows another content, or is shown or hidden, whoever did it.
  std::function<void(Control&)> onContent;
  /// Asked for the menu of a control. Without entries, or with nothing set, the native control has its own.
  std::function<ContextMenu(Control&)> onContextMenu;

  const std::vector<Control*>& Controls() const { return controls_; }
  /// The control of that name ("txtCO2Level(3)"), or nothing.
  Control* Find(std::string_view name) const;
  /// The control of that name, or all controls of the array of that name ("txtCO2Level"), in order. Throws
  /// base::Error when there is none.
  std::vector<Control*> Group(std::string_view name) const;

  const Node& GetLayout() const { return layout_; }
  void SetLayout(Node layout);

  /// Where the keyboard focus is within this form, or nothing.
  Control* Focused() const { return focused_; }
  void SetFocused(Control* control) { focused_ = control; }
  /// Runs the leave check of the text box that has the focus; no when its content was refused.
  bool CommitFocus();

  /// False while the form, or the window that it is embedded in, is busy, or its area is disabled.
  bool AcceptsInput() const { return acceptsInput_ && (!area_ || area_->Usable()); }

  void SetArea(PageArea* area) { area_ = area; }
  Peer* GetPeer() const { return peer_; }
  void SetPeer(Peer* peer) { peer_ = peer; }

 protected:
  bool acceptsInput_ = true;

 private:
  friend class Control;
  void Register(Control& control) { controls_.push_back(&control); }

  std::string name_;
  std::vector<Control*> controls_;
  Node layout_;
  Control* focused_ = nullptr;
  PageArea* area_ = nullptr;
  Peer* peer_ = nullptr;
};

enum class WindowState { kNormal, kMinimized, kMaximized };

/// Outer rectangle of a window on the screen, in pixels.
struct Bounds {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

/// The native side of a window.
class WindowPeer {
 public:
  virtual ~WindowPeer() = default;
  virtual void SetTitle(const std::string& title) = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual void SetAcceptsInput(bool accepts) = 0;
  virtual void SetState(WindowState state) = 0;
  virtual void Move(int left, int top) = 0;
  virtual void Resize(int width, int height) = 0;
  virtual Bounds GetBounds() const = 0;
  /// Restores a minimised window and brings it before those of other programs, for a moment in the band of
  /// the topmost ones: a program that another one has started may not put itself in front otherwise.
  virtual void BringToFront() = 0;
  /// Takes the window out of the band of those that stay in front of all others; it stays where it is.
  virtual void LeaveTopmost() = 0;
  /// Handles what waits for this window alone and returns at once; it works while a call to another process
  /// holds up the loop.
  virtual void HandleInput() = 0;
  /// The number by which other processes know the window.
  virtual std::int32_t Handle() const = 0;
};

class Window;

/// Makes native windows. A port: implemented by the Windows edge.
class Toolkit {
 public:
  virtual ~Toolkit() = default;
  /// Creates the hidden native window of `window`, with its peer. Throws base::Error.
  virtual void Realize(Window& window) = 0;
  /// Destroys it again. Harmless when there is none.
  virtual void Discard(Window& window) = 0;
  /// Shows all text in the type face `face` from now on, in the windows that exist too; empty: the system's
  /// own.
  virtual void UseFont(const std::string& face) = 0;
};

class Window : public Form {
 public:
  using Form::Form;

  /// Asked when a person closes the window; "no" keeps it. Nothing set means yes.
  std::function<bool()> onQueryClose;
  /// Runs after the window has been hidden by Close.
  std::function<void()> onClosed;
  /// Asked when the user's session is about to end: why it should not end now, in words that the system
  /// shows; empty when it may. Asks nobody. Nothing set means that it may.
  std::function<std::string()> onQueryEnd;
  /// Runs when the session ends in any case: what is to be kept is kept here, and nothing is asked any more.
  std::function<void()> onSessionEnd;
  /// Runs each time the window becomes the active one.
  std::function<void()> onActivate;
  std::vector<MenuItem> menu;
  Button* defaultButton = nullptr;  // the Enter key
  Button* cancelButton = nullptr;   // the Escape key
  bool resizable = true;
  bool duringDialogs = false;  // takes input while a dialog of the system is open, too
  std::string iconFile;        // empty: the program's own icon

  const std::string& Title() const { return title_; }
  void SetTitle(std::string_view title);

  bool Visible() const { return visible_; }
  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  /// Asks onQueryClose, hides the window and runs onClosed. Answers whether it was closed.
  bool Close();
  void SetAcceptsInput(bool accepts);

  WindowState State() const { return state_; }
  /// Throws base::Error when the native window refuses.
  void SetState(WindowState state);
  /// Called by the native side when a person minimises, restores or maximises.
  void StateChanged(WindowState state) { state_ = state; }
  /// Called by the native side, also when another program has shown the window.
  void WasShown() { visible_ = true; }

  void Move(int left, int top);
  /// Gives a resizable window another outer size, at least its minimum and at most the screen's.
  void Resize(int width, int height);
  Bounds GetBounds() const;
  void BringToFront();
  void LeaveTopmost();

  WindowPeer* GetWindowPeer() const { return windowPeer_; }
  void SetWindowPeer(WindowPeer* peer) { windowPeer_ = peer; }

 private:
  void SetVisible(bool visible);

  std::string title_;
  bool visible_ = false;
  WindowState state_ = WindowState::kNormal;
  Bounds bounds_;
  WindowPeer* windowPeer_ = nullptr;
};

}  // namespace ui
