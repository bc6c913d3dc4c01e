// What a person does with the tool's windows: clicks, types, chooses, leaves a field, answers a question.
// Input is posted to the window as the system posts it, never called into it, so the tool handles it in its
// own message loop and may call its host. Each action returns when the tool has taken it, or throws
// base::Error saying what did not happen.
#pragma once

#include <windows.h>

#include <string_view>

#include "simulator/win32/patience.h"

namespace simhost::person {

/// A button, check box or option button. A question that the click brings up ends the wait.
void Click(HWND button, const Patience& patience);

/// A point of a window, in its own coordinates; returns at once.
void ClickAt(HWND window, POINT point);

/// The row of a list view with a cell of that text.
void ClickRow(HWND list, std::string_view text, const Patience& patience);

/// Clicks into the box, marks its whole content and types `text` over it, key by key.
void Type(HWND box, std::string_view text, const Patience& patience);

/// The entry of a drop-down list with exactly that text.
void Choose(HWND list, std::string_view text, const Patience& patience);

/// Presses a key in the control that has the keyboard: a letter, or the name of a key such as "{TAB}",
/// "{ENTER}", "{ESC}", "{UP}", "{DOWN}", "{DELETE}".
void Press(HWND control, std::string_view key);

/// Opens a menu of the window's bar by its underlined letter, and chooses an entry by the entry's.
void ChooseInMenu(HWND window, char menu, char entry, const Patience& patience);

/// Asks a control for its menu, as Shift+F10 does, and chooses an entry by its underlined letter.
void ChooseInPopup(HWND control, char entry, const Patience& patience);

/// Turns the mouse wheel one notch down over a control.
void TurnWheel(HWND control, const Patience& patience);

/// A double click on the row of a list view with a cell of that text.
void OpenRow(HWND list, std::string_view text, const Patience& patience);

/// Moves the keyboard on with the Tab key. Done when another control has it or a message box is there.
void Leave(HWND control, const Patience& patience);

/// Presses the button of a message box: "OK", "Cancel", "Yes" or "No". Done when the box is gone.
void Answer(HWND dialog, std::string_view button, const Patience& patience);

/// The cross of the title bar.
void CloseWindow(HWND window);

}  // namespace simhost::person
