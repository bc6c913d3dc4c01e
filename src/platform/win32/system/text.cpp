#include "platform/win32/system/text.h"

#include <fmt/format.h>

#include "base/text.h"

namespace win32 {
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

std::wstring Wide(std::string_view utf8) {
  const int bytes = static_cast<int>(utf8.size());
  if (bytes == 0) return {};
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), length);
  return wide;
}

std::string Utf8(std::wstring_view wide) { return Narrow(wide, CP_UTF8); }

std::string CodePageText(std::string_view utf8) { return Narrow(Wide(utf8), CP_ACP); }

std::string SystemText(HRESULT code) {
  const auto number = static_cast<DWORD>(code);
  wchar_t buffer[1024];
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
      number, 0, buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
  const std::string text = length ? Utf8({buffer, length}) : "Error";
  const std::string shown = number < 0x10000 ? std::to_string(number) : fmt::format("0x{:08X}", number);
  return fmt::format("{} ({})", base::Trim(text), shown);
}

std::string LastErrorText() { return SystemText(static_cast<HRESULT>(GetLastError())); }

}  // namespace win32
