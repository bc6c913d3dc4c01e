#include "platform/win32/window/window_native.h"

#include <algorithm>
#include <ranges>

#include "base/error.h"
#include "platform/win32/system/text.h"

namespace win32 {
namespace {

constexpr const wchar_t* kClass = L"TarnWindow";
constexpr DWORD kDialogStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
constexpr int kFirstControl = 100;

constexpr int kShowCommands[] = {SW_SHOW, SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED};  // of ui::WindowState
constexpr int kStateCommands[] = {SW_RESTORE, SW_MINIMIZE, SW_MAXIMIZE};

}  // namespace

void NativeWindow::Create() {
  RegisterWindowClass(kClass, &Procedure);
  const DWORD ownStyle = data_->resizable ? WS_OVERLAPPEDWINDOW : kDialogStyle;
  const DWORD style = parent_ ? WS_CHILD | WS_VISIBLE : ownStyle;
  const DWORD extended = WS_EX_CONTROLPARENT | (parent_ || data_->resizable ? 0 : WS_EX_DLGMODALFRAME);
  window_ = WindowHandle(CreateWindowExW(extended, kClass, Wide(data_->Title()).c_str(),
                                         style | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT, 0, 0, parent_,
                                         nullptr, ThisModule(), nullptr));
  if (!window_)
    throw base::Error("The window " + data_->Name() + " could not be created: " + LastErrorText());
  // No message tells the density of a window's first screen.
  look_ = &context_.LookFor(static_cast<int>(GetDpiForWindow(Window())));
  form_ = std::make_shared<NativeForm>(context_, *this, *data_, Window());
  form_->CreateControls();
  SetWindowLongPtrW(Window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  context_.windows.insert(context_.windows.begin(), this);
  data_->SetWindowPeer(this);
  if (!parent_) {
    UpdateMenu();
    SetIcons();
    GrowToLeastSize(true);
  }
  UpdateEnabled();
}

void NativeWindow::Detach() {
  if (!data_) return;
  data_->SetWindowPeer(nullptr);
  std::erase(context_.windows, this);
  if (context_.modalOwner == this) context_.modalOwner = nullptr;
  if (window_) SetWindowLongPtrW(Window(), GWLP_USERDATA, 0);
  // The system destroys the windows that stand over this one with it.
  for (const NativeWindow* other : context_.windows) {
    if (GetWindow(other->Window(), GW_OWNER) == Window())
      SetWindowLongPtrW(other->Window(), GWLP_HWNDPARENT, 0);
  }
  // The pages in the form's page areas end with their area.
  if (form_) form_->Detach();
  data_ = nullptr;
  window_.Reset();
}

int NativeWindow::IdOf(const ui::Control& control) const {
  if (IsCancelButton(control)) return IDCANCEL;
  const auto& controls = control.GetForm().Controls();
  return kFirstControl + static_cast<int>(std::ranges::find(controls, &control) - controls.begin());
}

bool NativeWindow::Translate(MSG& message) {
  if (!Alive() || (message.hwnd != Window() && !IsChild(Window(), message.hwnd))) return false;
  const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  if (!IsWindowEnabled(Window())) return key;
  if (menu_ && menu_->Accelerators() && TranslateAcceleratorW(Window(), menu_->Accelerators(), &message))
    return true;
  return IsDialogMessageW(Window(), &message) != FALSE;
}

LRESULT CALLBACK NativeWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<NativeWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  std::optional<LRESULT> answer;
  if (self) {
    const auto keep = self->shared_from_this();
    self->context_.loop.Guard([&] { answer = self->Handle(message, wParam, lParam); });
  }
  return answer ? *answer : DefWindowProcW(window, message, wParam, lParam);
}

std::optional<LRESULT> NativeWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (lParam == 0) Command(wParam);
      [[fallthrough]];
    case WM_NOTIFY:
    case WM_CONTEXTMENU:
      return DispatchToControl(context_, message, wParam, lParam);
    case DM_GETDEFID:
      return MAKELRESULT(data_->defaultButton ? IdOf(*data_->defaultButton) : IDOK, DC_HASDEFID);
    case WM_SIZE:
      Sized(wParam);
      return 0;
    case WM_WINDOWPOSCHANGED:
      if (!parent_ && (reinterpret_cast<WINDOWPOS*>(lParam)->flags & SWP_SHOWWINDOW)) data_->WasShown();
      return std::nullopt;
    case WM_GETMINMAXINFO: {
      const ui::Size least = LeastSize();
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.width, least.height};
      return 0;
    }
    case WM_EXITSIZEMOVE:
      placed_ = true;
      return std::nullopt;
    case WM_ACTIVATE:
      Activated(LOWORD(wParam) != WA_INACTIVE && HIWORD(wParam) == 0);
      return 0;
    case WM_SETFOCUS:
      focus_.Restore();
      return 0;
    case WM_ENTERMENULOOP:
    case WM_EXITMENULOOP:
      InMenu(message == WM_ENTERMENULOOP);
      return std::nullopt;
    case WM_SETCURSOR:
      return context_.loop.ShowPointer() ? std::optional<LRESULT>(TRUE) : std::nullopt;
    case WM_TIMER:  // the only one that it has
      LeaveTopmost();
      return 0;
    case WM_CLOSE:
      context_.loop.RunOutsideSend(Later([this] { CloseAsked(); }));
      return 0;
    default:
      return HandleSystem(message, wParam, lParam);
  }
}

