// What all native windows of the tool share: the loop, the fonts and pictures for each density of screen,
// which control a native handle belongs to, and the names for assistive programs. Owned by the toolkit.
#pragma once

#include <windows.h>

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/win32/system/handle.h"
#include "platform/win32/window/font_metrics.h"
#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/pictures.h"

struct IAccPropServices;

namespace win32 {

class NativeControl;
class NativeWindow;

/// What windows on screens of one density are drawn with.
struct Look {
  Look(const std::wstring& face, int dpi) : font(face, dpi), pictures(dpi) {}

  FontMetrics font;
  Pictures pictures;
};

/// What screen readers and test programs call a control: the system's own name for it (its caption or the
/// label before it) is replaced where the description of the form knows a better one.
class AccessibleNames {
 public:
  AccessibleNames();
  ~AccessibleNames();

  /// Empty: the system's own name again, as must be before the window is destroyed. Without COM on this
  /// thread, and on Wine, which does not have the service, every name is the system's.
  void Set(HWND control, const std::wstring& name);

 private:
  bool Ready();

  ComPtr<IAccPropServices> services_;
  std::set<HWND> named_;
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
