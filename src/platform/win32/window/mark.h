// How a marked control looks beside its bold text: a tint behind it, and an edge with a sign where its
// content was refused. The person's own colours are kept where the system shows high contrast.
#pragma once

#include <windows.h>

#include "platform/win32/window/font_metrics.h"
#include "ui/control.h"

namespace win32 {

/// For the WM_CTLCOLOR messages of a marked control: sets the colours of `dc` and answers the brush behind
/// the text.
HBRUSH PrepareMark(ui::Mark mark, HDC dc);

/// Paints over what the control has painted of itself: the edge, and the sign of a refusal at its end. A list
/// has the edge in any case, as the visual styles paint it without the tint.
void PaintMark(HWND window, const ui::Control& control, const FontMetrics& metrics);

}  // namespace win32