// What becomes of the desktop and of the session.
std::optional<LRESULT> NativeWindow::HandleSystem(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_DPICHANGED:
      DensityChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_DPICHANGED_AFTERPARENT:  // inside a window of somebody else
      if (parent_) UseDensity(static_cast<int>(GetDpiForWindow(Window())));
      return 0;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
      PassOn(message, wParam, lParam);
      context_.RenewFonts();
      [[fallthrough]];
    case WM_DISPLAYCHANGE:
      QueueArrange();
      return std::nullopt;
    case WM_QUERYENDSESSION:
      return SessionMayEnd();
    case WM_ENDSESSION:
      SessionEnds(wParam != FALSE);
      return 0;
    default:
      return std::nullopt;
  }
}

// A menu that is open must not be replaced by another one.
void NativeWindow::InMenu(bool inside) {
  inMenu_ = inside;
  if (!inside) UpdateMenu();
}

std::function<void()> NativeWindow::Later(std::function<void()> work) {
  return [weak = weak_from_this(), work = std::move(work)] {
    const auto self = weak.lock();
    if (self && self->Alive()) work();
  };
}

void NativeWindow::Command(WPARAM wParam) {
  const auto handler = menu_ ? menu_->Find(LOWORD(wParam)) : nullptr;
  if (!handler) return;
  context_.loop.RunOutsideSend(Later([this, handler] {
    if (TakesInput() && focus_.Settle()) handler();
  }));
}

void NativeWindow::Activated(bool active) {
  if (!active) return focus_.Save();
  if (!IsWindowEnabled(Window())) {
    std::weak_ptr<const NativeWindow> before;
    if (const NativeWindow* front = context_.FrontWindow()) before = front->weak_from_this();
    context_.loop.Post(Later([this, before] { PassActivationBack(before); }));
  }
  std::erase(context_.windows, this);
  context_.windows.push_back(this);
  focus_.Restore();
  if (!data_->onActivate) return;
  // Not from here: the handler may close the window or open another one.
  context_.loop.Post(Later([this] {
    if (const auto handler = data_->onActivate) handler();
  }));
}

void NativeWindow::Sized(WPARAM how) {
  if (IsWindowVisible(Window())) {
    if (how == SIZE_MINIMIZED) data_->StateChanged(ui::WindowState::kMinimized);
    if (how == SIZE_MAXIMIZED) data_->StateChanged(ui::WindowState::kMaximized);
    if (how == SIZE_RESTORED) data_->StateChanged(ui::WindowState::kNormal);
  }
  if (how != SIZE_MINIMIZED) ArrangeNow();
}

void NativeWindow::CloseAsked() {
  if (!TakesInput() || !focus_.TakeAwaited() || !Alive()) return;
  closing_ = true;
  context_.loop.Guard([this] { data_->Close(); });
  closing_ = false;
}

void NativeWindow::UpdateEnabled() {
  if (context_.modalOwner == this) return;
  const bool enable = !HeldUp() && data_->AcceptsInput();
  if (enable == (IsWindowEnabled(Window()) != FALSE)) return;
  if (!enable) focus_.Save();
  EnableWindow(Window(), enable);
  if (enable && !parent_ && Active()) focus_.Restore();
}

void NativeWindow::UpdateMenu() {
  if (inMenu_) return;
  if (data_->menu.empty() ? !menu_ : menu_ && menu_->Shows(data_->menu)) return;
  std::optional<NativeMenu> old = std::move(menu_);
  menu_.reset();
  if (!data_->menu.empty()) menu_.emplace(data_->menu, NativeMenu::Shape::kBar);
  SetMenu(Window(), menu_ ? menu_->Get() : nullptr);
}

void NativeWindow::SetIcons() {
  const auto& [large, small] = look_->pictures.Window(data_->iconFile);
  SendMessageW(Window(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large.Get()));
  SendMessageW(Window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.Get()));
}

void NativeWindow::SetTitle(const std::string& title) {
  SetWindowTextW(Window(), Wide(title).c_str());
  QueueArrange();
}

void NativeWindow::PrepareToShow() {
  ArrangeQueued();
  UpdateMenu();
  if (!data_->resizable) {
    const NativeWindow* front = context_.FrontWindow();
    const HWND owner = front && front != this ? front->Window() : nullptr;
    SetWindowLongPtrW(Window(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
  }
  const RECT now = WindowRect(Window());
  // A remembered place may lie on a screen that is gone.
  const bool centred = !placed_ || !MonitorFromRect(&now, MONITOR_DEFAULTTONULL);
  // First on the screen where it will stand, then in the density of that one.
  if (centred) Centre();
  UseDensity(static_cast<int>(GetDpiForWindow(Window())));
  ArrangeQueued();
  GrowToLeastSize(!data_->resizable);
  if (centred) Centre();
}

void NativeWindow::SetVisible(bool visible) {
  if (visible == (IsWindowVisible(Window()) != FALSE)) return;
  if (!visible) {
    PassActivationOn();
    ShowWindow(Window(), SW_HIDE);
    return;
  }
  PrepareToShow();
  ShowWindow(Window(), kShowCommands[static_cast<int>(data_->State())]);
}

void NativeWindow::SetAcceptsInput(bool accepts) {
  UpdateEnabled();
  if (accepts) UpdateMenu();  // with what the command has changed of it
}

void NativeWindow::SetState(ui::WindowState state) {
  if (state == ui::WindowState::kMaximized && !data_->resizable)
    throw base::Error("The window " + data_->Name() + " cannot be maximized");
  // A hidden window takes its state when it is next shown.
  if (IsWindowVisible(Window())) ShowWindow(Window(), kStateCommands[static_cast<int>(state)]);
}

void NativeWindow::Move(int left, int top) {
  placed_ = true;
  const ui::Bounds now = GetBounds();
  if (now.left == left && now.top == top) return;
  SetWindowPos(Window(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace win32
