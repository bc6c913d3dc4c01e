// What a native list view asks about the rows of its description while it shows them: texts, the row that
// begins as a person types, and the drawing of what it cannot draw itself. For list views alone.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <array>
#include <string>

#include "platform/win32/window/font_metrics.h"
#include "ui/list_view.h"

namespace win32 {

class ListCells {
 public:
  explicit ListCells(const ui::ListView& list) : list_(list) {}

  /// Answers LVN_GETDISPINFO.
  void Give(LVITEMW& item);
  /// Answers LVN_ODFINDITEM: the place of the row whose first cell begins so, or -1.
  LRESULT Find(const NMLVFINDITEMW& wanted) const;
  /// Answers NM_CUSTOMDRAW; `metrics` are those of the screen that the list stands on.
  LRESULT Draw(const NMLVCUSTOMDRAW& drawn, const FontMetrics& metrics) const;

 private:
  const std::string* LongCell(std::size_t row, std::size_t column) const;

  const ui::ListView& list_;
  std::array<std::wstring, 4> lent_;  // to the native control, which may ask for more meanwhile
  std::size_t next_ = 0;
};

}  // namespace win32
