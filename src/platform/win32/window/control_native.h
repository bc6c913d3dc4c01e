// One native control and the description that it shows. What code changes in the description is mirrored to
// the native control; what a person does to the native control runs through Act into the description. One
// subclass per kind says how it is created, measured and mirrored. Owned by its NativeForm.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/win32/system/own_window.h"
#include "platform/win32/window/ui_context.h"
#include "ui/control.h"
#include "ui/layout.h"
#include "ui/menu.h"

namespace win32 {

class NativeForm;

class NativeControl {
 public:
  NativeControl(NativeForm& form, ui::Control& control) : form_(form), control_(control) {}
  virtual ~NativeControl() = default;

  HWND Window() const { return window_; }
  NativeForm& Form() const { return form_; }
  ui::Control& Control() const { return control_; }

  /// Creates the native control with everything that its description says. Throws base::Error.
  void Create(int id, bool startsGroup);
  /// Ends the connection with the native control, before either is destroyed.
  virtual void Disconnect();
  /// The description changed in `aspect`.
  virtual void Mirror(ui::Aspect aspect);
  /// The size it wants, in pixels.
  virtual ui::Size Measure() const = 0;
  /// Whether that size is another one than at the last call.
  bool MeasuredAnew();
  /// The fonts in use are others now.
  virtual void FontChanged();
  /// The most that Measure asks for from now on, zero for no limit; no from a control that cannot show less
  /// than all of it.
  virtual bool Limit(const ui::Size& /*most*/) { return false; }
  /// Answers whether it moved.
  virtual bool Place(const ui::Rect& rect);
  /// Brings the focus here; a text box selects its content.
  virtual void TakeFocus();

  /// Takes what the focus keeper was told to await; no when it was refused.
  virtual bool Take() { return true; }

  /// Notifications of the native control to its parent.
  virtual void Command(UINT /*code*/) {}
  virtual LRESULT Notify(NMHDR& /*header*/) { return 0; }
  /// The pop-up menu is asked for, at a place of the screen, or by the keyboard.
  virtual void ContextMenu(std::optional<POINT> place) { ShowFormMenu(place); }
  /// Asked by the native control before it paints: the brush for its background, where it has another than
  /// usual.
  std::optional<LRESULT> Color(HDC dc) const;
  /// A window inside got the focus: it is to be seen.
  virtual void Reveal(HWND /*inside*/) {}

 protected:
  struct Style {
    const wchar_t* windowClass;
    DWORD style = 0;
    DWORD extendedStyle = 0;
  };
  virtual Style GetStyle() const = 0;
  /// Finishes the creation: what the styles cannot say.
  virtual void Created() {}
  virtual HFONT TextFont() const;
  /// The caption as shown; a text box keeps the description's text as it stands.
  std::wstring Caption() const { return Wide(control_.Text()); }
  std::wstring ShownText() const;

  /// Shows the menu that the form has for the control; no when it has none.
  bool ShowFormMenu(std::optional<POINT> place);
  /// Lets the person choose from a menu, below the control where no place is given; answers the handler.
  std::function<void()> Track(const std::vector<ui::MenuItem>& items, std::optional<POINT> place,
                              const RECT& inside) const;

  /// Runs what a person did, after the leave check of the text box left before; a refused check drops it. The
  /// native control shows the description again afterwards. `work` may run later, from the loop, so it
  /// captures by value.
  void Act(const std::function<void()>& work);
  /// What the native control does with a message by itself.
  LRESULT Native(UINT message, WPARAM wParam, LPARAM lParam) const {
    return CallWindowProcW(native_, window_, message, wParam, lParam);
  }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(window_, message, wParam, lParam);
  }
  UiContext& Context() const;
  const FontMetrics& Metrics() const;
  /// In the size for the screen that the window stands on.
  const Pictures& Images() const;

 private:
  void MirrorText();
  void MirrorName();
  void MirrorMark();
  /// Stands before the native procedure. A subclass of the common controls would look itself up at every
  /// message.
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> Receive(UINT message, WPARAM wParam, LPARAM lParam);
  virtual std::optional<LRESULT> Filter(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) { return {}; }

  NativeForm& form_;
  ui::Control& control_;
  ui::Size measured_;
  ui::Rect placed_;
  HWND window_ = nullptr;  // destroyed with its parent
  WNDPROC native_ = nullptr;
  std::optional<WindowName> name_;
};

/// The native control for the kind of `control`. The kinds stand in the room above, which defines this.
std::unique_ptr<NativeControl> MakeNativeControl(NativeForm& form, ui::Control& control);

}  // namespace win32
