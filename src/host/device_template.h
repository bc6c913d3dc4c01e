// The device's template file: where it lies and how its name is made from what the device says of itself.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace host {

/// A version text ("2.7") split at its point into version and revision. Blanks around it and what follows a
/// second point do not matter. Throws base::Error unless both are whole numbers.
std::pair<int, int> SplitVersion(std::string_view text);

/// The upper-case identity, "_", version, "_", revision. Throws base::Error when the identity is empty or
/// holds anything but letters, digits, "-" and "_", since it becomes a file name.
std::string TemplateName(std::string_view programId, std::string_view version);

/// The full path of a template in the common-files folder.
std::string TemplatePath(const std::string& commonFilesFolder, const std::string& name);

}  // namespace host
