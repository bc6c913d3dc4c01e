// Whole files in and out, with the file's name and the system's reason in every error. A file is replaced in
// one step: written under another name beside it, flushed to the disk, renamed, and read back, so that nobody
// ever sees half of it. Names are UTF-8.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace base {

std::filesystem::path PathOf(std::string_view name);
/// The path as UTF-8 text, for messages.
std::string PathText(const std::filesystem::path& path);

/// Throws base::Error when the file cannot be read or holds more than `limit` bytes.
std::string ReadFile(const std::filesystem::path& file, std::size_t limit);

/// Makes the folders on the way. Throws base::Error, and leaves the old file as it was, when the new one
/// cannot be written or does not hold `content` afterwards.
void ReplaceFile(const std::filesystem::path& file, std::string_view content);

/// The files of a folder that end with `ending`, by name; none where there is no such folder.
std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder, std::string_view ending);

}  // namespace base
