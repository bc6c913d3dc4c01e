#include "simulator/win32/foreign.h"

#include <set>

#include "base/error.h"
#include "base/text.h"
#include "platform/win32/system/own_window.h"
#include "platform/win32/system/text.h"

namespace simhost {
namespace {

constexpr UINT kAnswerTime = 5000;       // milliseconds
constexpr int kMessageBoxText = 0xFFFF;  // the control of a message box that holds its text

template <class Visit>
BOOL CALLBACK VisitWindow(HWND window, LPARAM visit) {
  (*reinterpret_cast<Visit*>(visit))(window);
  return TRUE;
}

template <class Visit>
void EachTopWindow(Visit visit) {
  EnumWindows(VisitWindow<Visit>, reinterpret_cast<LPARAM>(&visit));
}

template <class Visit>
void EachChild(HWND parent, Visit visit) {
  EnumChildWindows(parent, VisitWindow<Visit>, reinterpret_cast<LPARAM>(&visit));
}

HWND FindChild(HWND parent, std::string_view name) {
  HWND found = nullptr;
  EachChild(parent, [&](HWND child) {
    if (!found && NameOf(child) == name) found = child;
  });
  return found;
}

DWORD ProcessOf(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process;
}

}  // namespace

std::string NameOf(HWND window) {
  const auto atom = reinterpret_cast<std::uintptr_t>(GetPropW(window, win32::kNameProperty));
  if (atom == 0) return {};
  wchar_t name[256] = L"";
  const UINT length = GlobalGetAtomNameW(static_cast<ATOM>(atom), name, 256);
  return win32::Utf8({name, length});
}

std::string ShownForm(HWND window) {
  std::string shown;
  EachChild(window, [&](HWND child) {
    const std::string name = NameOf(child);
    if (shown.empty() && !name.empty() && name.find('.') == name.npos && OnScreen(child)) shown = name;
  });
  return shown;
}

std::vector<HWND> FindForms(std::string_view name) {
  std::vector<HWND> found;
  EachTopWindow([&](HWND window) {
    if (NameOf(window) == name) found.push_back(window);
  });
  return found;
}

HWND FindNamed(std::string_view name) {
  const std::string_view form = name.substr(0, name.find('.'));
  std::vector<HWND> marked;
  HWND top = nullptr;
  EachTopWindow([&](HWND window) {
    const std::string found = NameOf(window);
    if (found.empty()) return;
    marked.push_back(window);
    if (found == form && (!top || IsWindowVisible(window))) top = window;
  });
  if (top) return form == name ? top : FindChild(top, name);
  // A page: its window is a child of some marked window.
  for (HWND window : marked) {
    if (HWND child = FindChild(window, name)) return child;
  }
  return nullptr;
}

std::vector<HWND> Dialogs() {
  std::set<DWORD> processes{GetCurrentProcessId()};
  std::vector<HWND> dialogs;
  EachTopWindow([&](HWND window) {
    if (!NameOf(window).empty()) processes.insert(ProcessOf(window));
    if (IsWindowVisible(window) && ClassOf(window) == L"#32770") dialogs.push_back(window);
  });
  std::erase_if(dialogs, [&](HWND dialog) {
    return !NameOf(dialog).empty() || !processes.contains(ProcessOf(dialog));
  });
  return dialogs;
}

HWND FindDialog(std::string_view title) {
  for (HWND dialog : Dialogs()) {
    if (TextOf(dialog) == title) return dialog;
  }
  return nullptr;
}

std::string DialogText(HWND dialog) {
  HWND text = GetDlgItem(dialog, kMessageBoxText);
  return text ? TextOf(text) : std::string();
}

std::string TextOf(HWND window) {
  const auto length = static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH));
  std::wstring text(length + 1, L'\0');
  const LRESULT copied = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(copied));
  return base::ReplaceAll(win32::Utf8(text), "\r\n", "\n");
}

std::wstring ClassOf(HWND window) {
  wchar_t name[128] = L"";
  const int length = GetClassNameW(window, name, 128);
  return {name, static_cast<std::size_t>(length)};
}

bool OnScreen(HWND window) { return IsWindowVisible(window) && !IsIconic(GetAncestor(window, GA_ROOT)); }

bool Usable(HWND window) {
  if (!OnScreen(window)) return false;
  for (HWND at = window; at; at = GetAncestor(at, GA_PARENT)) {
    if (!IsWindowEnabled(at)) return false;
    if (at == GetAncestor(at, GA_ROOT)) return true;
  }
  return true;
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR answer = 0;
  if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerTime, &answer)) {
    return static_cast<LRESULT>(answer);
  }
  if (!IsWindow(window)) throw base::Error("the window is gone");
  throw base::Error("the window does not answer");
}

bool IsChecked(HWND button) { return Ask(button, BM_GETCHECK) == BST_CHECKED; }

HWND FocusOf(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (!GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info)) return nullptr;
  return info.hwndFocus;
}

}  // namespace simhost
