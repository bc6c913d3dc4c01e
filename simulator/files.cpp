#include "simulator/files.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "base/error.h"

namespace simulator {

std::string PathText(const std::filesystem::path& file) {
  const std::u8string text = file.generic_u8string();
  return {text.begin(), text.end()};
}

std::string ReadWholeFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string content{std::istreambuf_iterator<char>(stream), {}};
  // Opening a folder succeeds on some systems; only reading from it fails.
  if (!stream.is_open() || stream.bad() || std::filesystem::is_directory(file)) {
    throw base::Error("The file " + PathText(file) + " cannot be read.");
  }
  return content;
}

void ReplaceFile(const std::filesystem::path& file, std::string_view content) {
  std::filesystem::path temporary = file;
  temporary += ".new";
  std::error_code error;
  bool opened = false;
  bool written = false;
  {
    std::ofstream stream(temporary, std::ios::binary | std::ios::trunc);
    opened = stream.is_open();
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.flush();
    written = stream.good();
  }
  if (written) std::filesystem::rename(temporary, file, error);
  if (written && !error) return;
  std::error_code ignored;
  if (opened) std::filesystem::remove(temporary, ignored);
  const std::string reason = error ? " (" + error.message() + ")" : "";
  throw base::Error("The file " + PathText(file) + " cannot be written" + reason + ".");
}

}  // namespace simulator
