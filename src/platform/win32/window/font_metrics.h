// The fonts of dialogs, the system's or those of the language in use, and the measures that follow from them:
// text extents, dialog units and lengths scaled to the screen's density. One for each density of screen that
// a window of the tool stood on.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <utility>

#include "platform/win32/system/handle.h"
#include "ui/layout.h"

namespace win32 {

using Font = Owner<HFONT, Calls<DeleteObject>>;

class FontMetrics {
 public:
  /// For screens of `dpi` dots per inch, in the type face `face` (empty: the system's own).
  FontMetrics(const std::wstring& face, int dpi);

  /// Takes the type face `face` in the system's present size and weight; no when they are in use already.
  bool Renew(const std::wstring& face);

  HFONT Text() const { return text_.Get(); }
  HFONT Bold() const { return bold_.Get(); }
  HFONT Heading() const { return heading_.Get(); }

  /// Pixels of a distance in dialog units.
  int X(int units) const { return MulDiv(units, characterWidth_, 4); }
  int Y(int units) const { return MulDiv(units, lineHeight_, 8); }
  /// Pixels on this screen of a length that was designed for 96 dots per inch.
  int Scale(int pixels) const { return MulDiv(pixels, dpi_, 96); }
  /// The system's own measure (SM_CXVSCROLL ...) on this screen.
  int System(int metric) const { return GetSystemMetricsForDpi(metric, static_cast<UINT>(dpi_)); }
  int LineHeight() const { return lineHeight_; }
  /// Height of a box with one line of text and a border, the same for text boxes and drop-down lists. The
  /// system draws the text at the top of such a box, so that it must not be higher than this for labels to
  /// stand level with it.
  int BoxHeight() const { return lineHeight_ + 2 * System(SM_CYEDGE) + 4; }

  /// Size of a caption, without its mnemonic mark, broken at blanks where it is wider than 240 dialog units.
  ui::Size Caption(const std::wstring& text, HFONT font) const;
  /// Width of a text as it stands.
  int Width(const std::wstring& text) const;

 private:
  ui::Size Measure(const std::wstring& text, HFONT font) const;

  Owner<HDC, Calls<DeleteDC>> screen_;
  int dpi_;
  LOGFONTW description_ = {};
  Font text_;
  Font bold_;
  Font heading_;
  int characterWidth_ = 0;
  int lineHeight_ = 0;
  // Most captions are measured again and again, and many are alike.
  mutable std::map<std::pair<HFONT, std::wstring>, ui::Size> captions_;
};

}  // namespace win32
