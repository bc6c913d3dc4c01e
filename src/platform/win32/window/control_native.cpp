#include "platform/win32/window/control_native.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/error.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/form_native.h"
#include "platform/win32/window/mark.h"
#include "platform/win32/window/menu_native.h"
#include "platform/win32/window/window_native.h"

namespace win32 {

UiContext& NativeControl::Context() const { return form_.Context(); }

const FontMetrics& NativeControl::Metrics() const { return form_.Top().GetLook().font; }

const Pictures& NativeControl::Images() const { return form_.Top().GetLook().pictures; }

HFONT NativeControl::TextFont() const {
  return control_.GetMark() == ui::Mark::kNone ? Metrics().Text() : Metrics().Bold();
}

std::wstring NativeControl::ShownText() const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)), L'\0');
  const int length = GetWindowTextW(window_, text.data(), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void NativeControl::Create(int id, bool startsGroup) {
  const Style style = GetStyle();
  const DWORD state = (control_.VisibleInFrame() ? WS_VISIBLE : 0) |
                      (control_.EnabledInFrame() ? 0 : WS_DISABLED) | (startsGroup ? WS_GROUP : 0);
  window_ = CreateWindowExW(style.extendedStyle, style.windowClass, Caption().c_str(),
                            WS_CHILD | style.style | state, 0, 0, 0, 0, form_.Window(),
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(), nullptr);
  const std::string name = control_.GetForm().Name() + "." + control_.Name();
  if (!window_) throw base::Error("The control " + name + " could not be created: " + LastErrorText());
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(TextFont()), FALSE);
  name_.emplace(window_, name);
  Context().controls[window_] = this;
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  native_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
  Created();
  Mirror(ui::Aspect::kContent);
  if (!control_.ShownTip().empty()) form_.ShowTip(*this);
  MirrorName();
  MeasuredAnew();
}

void NativeControl::Disconnect() {
  if (!window_) return;
  name_.reset();
  Context().accessibleNames.Set(window_, {});
  Context().controls.erase(window_);
  // Somebody may have put a procedure before this one, and would be cut off if this one were taken out.
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  window_ = nullptr;
}

void NativeControl::Mirror(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::kText:
      return MirrorText();
    case ui::Aspect::kEnabled:
      if ((IsWindowEnabled(window_) != FALSE) != control_.EnabledInFrame())
        EnableWindow(window_, control_.EnabledInFrame());
      return;
    case ui::Aspect::kVisible:
      ShowWindow(window_, control_.VisibleInFrame() ? SW_SHOWNA : SW_HIDE);
      return;
    case ui::Aspect::kTip:
      return form_.ShowTip(*this);
    case ui::Aspect::kName:
      return MirrorName();
    case ui::Aspect::kMark:
      return MirrorMark();
    case ui::Aspect::kContent:
      return;
  }
}

void NativeControl::MirrorText() {
  const std::wstring caption = Caption();
  if (ShownText() != caption) SetWindowTextW(window_, caption.c_str());
}

void NativeControl::MirrorName() { Context().accessibleNames.Set(window_, Wide(control_.AccessibleName())); }

void NativeControl::MirrorMark() {
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(TextFont()), FALSE);
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

std::optional<LRESULT> NativeControl::Color(HDC dc) const {
  if (control_.GetMark() == ui::Mark::kNone || !IsWindowEnabled(window_)) return std::nullopt;
  return reinterpret_cast<LRESULT>(PrepareMark(control_.GetMark(), dc));
}

std::function<void()> NativeControl::Track(const std::vector<ui::MenuItem>& items, std::optional<POINT> place,
                                           const RECT& inside) const {
  POINT shown = place.value_or(POINT{inside.left, inside.bottom});
  if (!place) ClientToScreen(window_, &shown);
  const NativeMenu menu(items, NativeMenu::Shape::kPopup);
  const auto form = form_.shared_from_this();
  const int id = TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, shown.x, shown.y, 0,
                                form_.Top().Window(), nullptr);
  return form->Alive() ? menu.Find(id) : nullptr;
}

bool NativeControl::ShowFormMenu(std::optional<POINT> place) {
  const auto& ask = control_.GetForm().onContextMenu;
  if (!ask || !control_.Usable()) return false;
  ui::ContextMenu menu = ask(control_);
  if (menu.items.empty()) return false;
  static constexpr std::pair<UINT, LPARAM> kCommands[] = {
      {WM_UNDO, 0}, {WM_CUT, 0}, {WM_COPY, 0}, {WM_PASTE, 0}, {EM_SETSEL, -1}};
  if (control_.GetKind() == ui::Kind::kTextBox) {
    menu.items.emplace_back();
    for (std::size_t i = 0; i < std::min(menu.editing.size(), std::size(kCommands)); ++i) {
      const auto& [message, selection] = kCommands[i];
      menu.items.push_back({menu.editing[i],
                            [window = window_, message = message, selection = selection] {
                              SendMessageW(window, message, 0, selection);
                            },
                            {}});
    }
  }
  // Not as Act does: what stands in the box need not pass its check to be taken back.
  if (const auto handler = Track(menu.items, place, ClientRect(window_))) Context().loop.Guard(handler);
  return true;
}

bool NativeControl::MeasuredAnew() {
  const ui::Size before = std::exchange(measured_, Measure());
  return before != measured_;
}

void NativeControl::FontChanged() {
  if (window_) Send(WM_SETFONT, reinterpret_cast<WPARAM>(TextFont()), TRUE);
  MeasuredAnew();
}

bool NativeControl::Place(const ui::Rect& rect) {
  if (rect == placed_) return false;
  placed_ = rect;
  // Copied pixels of many moves at once would overlap each other.
  SetWindowPos(window_, nullptr, rect.left, rect.top, rect.width, rect.height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  return true;
}

void NativeControl::TakeFocus() { form_.Top().Focus().Give(window_); }

void NativeControl::Act(const std::function<void()>& work) {
  Context().loop.RunOutsideSend(form_.Later([this, work] {
    if (form_.Top().Focus().Settle() && form_.Alive()) Context().loop.Guard(work);
    if (form_.Alive()) Mirror(ui::Aspect::kContent);
  }));
}

LRESULT CALLBACK NativeControl::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* control = reinterpret_cast<NativeControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  const WNDPROC native =
      control ? control->native_ : reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
  std::optional<LRESULT> answer;
  if (control) control->Context().loop.Guard([&] { answer = control->Receive(message, wParam, lParam); });
  return answer ? *answer : CallWindowProcW(native, window, message, wParam, lParam);
}

std::optional<LRESULT> NativeControl::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) form_.Top().Focus().Moved();
  if ((message == WM_PAINT || message == WM_NCPAINT) && control_.GetMark() != ui::Mark::kNone) {
    const LRESULT painted = Native(message, wParam, lParam);
    PaintMark(window_, control_, Metrics());
    return painted;
  }
  if (message != WM_NCDESTROY) return Filter(message, wParam, lParam);
  Disconnect();
  return std::nullopt;
}

}  // namespace win32
