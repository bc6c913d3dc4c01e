// Labels, group boxes and text boxes.
#include <algorithm>
#include <optional>

#include "platform/win32/control/kinds.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/form_native.h"
#include "platform/win32/window/window_native.h"

// After windows.h, which it needs.
#include <windowsx.h>

namespace win32 {
namespace {

constexpr int kFrameCaption = 8;  // dialog units that the border needs beside its caption
constexpr int kBoxPadding = 10;   // pixels at 96 dots per inch: border and inner margins of a text box

class NativeLabel : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override {
    ui::Size size = Metrics().Caption(Caption(), TextFont());
    if (const auto& room = Control().Room(); !room.empty())
      size.width = std::max(size.width, Metrics().Caption(Wide(room), TextFont()).width);
    return size;
  }

 private:
  // SS_NOTIFY lets a label have a tip.
  Style GetStyle() const override { return {L"STATIC", SS_LEFT | SS_NOTIFY}; }
  HFONT TextFont() const override {
    return static_cast<const ui::Label&>(Control()).Heading() ? Metrics().Heading()
                                                              : NativeControl::TextFont();
  }
};

class NativeFrame : public NativeControl {
 public:
  using NativeControl::NativeControl;

  /// The caption with its surroundings; the layout adds the content.
  ui::Size Measure() const override {
    const ui::Size caption = Metrics().Caption(Caption(), Metrics().Bold());
    return {caption.width + Metrics().X(kFrameCaption), caption.height};
  }

  // Where its border was before, the window must paint its background anew.
  bool Place(const ui::Rect& rect) override {
    const bool moved = NativeControl::Place(rect);
    const RECT area = {rect.left, rect.top, rect.left + rect.width, rect.top + rect.height};
    if (moved) InvalidateRect(Form().Window(), &area, TRUE);
    return moved;
  }

 private:
  // Transparent: the window paints its background within the border.
  Style GetStyle() const override { return {L"BUTTON", BS_GROUPBOX, WS_EX_TRANSPARENT}; }
};

class NativeTextBox : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override {
    return {Metrics().X(4 * Box().Columns()) + Metrics().Scale(kBoxPadding), Metrics().BoxHeight()};
  }

  void Mirror(ui::Aspect aspect) override {
    if (aspect == ui::Aspect::kText) return MirrorContent();
    if (aspect == ui::Aspect::kContent) Send(EM_SETREADONLY, Box().ReadOnly(), 0);
    NativeControl::Mirror(aspect);
  }

  void TakeFocus() override {
    NativeControl::TakeFocus();
    Send(EM_SETSEL, 0, -1);
  }

  void Command(UINT code) override {
    if (code != EN_CHANGE || mirroring_) return;
    const auto form = Form().shared_from_this();
    // A person is in the box, also after a check by a key that did not move the focus.
    if (Box().Usable()) Box().GetForm().SetFocused(&Box());
    Context().loop.Guard([this] { Box().Type(Utf8(ShownText())); });
    if (form->Alive()) MirrorContent();
  }

 private:
  ui::TextBox& Box() const { return static_cast<ui::TextBox&>(Control()); }
  Style GetStyle() const override {
    return {L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL | ES_LEFT, WS_EX_CLIENTEDGE};
  }

  // The wheel scrolls the page: a box of one line has no use for it, but not every one passes it on.
  std::optional<LRESULT> Filter(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_CONTEXTMENU) {
      const POINT place = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
      const bool byKey = place.x == -1 && place.y == -1;
      if (ShowFormMenu(byKey ? std::nullopt : std::optional(place))) return 0;
    }
    if (message != WM_MOUSEWHEEL) return std::nullopt;
    return SendMessageW(GetParent(Window()), message, wParam, lParam);
  }

  // What code puts in while a person types leaves the caret where it was.
  void MirrorContent() {
    const std::wstring text = Caption();
    if (ShownText() == text) return;
    DWORD begin = 0;
    DWORD end = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    mirroring_ = true;
    SetWindowTextW(Window(), text.c_str());
    mirroring_ = false;
    Send(EM_SETSEL, begin, end);
  }

  bool mirroring_ = false;
};

}  // namespace

std::unique_ptr<NativeControl> MakeLabel(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeLabel>(form, control);
}

std::unique_ptr<NativeControl> MakeFrame(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeFrame>(form, control);
}

std::unique_ptr<NativeControl> MakeTextBox(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeTextBox>(form, control);
}

}  // namespace win32
