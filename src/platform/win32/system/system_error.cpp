#include "platform/win32/system/system_error.h"

#include <fmt/format.h>

#include "base/text.h"
#include "platform/win32/system/utf.h"

namespace win32 {

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
