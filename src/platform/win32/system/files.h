// Reading files whose names are UTF-8. Used by the composition root to serve the rooms that need a file's
// content.
#pragma once

#include <string>

#include "automation/object.h"

namespace win32 {

bool FileExists(const std::string& path);

/// The whole content. Throws base::Error naming the file and the reason.
automation::Bytes ReadWholeFile(const std::string& path);

}  // namespace win32
