// Text at the Windows edge: UTF-8 inside the tool, UTF-16 in every call to the system. Used by all of this
// folder.
#pragma once

#include <string>
#include <string_view>

namespace win32 {

/// Bytes that are no UTF-8, and lone surrogates, become U+FFFD. NUL characters are carried through.
std::wstring Wide(std::string_view utf8);
std::string Utf8(std::wstring_view wide);

/// The text in the system's 8-bit code page; what it cannot show becomes its replacement character.
std::string CodePageText(std::string_view utf8);

}  // namespace win32
