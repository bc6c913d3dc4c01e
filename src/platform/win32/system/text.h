// Text at the Windows edge: UTF-8 inside the tool, UTF-16 in every call to the system, and the system's words
// for a failed call. Used by all of this folder.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace win32 {

/// Bytes that are no UTF-8, and lone surrogates, become U+FFFD. NUL characters are carried through.
std::wstring Wide(std::string_view utf8);
std::string Utf8(std::wstring_view wide);

/// The text in the system's 8-bit code page; what it cannot show becomes its replacement character.
std::string CodePageText(std::string_view utf8);

/// The system's text for a GetLastError code or an HRESULT, always with the number: "Access is denied. (5)",
/// "The server is not available. (0x800706BA)". An unknown code is "Error (number)".
std::string SystemText(HRESULT code);

/// The same for GetLastError().
std::string LastErrorText();

}  // namespace win32
