#include "platform/win32/font_metrics.h"

#include <string_view>

namespace win32 {
namespace {

constexpr std::wstring_view kAlphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

LOGFONTW SystemFont() {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
    return metrics.lfMessageFont;
  LOGFONTW font = {};
  GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
  return font;
}

}  // namespace

FontMetrics::FontMetrics()
    : screen_(CreateCompatibleDC(nullptr)),
      face_(SystemFont().lfFaceName),
      systemDpi_(GetDeviceCaps(screen_.Get(), LOGPIXELSY)),
      dpi_(systemDpi_) {
  MeasureText();
}

bool FontMetrics::UseDensity(int dpi) {
  if (dpi <= 0 || dpi == dpi_) return false;
  dpi_ = dpi;
  MeasureText();
  return true;
}

bool FontMetrics::UseFace(const std::wstring& face) {
  const std::wstring wanted = face.empty() ? SystemFont().lfFaceName : face.substr(0, LF_FACESIZE - 1);
  if (wanted == face_) return false;
  face_ = wanted;
  MeasureText();
  return true;
}

void FontMetrics::MeasureText() {
  LOGFONTW description = SystemFont();
  description.lfHeight = MulDiv(description.lfHeight, dpi_, systemDpi_);
  face_.copy(description.lfFaceName, LF_FACESIZE - 1);
  description.lfFaceName[face_.size()] = 0;
  SelectObject(screen_.Get(), GetStockObject(DEFAULT_GUI_FONT));  // a selected font could not be released
  text_ = Font(CreateFontIndirectW(&description));
  description.lfHeight = MulDiv(description.lfHeight, 3, 2);
  heading_ = Font(CreateFontIndirectW(&description));

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
