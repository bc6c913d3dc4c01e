// The renderer: turns windows and forms, described as data, into native windows and mirrors both ways. It
// owns all native windows of the tool; a window is realised when it is first shown and discarded by its
// owner.
#pragma once

#include <windows.h>

#include <map>
#include <memory>

#include "platform/win32/window/message_loop.h"
#include "ui/form.h"

namespace win32 {

class NativeWindow;
struct UiContext;

class NativeToolkit : public ui::Toolkit, private MessageFilter {
 public:
  explicit NativeToolkit(MessageLoop& loop);
  ~NativeToolkit() override;

  void Realize(ui::Window& window) override { RealizeInside(window, nullptr); }
  void Discard(ui::Window& window) override;
  void UseFont(const std::string& face) override;
  /// Shows `window` without a frame inside `parent`, a window of somebody else, who sets its size and whose
  /// message loop handles its keys. Throws base::Error.
  void RealizeInside(ui::Window& window, HWND parent);

  /// The native window of a realised window, of an embedded form or of a control of either; null when there
  /// is none.
  HWND HandleOf(const ui::Form& form) const;
  HWND HandleOf(const ui::Control& control) const;

  /// Keeps all windows of the tool from taking input while a system dialog is open. Its owner is left to the
  /// system, which enables it just before the dialog goes away: with an owner that is disabled at that moment
  /// the system would bring another program to the front. So a busy owner is enabled while the dialog is
  /// open.
  class Modal {
   public:
    explicit Modal(NativeToolkit& toolkit);
    Modal(const Modal&) = delete;
    Modal& operator=(const Modal&) = delete;
    ~Modal();

    /// What the dialog belongs over: a window of the tool, or the dialog that is open over it already.
    HWND Owner() const;

   private:
    UiContext& context_;
    NativeWindow* owner_;
    NativeWindow* before_;
  };

 private:
  bool Translate(MSG& message) override;

  MessageLoop& loop_;
  std::unique_ptr<UiContext> context_;
  std::map<const ui::Window*, std::shared_ptr<NativeWindow>> windows_;
};

}  // namespace win32
