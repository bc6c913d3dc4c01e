// The part of a window where one of several forms is shown. Each form has a page window of its own, a child
// without caption and border; the area scrolls the shown page where it is larger than the area and follows
// the focus.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "platform/win32/system/window_class.h"
#include "platform/win32/window/control_native.h"

namespace win32 {

class NativePageArea : public NativeControl {
 public:
  using NativeControl::NativeControl;
  ~NativePageArea() override;

  bool Limit(const ui::Size& most) override;
  /// The largest page, within the limit.
  ui::Size Measure() const override;
  bool Place(const ui::Rect& rect) override;
  void Mirror(ui::Aspect aspect) override;
  void FontChanged() override;
  void Disconnect() override;
  void Reveal(HWND inside) override;

 private:
  struct Page {
    ui::Form* data;
    WindowHandle window;
    std::shared_ptr<NativeForm> form;
  };

  ui::PageArea& Area() const { return static_cast<ui::PageArea&>(Control()); }
  Style GetStyle() const override;
  std::optional<LRESULT> Filter(UINT message, WPARAM wParam, LPARAM lParam) override;

  void MirrorPages();
  void MirrorEnabled();
  void AddPage(ui::Form& form);
  static void DropPage(Page& page);
  void ShowPage();
  Page* Shown();
  void ArrangeShown();
  void ScrollTo(int bar, int position);
  void Scroll(int bar, UINT code);
  void ScrollWheel(WPARAM wParam);
  int Position(int bar) const;

  std::vector<Page> pages_;
  ui::Form* shown_ = nullptr;
  ui::Size limit_;
  POINT wheelRest_ = {};
};

}  // namespace win32
