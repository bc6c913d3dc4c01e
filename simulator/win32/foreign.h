// Windows of other processes, found and read from outside. The tool marks each of its windows and controls
// with the window property "TarnName", a global atom whose text is "form" or "form.control"; message boxes
// are found by their title. Only windows of processes that have a marked window count. Safe on any thread;
// nothing here waits for long.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace simhost {

/// The window or control of that name, or null.
HWND FindNamed(std::string_view name);

/// All top-level windows of that name, hidden ones too.
std::vector<HWND> FindForms(std::string_view name);

/// The name of the outermost form that is shown inside of `window`, as a page is; empty without one.
std::string ShownForm(HWND window);

/// The text of the window's TarnName, empty when it has none.
std::string NameOf(HWND window);

/// Message boxes and common dialogs on the screen.
std::vector<HWND> Dialogs();
/// The dialog with exactly that title, or null.
HWND FindDialog(std::string_view title);
/// What a message box says; empty for another kind of dialog.
std::string DialogText(HWND dialog);

/// The content or caption. Lines end with \n.
std::string TextOf(HWND window);
std::wstring ClassOf(HWND window);

/// Visible with all its parents, and its top-level window not minimised away.
bool OnScreen(HWND window);

/// True while a person could act on it: it and all its parents are enabled and it is on the screen.
bool Usable(HWND window);

/// Of a check box or option button.
bool IsChecked(HWND button);

/// Asks the window and waits for the answer; throws base::Error after 5 s of silence.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

/// The control of that thread that has the keyboard, or null.
HWND FocusOf(HWND window);

}  // namespace simhost
