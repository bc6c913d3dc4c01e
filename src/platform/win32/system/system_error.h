// The operating system's words for a failed call, for messages that a person reads. Used by all of this
// folder.
#pragma once

#include <windows.h>

#include <string>

namespace win32 {

/// The system's text for a GetLastError code or an HRESULT, always with the number: "Access is denied. (5)",
/// "The server is not available. (0x800706BA)". An unknown code is "Error (number)".
std::string SystemText(HRESULT code);

/// The same for GetLastError().
std::string LastErrorText();

}  // namespace win32
