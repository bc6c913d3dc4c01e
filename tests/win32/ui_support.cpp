#include "ui_support.h"

#include "platform/win32/system/own_window.h"

namespace ui_test {
namespace {

constexpr DWORD kPatience = 5000;  // milliseconds

BOOL CALLBACK Collect(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

std::vector<HWND> WindowsOfThread() {
  std::vector<HWND> tops;
  EnumThreadWindows(GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(&tops));
  std::vector<HWND> all = tops;
  for (HWND top : tops) EnumChildWindows(top, Collect, reinterpret_cast<LPARAM>(&all));
  return all;
}

HWND OpenDialog() {
  for (HWND window : WindowsOfThread()) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) == L"#32770" && IsWindowVisible(window) && !GetParent(GetParent(window)))
      return window;
  }
  return nullptr;
}

using Watcher = std::function<void(UINT, LPARAM)>;

LRESULT CALLBACK ShowWatcher(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                             DWORD_PTR data) {
  const auto* watcher = reinterpret_cast<const Watcher*>(data);
  (*watcher)(message, lParam);
  if (message == WM_NCDESTROY) delete watcher;
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void UiTest::TearDown() {
  for (ui::Window* window : shown_) toolkit_.Discard(*window);
}

void UiTest::Show(ui::Window& window) {
  toolkit_.Realize(window);
  shown_.push_back(&window);
  window.Show();
  window.BringToFront();
  ASSERT_TRUE(RunUntil([&] { return GetActiveWindow() == toolkit_.HandleOf(window); }));
  Settle();
}

bool UiTest::RunUntil(const std::function<bool()>& done) {
  const ULONGLONG end = GetTickCount64() + kPatience;
  while (!done()) {
    if (GetTickCount64() > end) return false;
    loop_.Turn();
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
  return true;
}

void UiTest::Settle() {
  for (int turn = 0; turn < 3; ++turn) {
    bool reached = false;
    loop_.Post([&] { reached = true; });
    RunUntil([&] { return reached; });
  }
}

void UiTest::Press(WORD key) {
  const HWND focus = GetFocus();
  ASSERT_NE(focus, nullptr);
  PostMessageW(focus, WM_KEYDOWN, key, 1);
  PostMessageW(focus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
  Settle();
}

void UiTest::MoveFocus(const ui::Control& control) {
  SetFocus(Native(control));
  Settle();
}

void UiTest::ChangeDensity(HWND window, int dpi, const RECT& proposed) {
  SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&proposed));
  Settle();
}

std::string UiTest::Focused() const { return NameOf(GetFocus()); }

void UiTest::WhenDialogOpens(std::function<void(HWND)> act) {
  loop_.Post([this, act = std::move(act)] {
    const HWND dialog = OpenDialog();
    if (dialog) return act(dialog);
    Sleep(10);
    WhenDialogOpens(act);
  });
}

HWND ByName(const std::string& name) {
  for (HWND window : WindowsOfThread()) {
    if (NameOf(window) == name) return window;
  }
  return nullptr;
}

HWND Native(const ui::Control& control) { return ByName(control.GetForm().Name() + "." + control.Name()); }

std::string NameOf(HWND window) {
  const auto atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(GetPropW(window, win32::kNameProperty)));
  wchar_t name[256] = {};
  return atom && GlobalGetAtomNameW(atom, name, 256) ? win32::Utf8(name) : std::string();
}

std::string TextOf(HWND window) {
  wchar_t text[1024] = {};
  SendMessageW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
  return win32::Utf8(text);
}

RECT RectOf(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return rect;
}

void TypeInto(HWND edit, const char* text) {
  for (; *text; ++text) SendMessageW(edit, WM_CHAR, static_cast<WPARAM>(*text), 1);
}

void SetTextOf(HWND edit, const char* text) {
  SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(win32::Wide(text).c_str()));
}

void Click(HWND button) { SendMessageW(button, BM_CLICK, 0, 0); }

void Watch(HWND window, Watcher watcher) {
  SetWindowSubclass(window, ShowWatcher, 1, reinterpret_cast<DWORD_PTR>(new Watcher(std::move(watcher))));
}

void Hold(WORD key, bool down) {
  BYTE keys[256] = {};
  keys[key] = down ? 0x80 : 0;
  SetKeyboardState(keys);
}

void SelectRow(HWND list, int row, bool select) {
  LVITEMW item = {};
  item.stateMask = LVIS_SELECTED;
  item.state = select ? LVIS_SELECTED : 0;
  SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void ChooseEntry(HWND list, int place) {
  SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  SendMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(list));
}

}  // namespace ui_test
