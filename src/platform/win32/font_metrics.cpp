#include "platform/win32/font_metrics.h"

#include <string_view>

namespace win32 {
namespace {

constexpr std::wstring_view kAlphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

LOGFONTW MessageFont() {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
    return metrics.lfMessageFont;
  LOGFONTW font = {};
  GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
  return font;
}

}  // namespace

FontMetrics::FontMetrics() : screen_(CreateCompatibleDC(nullptr)) {
  LOGFONTW description = MessageFont();
  text_ = Font(CreateFontIndirectW(&description));
  description.lfHeight = MulDiv(description.lfHeight, 3, 2);
  heading_ = Font(CreateFontIndirectW(&description));

  dpi_ = GetDeviceCaps(screen_.Get(), LOGPIXELSY);
  SelectObject(screen_.Get(), Text());
  TEXTMETRICW metrics = {};
  GetTextMetricsW(screen_.Get(), &metrics);
  lineHeight_ = metrics.tmHeight;
  // The platform's own definition of the dialog unit; tmAveCharWidth is another number.
  const auto letters = static_cast<int>(kAlphabet.size());
  characterWidth_ = (Width(std::wstring(kAlphabet)) + letters / 2) / letters;
}

ui::Size FontMetrics::Caption(const std::wstring& text, HFONT font, int wrapWidth) const {
  SelectObject(screen_.Get(), font);
  RECT rect = {0, 0, wrapWidth, 0};
  const int length = static_cast<int>(text.size());
  DrawTextW(screen_.Get(), text.empty() ? L" " : text.c_str(), text.empty() ? 1 : length, &rect,
            DT_CALCRECT | DT_WORDBREAK);
  return {text.empty() ? 0 : static_cast<int>(rect.right), static_cast<int>(rect.bottom)};
}

int FontMetrics::Width(const std::wstring& text) const {
  SelectObject(screen_.Get(), Text());
  SIZE size = {};
  GetTextExtentPoint32W(screen_.Get(), text.c_str(), static_cast<int>(text.size()), &size);
  return size.cx;
}

}  // namespace win32
