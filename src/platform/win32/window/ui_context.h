// What all native windows of the tool share: the loop, the fonts and pictures for each density of screen, and
// which control a native handle belongs to. Owned by the toolkit.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/win32/window/accessible_names.h"
#include "platform/win32/window/font_metrics.h"
#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/pictures.h"

namespace win32 {

class NativeControl;
class NativeWindow;

/// What windows on screens of one density are drawn with.
struct Look {
  Look(const std::wstring& face, int dpi) : font(face, dpi), pictures(dpi) {}

  FontMetrics font;
  Pictures pictures;
};

struct UiContext {
  explicit UiContext(MessageLoop& messageLoop) : loop(messageLoop) {}

  /// The one for screens of `dpi` dots per inch; stays where it is.
  Look& LookFor(int dpi);
  /// Follows another type face, or another font of the system, in all windows.
  void RenewFonts();

  MessageLoop& loop;
  std::wstring face;  // empty: the system's own
  std::map<int, Look> looks;
  AccessibleNames accessibleNames;
  std::unordered_map<HWND, NativeControl*> controls;

  std::vector<NativeWindow*> windows;  // the one last active at the end
  int modalDepth = 0;                  // system dialogs that are open
  NativeWindow* modalOwner = nullptr;  // the window under the last of them, which the system itself disables

  /// Lets each window follow what it may take now.
  void UpdateEnabled();

  /// The window that a message box or dialog belongs over: the visible one last active; null when there is
  /// none.
  NativeWindow* FrontWindow() const;

  NativeControl* Find(HWND window) const {
    const auto found = controls.find(window);
    return found == controls.end() ? nullptr : found->second;
  }
};

}  // namespace win32
