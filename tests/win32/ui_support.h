// What the window tests share: a loop and a toolkit on the real desktop, and the acts of a person who works
// the native controls, which are found by the names they carry, as from another process.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/toolkit.h"
#include "ui/form.h"

namespace ui_test {

class UiTest : public testing::Test {
 protected:
  void TearDown() override;

  /// Realises and shows `window`, active. What the fixture holds is discarded at the end of the test, what
  /// the test itself holds by the test.
  void Show(ui::Window& window);
  /// Runs the loop until `done`, at most a few seconds; answers whether it came true.
  bool RunUntil(const std::function<bool()>& done);
  /// Lets posted work and notifications come to rest.
  void Settle();

  /// Posts a key to the window that has the focus and lets it take effect.
  void Press(WORD key);
  void MoveFocus(const ui::Control& control);
  /// The window comes to a screen of another density.
  void ChangeDensity(HWND window, int dpi, const RECT& proposed);
  std::string Focused() const;
  /// Runs `act` with the first system dialog (message box, file dialog) that comes up, from the loop.
  void WhenDialogOpens(std::function<void(HWND dialog)> act);

  std::vector<std::string> faults_;
  win32::MessageLoop loop_{[this](const std::string& text) { faults_.push_back(text); }};
  win32::NativeToolkit toolkit_{loop_};

 private:
  std::vector<ui::Window*> shown_;
};

/// The native window with this name ("fPID.txtPIDTemp(0)"), found by its mark; null when there is none.
HWND ByName(const std::string& name);
HWND Native(const ui::Control& control);
std::string NameOf(HWND window);
std::string TextOf(HWND window);
/// On the screen.
RECT RectOf(HWND window);

/// Types at the caret, character by character.
void TypeInto(HWND edit, const char* text);
/// Replaces the whole text, as a driver in another process does.
void SetTextOf(HWND edit, const char* text);
void Click(HWND button);
/// Shows `watcher` what comes to `window` from now on, before the window itself has it.
void Watch(HWND window, std::function<void(UINT message, LPARAM lParam)> watcher);
/// Holds a key down, or no longer, while others are pressed.
void Hold(WORD key, bool down);
void SelectRow(HWND list, int row, bool select = true);
/// Chooses an entry of a drop-down list and tells the parent, as the control does.
void ChooseEntry(HWND list, int place);

}  // namespace ui_test
