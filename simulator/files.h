// Whole files in and out, with the file's name in every error. A file is replaced in one step: written under
// another name beside it, flushed, then renamed, so that a reader never sees half of it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace simulator {

/// Throws base::Error when the file cannot be read.
std::string ReadWholeFile(const std::filesystem::path& file);

/// Throws base::Error and leaves the old file as it was when the new one cannot be written.
void ReplaceFile(const std::filesystem::path& file, std::string_view content);

/// The path as UTF-8 text, for messages.
std::string PathText(const std::filesystem::path& file);

}  // namespace simulator
