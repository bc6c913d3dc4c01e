// What all native windows of the tool share: the loop, the fonts, the pictures, and which control a native
// handle belongs to. Owned by the toolkit.
#pragma once

#include <windows.h>

#include <unordered_map>
#include <vector>

#include "platform/win32/font_metrics.h"
#include "platform/win32/message_loop.h"
#include "platform/win32/pictures.h"

namespace win32 {

class NativeControl;
class NativeWindow;

struct UiContext {
  explicit UiContext(MessageLoop& messageLoop) : loop(messageLoop) {}

  MessageLoop& loop;
  FontMetrics font;
  Pictures pictures;
  std::unordered_map<HWND, NativeControl*> controls;

  std::vector<NativeWindow*> windows;  // the one last active at the end
  int modalDepth = 0;                  // system dialogs that are open

  /// The window that a message box or dialog belongs over: the visible one last active; null when there is
  /// none.
  NativeWindow* FrontWindow() const;

  NativeControl* Find(HWND window) const {
    const auto found = controls.find(window);
    return found == controls.end() ? nullptr : found->second;
  }
};

}  // namespace win32
