#include "platform/win32/utf.h"

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

std::string Utf8(std::wstring_view wide) {
  const int units = static_cast<int>(wide.size());
  if (units == 0) return {};
  const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), length, nullptr, nullptr);
  return utf8;
}

}  // namespace win32
