#include "platform/win32/system/locale.h"

#include <windows.h>

#include "platform/win32/system/utf.h"

namespace win32 {

std::string WindowsLocale::GetLocaleString(int item) {
  const auto type = static_cast<LCTYPE>(item);
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, nullptr, 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), length);
  return Utf8(text.substr(0, text.find(L'\0')));
}

std::string WindowsLocale::GeneralDateNow() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  wchar_t date[128] = L"";
  wchar_t time[128] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &now, nullptr, date, static_cast<int>(std::size(date)));
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &now, nullptr, time, static_cast<int>(std::size(time)));
  return Utf8(std::wstring(date) + L" " + time);
}

}  // namespace win32
