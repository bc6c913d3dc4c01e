#include "platform/win32/window/font_metrics.h"

#include <string_view>

namespace win32 {
namespace {

constexpr std::wstring_view kAlphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr int kLongestLine = 240;        // dialog units
constexpr std::size_t kCaptions = 2000;  // kept at most; the tool has some hundreds

// In the size for a screen of that density.
LOGFONTW SystemFont(int dpi) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  if (SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                                 static_cast<UINT>(dpi)))
    return metrics.lfMessageFont;
  LOGFONTW font = {};
  GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
  return font;
}

}  // namespace

FontMetrics::FontMetrics(const std::wstring& face, int dpi)
    : screen_(CreateCompatibleDC(nullptr)), dpi_(dpi) {
  Renew(face);
}

bool FontMetrics::Renew(const std::wstring& face) {
  LOGFONTW wanted = SystemFont(dpi_);
  if (!face.empty()) lstrcpynW(wanted.lfFaceName, face.c_str(), LF_FACESIZE);
  if (text_ && wanted.lfHeight == description_.lfHeight && wanted.lfWeight == description_.lfWeight &&
      lstrcmpiW(wanted.lfFaceName, description_.lfFaceName) == 0) {
    return false;
  }
  description_ = wanted;
  captions_.clear();
  SelectObject(screen_.Get(), GetStockObject(DEFAULT_GUI_FONT));  // a selected font could not be released
  text_ = Font(CreateFontIndirectW(&wanted));
  LOGFONTW bold = wanted;
  bold.lfWeight = FW_BOLD;
  bold_ = Font(CreateFontIndirectW(&bold));
  wanted.lfHeight = MulDiv(wanted.lfHeight, 3, 2);
  heading_ = Font(CreateFontIndirectW(&wanted));

  SelectObject(screen_.Get(), Text());
  TEXTMETRICW metrics = {};
  GetTextMetricsW(screen_.Get(), &metrics);
  lineHeight_ = metrics.tmHeight;
  // The platform's own definition of the dialog unit; tmAveCharWidth is another number.
  const auto letters = static_cast<int>(kAlphabet.size());
  characterWidth_ = (Width(std::wstring(kAlphabet)) + letters / 2) / letters;
  return true;
}

ui::Size FontMetrics::Caption(const std::wstring& text, HFONT font) const {
  if (captions_.size() >= kCaptions) captions_.clear();
  const auto [known, added] = captions_.try_emplace({font, text});
  if (added) known->second = Measure(text, font);
  return known->second;
}

ui::Size FontMetrics::Measure(const std::wstring& text, HFONT font) const {
  SelectObject(screen_.Get(), font);
  RECT rect = {0, 0, X(kLongestLine), 0};
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
