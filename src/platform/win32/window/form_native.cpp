#include "platform/win32/window/form_native.h"

// After windows.h, which it needs.
#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "platform/win32/system/text.h"
#include "platform/win32/window/window_native.h"

namespace win32 {
namespace {

constexpr int kTipWidth = 300;  // pixels at 96 dots per inch

// The arrow keys move within a group: the option buttons of one choice, and everything else by itself.
bool StartsGroup(const ui::Control& control, const ui::Control* before) {
  if (control.GetKind() != ui::Kind::kOptionButton)
    return before && before->GetKind() == ui::Kind::kOptionButton;
  if (!before || before->GetKind() != ui::Kind::kOptionButton) return true;
  const auto& siblings = static_cast<const ui::OptionButton&>(control).Siblings();
  return std::ranges::find(siblings, before) == siblings.end();
}

bool TakesKeys(const ui::Control& control) {
  return control.GetKind() != ui::Kind::kLabel && control.GetKind() != ui::Kind::kFrame;
}

}  // namespace

NativeForm::NativeForm(UiContext& context, NativeWindow& top, ui::Form& form, HWND window)
    : context_(context), top_(top), form_(&form), window_(window) {
  name_.emplace(window, form.Name());
  for (ui::Control* control : ui::PlacedControls(form.GetLayout())) {
    controls_.push_back(MakeNativeControl(*this, *control));
    byControl_[control] = controls_.back().get();
  }
  form.SetPeer(this);
}

void NativeForm::CreateControls() {
  if (std::exchange(created_, true)) return;
  const ui::Control* before = nullptr;
  for (const auto& native : controls_) {
    const ui::Control& control = native->Control();
    native->Create(top_.IdOf(control), StartsGroup(control, before));
    if (TakesKeys(control)) before = &control;
  }
}

void NativeForm::Detach() {
  if (!form_) return;
  form_->SetPeer(nullptr);
  form_ = nullptr;
  name_.reset();
  byControl_.clear();
  // While the controls are there: it takes back what it put before their procedures.
  tips_.Reset();
  for (const auto& control : controls_) control->Disconnect();
}

NativeControl* NativeForm::Find(const ui::Control& control) const {
  const auto found = byControl_.find(&control);
  return found == byControl_.end() ? nullptr : found->second;
}

ui::Size NativeForm::Measure(const ui::Control& control) const {
  const NativeControl* native = Find(control);
  return native ? native->Measure() : ui::Size();
}

ui::Size NativeForm::Minimum() const {
  if (!minimum_) minimum_ = ui::MinimumSize(form_->GetLayout(), *this);
  return *minimum_;
}

void NativeForm::Arrange(const ui::Rect& area) {
  for (const auto& [control, rect] : ui::Arrange(form_->GetLayout(), *this, area))
    Find(*control)->Place(rect);
}

void NativeForm::QueueArrange() {
  Unmeasure();
  top_.QueueArrange();
}

std::function<void()> NativeForm::Later(std::function<void()> work) {
  return [weak = weak_from_this(), work = std::move(work)] {
    const auto form = weak.lock();
    if (!form || !form->Alive()) return;
    const auto top = form->top_.shared_from_this();
    work();
  };
}

int NativeForm::X(int units) const { return top_.GetLook().font.X(units); }

int NativeForm::Y(int units) const { return top_.GetLook().font.Y(units); }

void NativeForm::FontChanged() {
  if (tips_) SetTipWidth();
  for (const auto& control : controls_) control->FontChanged();
  QueueArrange();
}

void NativeForm::Changed(ui::Control& control, ui::Aspect aspect) {
  NativeControl* native = Find(control);
  if (!native) return;
  if (created_) native->Mirror(aspect);
  const bool frame = created_ && control.GetKind() == ui::Kind::kFrame;
  if (frame && (aspect == ui::Aspect::kEnabled || aspect == ui::Aspect::kVisible)) {
    for (const auto& other : controls_) other->Mirror(aspect);
  }
  const bool measured = aspect == ui::Aspect::kText || aspect == ui::Aspect::kContent;
  if (measured && native->MeasuredAnew()) QueueArrange();
}

void NativeForm::TakeFocus(ui::Control& control) {
  NativeControl* native = Find(control);
  if (native && created_) native->TakeFocus();
}

void NativeForm::SetTipWidth() const {
  SendMessageW(tips_.Get(), TTM_SETMAXTIPWIDTH, 0, top_.GetLook().font.Scale(kTipWidth));
}

void NativeForm::ShowTip(const NativeControl& control) {
  if (!tips_) {
    tips_ = WindowHandle(CreateWindowExW(
        WS_EX_TOPMOST, TOOLTIPS_CLASSW, L"", WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_, nullptr, ThisModule(), nullptr));
    SetTipWidth();
  }
  std::wstring text = Wide(control.Control().ShownTip());
  TTTOOLINFOW tool = {};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = window_;
  tool.uId = reinterpret_cast<UINT_PTR>(control.Window());
  tool.lpszText = text.data();
  SendMessageW(tips_.Get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  if (!text.empty()) SendMessageW(tips_.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

std::optional<LRESULT> DispatchToControl(UiContext& context, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) {
    const NativeControl* painted = context.Find(reinterpret_cast<HWND>(lParam));
    return painted ? painted->Color(reinterpret_cast<HDC>(wParam)) : std::nullopt;
  }
  auto* const header = message == WM_NOTIFY ? reinterpret_cast<NMHDR*>(lParam) : nullptr;
  HWND sender = nullptr;
  if (message == WM_COMMAND) sender = reinterpret_cast<HWND>(lParam);
  if (header) sender = header->hwndFrom;
  if (message == WM_CONTEXTMENU) sender = reinterpret_cast<HWND>(wParam);
  NativeControl* control = sender ? context.Find(sender) : nullptr;
  if (!control) return std::nullopt;

  const auto form = control->Form().shared_from_this();
  if (header) return control->Notify(*header);
  if (message == WM_COMMAND) {
    control->Command(HIWORD(wParam));
    return 0;
  }
  // The menu key and Shift+F10 give no place.
  const POINT place = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  control->ContextMenu(place.x == -1 && place.y == -1 ? std::nullopt : std::optional(place));
  return 0;
}

}  // namespace win32
