// The files and folders that the system knows, and reading files whose names are UTF-8. Used by the
// composition root to serve the rooms that need a file's content.
#pragma once

#include <string>

#include "automation/object.h"

namespace win32 {

bool FileExists(const std::string& path);

/// Of the user; empty where the system has none.
std::string DocumentsFolder();

/// The whole content. Throws base::Error naming the file and the reason.
automation::Bytes ReadWholeFile(const std::string& path);

}  // namespace win32
