#include "platform/win32/system/utf.h"

#include <windows.h>

namespace win32 {

std::wstring Wide(std::string_view utf8) {
  const int bytes = static_cast<int>(utf8.size());
  if (bytes == 0) return {};
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), length);
  return wide;
}

namespace {

std::string Narrow(std::wstring_view wide, UINT codePage) {
  const int units = static_cast<int>(wide.size());
  if (units == 0) return {};
  const int length = WideCharToMultiByte(codePage, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), units, narrow.data(), length, nullptr, nullptr);
  return narrow;
}

}  // namespace

std::string Utf8(std::wstring_view wide) { return Narrow(wide, CP_UTF8); }

std::string CodePageText(std::string_view utf8) { return Narrow(Wide(utf8), CP_ACP); }

}  // namespace win32
