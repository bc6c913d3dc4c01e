#include "platform/win32/window/mark.h"

#include "platform/win32/system/own_window.h"

namespace win32 {
namespace {

constexpr COLORREF kChangedTint = RGB(255, 243, 205), kChangedEdge = RGB(178, 120, 0);
constexpr COLORREF kRefusedTint = RGB(253, 231, 233), kRefusedEdge = RGB(196, 43, 28);
constexpr int kEdge = 2;        // pixels at 96 dots per inch
constexpr int kSignMargin = 5;  // pixels between the sign and the end of the control

// High contrast, or a scheme on whose background the tints would be glaring.
bool OwnColours() {
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof contrast;
  if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
      (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0)
    return true;
  const COLORREF window = GetSysColor(COLOR_WINDOW);
  return GetRValue(window) + GetGValue(window) + GetBValue(window) < 3 * 128;
}

COLORREF EdgeColor(ui::Mark mark) {
  if (OwnColours()) return GetSysColor(COLOR_HIGHLIGHT);
  return mark == ui::Mark::kRefused ? kRefusedEdge : kChangedEdge;
}

}  // namespace

HBRUSH PrepareMark(ui::Mark mark, HDC dc) {
  if (OwnColours()) {
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return GetSysColorBrush(COLOR_WINDOW);
  }
  // As long as the program: the system releases them with it.
  static const HBRUSH kChanged = CreateSolidBrush(kChangedTint), kRefused = CreateSolidBrush(kRefusedTint);
  const bool refused = mark == ui::Mark::kRefused;
  SetTextColor(dc, RGB(0, 0, 0));
  SetBkColor(dc, refused ? kRefusedTint : kChangedTint);
  return refused ? kRefused : kChanged;
}

void PaintMark(HWND window, const ui::Control& control, const FontMetrics& metrics) {
  const bool refused = control.GetMark() == ui::Mark::kRefused;
  if (control.GetKind() == ui::Kind::kFrame || (!refused && control.GetKind() != ui::Kind::kListBox)) return;
  RECT rect = WindowRect(window);
  OffsetRect(&rect, -rect.left, -rect.top);
  const HDC dc = GetWindowDC(window);
  const COLORREF color = EdgeColor(control.GetMark());
  const HBRUSH edge = CreateSolidBrush(color);
  RECT line = rect;
  for (int i = 0; i < metrics.Scale(refused ? kEdge : 1); ++i) {
    FrameRect(dc, &line, edge);
    InflateRect(&line, -1, -1);
  }
  DeleteObject(edge);
  if (refused && control.GetKind() != ui::Kind::kListBox) {
    rect.right -= metrics.Scale(kSignMargin);
    const HGDIOBJ before = SelectObject(dc, metrics.Bold());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    DrawTextW(dc, L"!", 1, &rect, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    SelectObject(dc, before);
  }
  ReleaseDC(window, dc);
}

}  // namespace win32
