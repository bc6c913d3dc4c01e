#include "simulator/win32/person.h"

#include <chrono>
#include <cstdlib>
#include <span>
#include <string>

#include "base/error.h"
#include "base/text.h"
#include "platform/win32/system/text.h"
#include "simulator/win32/foreign.h"
#include "simulator/win32/foreign_list.h"

namespace simhost::person {
namespace {

struct NamedNumber {
  std::string_view name;
  UINT number;
};

constexpr NamedNumber kKeys[] = {{"{TAB}", VK_TAB},   {"{ENTER}", VK_RETURN}, {"{ESC}", VK_ESCAPE},
                                 {"{UP}", VK_UP},     {"{DOWN}", VK_DOWN},    {"{DELETE}", VK_DELETE},
                                 {"{LEFT}", VK_LEFT}, {"{RIGHT}", VK_RIGHT},  {"{HOME}", VK_HOME},
                                 {"{END}", VK_END},   {"{SPACE}", VK_SPACE},  {"{BACK}", VK_BACK},
                                 {"{F8}", VK_F8}};

constexpr NamedNumber kAnswers[] = {{"OK", IDOK}, {"Cancel", IDCANCEL}, {"Yes", IDYES}, {"No", IDNO}};

UINT NumberOf(std::span<const NamedNumber> table, std::string_view name, const char* what) {
  for (const NamedNumber& entry : table) {
    if (base::EqualsNoCase(entry.name, name)) return entry.number;
  }
  throw base::Error("there is no " + std::string(what) + " \"" + std::string(name) + "\"");
}

void PostKey(HWND window, UINT key) {
  PostMessageW(window, WM_KEYDOWN, key, 1);
  PostMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void RequireUsable(HWND window, const Patience& patience) {
  patience.Until([&]() -> std::string {
    if (!IsWindow(window)) return "the window is gone";
    if (!OnScreen(window)) return "\"" + NameOf(window) + "\" is not on the screen";
    return Usable(window) ? "" : "\"" + NameOf(window) + "\" cannot be used now";
  });
}

// Puts the keyboard into `control`, as a click does; as a person would, once more where a window that came up
// in the same moment has taken it away.
void TakeFocus(HWND control, const Patience& patience) {
  auto again = std::chrono::steady_clock::now();
  patience.Until([&]() -> std::string {
    if (FocusOf(control) == control) return {};
    if (std::chrono::steady_clock::now() >= again) {
      ClickAt(control, {3, 3});
      again += std::chrono::seconds(2);
    }
    return "\"" + NameOf(control) + "\" did not take the keyboard";
  });
}

void ChooseInOpenMenu(HWND window, char entry, const Patience& patience) {
  const auto opened = [window] {
    HWND open = FindWindowW(L"#32768", nullptr);
    const bool ours = GetWindowThreadProcessId(open, nullptr) == GetWindowThreadProcessId(window, nullptr);
    return open && ours && IsWindowVisible(open);
  };
  patience.Until(opened, "no menu opened");
  PostMessageW(window, WM_CHAR, static_cast<WPARAM>(entry), 1);
  // What follows would overtake the command, which comes when the menu closes.
  patience.Until([&] { return !opened(); }, "the menu did not close");
}

}  // namespace

void ClickAt(HWND window, POINT point) {
  const LPARAM place = MAKELPARAM(point.x, point.y);
  PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
  PostMessageW(window, WM_LBUTTONUP, 0, place);
}

// Whether the click was handled shows nowhere from outside. So a second message follows it that sets the
// button's pressed look, which can be asked for; when it shows, the click before it has been taken. A button
// that the click switches off may not show it.
void Click(HWND button, const Patience& patience) {
  RequireUsable(button, patience);
  const std::size_t dialogs = Dialogs().size();
  PostMessageW(button, BM_CLICK, 0, 0);
  PostMessageW(button, BM_SETSTATE, TRUE, 0);
  const auto taken = [&] {
    if (!IsWindow(button) || !IsWindowEnabled(button) || Dialogs().size() != dialogs) return true;
    DWORD_PTR state = 0;
    return SendMessageTimeoutW(button, BM_GETSTATE, 0, 0, SMTO_NORMAL, 1000, &state) && (state & BST_PUSHED);
  };
  patience.Until(taken, "the click was not taken");
  PostMessageW(button, BM_SETSTATE, FALSE, 0);
}

void ClickRow(HWND list, std::string_view text, const Patience& patience) {
  RequireUsable(list, patience);
  const ForeignList rows(list);
  int row = -1;
  patience.Until([&] { return (row = rows.FindRow(text)) >= 0; },
                 "the list has no row \"" + std::string(text) + "\"");
  ClickAt(list, rows.PointOn(row));
  patience.Until([&] { return rows.Selected(row); }, "the row was not selected");
}

void Type(HWND box, std::string_view text, const Patience& patience) {
  RequireUsable(box, patience);
  TakeFocus(box, patience);
  Ask(box, EM_SETSEL, 0, -1);
  if (text.empty()) PostMessageW(box, WM_CHAR, VK_BACK, 1);
  for (const wchar_t letter : win32::Wide(text)) PostMessageW(box, WM_CHAR, letter, 1);
  patience.Until([&]() -> std::string {
    const std::string now = TextOf(box);
    return now == text ? "" : "typed \"" + std::string(text) + "\", the box holds \"" + now + "\"";
  });
}

// A click opens the list, the arrow keys go to the entry, Enter takes it.
void Choose(HWND list, std::string_view text, const Patience& patience) {
  RequireUsable(list, patience);
  const std::wstring wide = win32::Wide(text);
  LRESULT place = CB_ERR;
  const auto found = [&] {
    place = Ask(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(wide.c_str()));
    return place != CB_ERR;
  };
  patience.Until(found, "the list has no entry \"" + std::string(text) + "\"");
  const auto open = [&] { return Ask(list, CB_GETDROPPEDSTATE) != FALSE; };
  // The pointer is where the click is: an open list follows one that lies over it.
  POINT pointer = {3, 3};
  ClientToScreen(list, &pointer);
  SetCursorPos(pointer.x, pointer.y);
  ClickAt(list, {3, 3});
  patience.Until(open, "the list did not open");
  const LRESULT steps = place - Ask(list, CB_GETCURSEL);
  for (LRESULT i = 0; i < std::abs(steps); ++i) PostKey(list, steps > 0 ? VK_DOWN : VK_UP);
  patience.Until([&] { return Ask(list, CB_GETCURSEL) == place; },
                 "the keys did not reach \"" + std::string(text) + "\"");
  PostKey(list, VK_RETURN);
  patience.Until([&]() -> std::string {
    if (!Dialogs().empty()) return {};
    const std::string now = TextOf(list);
    return !open() && now == text ? ""
                                  : "chosen \"" + std::string(text) + "\", the list shows \"" + now + "\"";
  });
}

void Press(HWND control, std::string_view key) {
  if (key.size() > 1 && key.front() == '{') return PostKey(control, NumberOf(kKeys, key, "key"));
  for (const wchar_t letter : win32::Wide(key)) PostMessageW(control, WM_CHAR, letter, 1);
}

void ChooseInMenu(HWND window, char menu, char entry, const Patience& patience) {
  RequireUsable(window, patience);
  PostMessageW(window, WM_SYSCOMMAND, SC_KEYMENU, menu);
  ChooseInOpenMenu(window, entry, patience);
}

void ChooseInPopup(HWND control, char entry, const Patience& patience) {
  RequireUsable(control, patience);
  PostMessageW(control, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(control), -1);
  ChooseInOpenMenu(control, entry, patience);
}

void TurnWheel(HWND control, const Patience& patience) {
  RequireUsable(control, patience);
  PostMessageW(control, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
}

void OpenRow(HWND list, std::string_view text, const Patience& patience) {
  ClickRow(list, text, patience);
  const ForeignList rows(list);
  const POINT point = rows.PointOn(rows.FindRow(text));
  for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
    PostMessageW(list, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

void Leave(HWND control, const Patience& patience) {
  const std::size_t dialogs = Dialogs().size();
  PostKey(control, VK_TAB);
  patience.Until([&] { return FocusOf(control) != control || Dialogs().size() != dialogs; },
                 "the keyboard stayed where it was");
}

void Answer(HWND dialog, std::string_view button, const Patience& patience) {
  HWND control = GetDlgItem(dialog, static_cast<int>(NumberOf(kAnswers, button, "answer")));
  if (!control) throw base::Error("the message box has no button \"" + std::string(button) + "\"");
  PostMessageW(control, BM_CLICK, 0, 0);
  patience.Until([&] { return !IsWindowVisible(dialog); }, "the message box did not go away");
}

void CloseWindow(HWND window) { PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); }

}  // namespace simhost::person
