#include "base/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "base/error.h"
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace base {
namespace {

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Stream Open(const std::filesystem::path& file, bool toWrite) {
#ifdef _WIN32
  return {_wfopen(file.c_str(), toWrite ? L"wb" : L"rb"), std::fclose};
#else
  return {std::fopen(file.c_str(), toWrite ? "wb" : "rb"), std::fclose};
#endif
}

bool ToDisk(std::FILE* stream) {
#ifdef _WIN32
  return std::fflush(stream) == 0 && _commit(_fileno(stream)) == 0;
#else
  return std::fflush(stream) == 0 && fsync(fileno(stream)) == 0;
#endif
}

std::string Reason(int number) { return std::generic_category().message(number); }

[[noreturn]] void Fail(const std::filesystem::path& file, std::string_view text,
                       const std::string& reason = {}) {
  throw WordedError(text, {PathText(file), reason});
}

constexpr std::string_view kUnreadable = "The file %s1% cannot be read: %s2%.";

/// Answers the system's reason, or nothing when all is on the disk.
std::string Write(const std::filesystem::path& file, std::string_view content) {
  Stream stream = Open(file, true);
  if (!stream) return Reason(errno);
  const bool written =
      std::fwrite(content.data(), 1, content.size(), stream.get()) == content.size() && ToDisk(stream.get());
  const int fault = errno;
  return std::fclose(stream.release()) == 0 && written ? std::string() : Reason(fault);
}

}  // namespace

std::filesystem::path PathOf(std::string_view name) { return std::u8string(name.begin(), name.end()); }

std::string PathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string ReadFile(const std::filesystem::path& file, std::size_t limit) {
  const Stream stream = Open(file, false);
  if (!stream) Fail(file, kUnreadable, Reason(errno));
  std::string content;
  char part[65536];
  for (std::size_t count = 0; (count = std::fread(part, 1, sizeof part, stream.get())) > 0;) {
    content.append(part, count);
    if (content.size() > limit) Fail(file, "The file %s1% is too large.");
  }
  if (std::ferror(stream.get())) Fail(file, kUnreadable, Reason(errno));
  return content;
}

void ReplaceFile(const std::filesystem::path& file, std::string_view content) {
  std::error_code ignored;
  std::filesystem::create_directories(file.parent_path(), ignored);
  std::filesystem::path temporary = file;
  temporary += ".new";
  std::string reason = Write(temporary, content);
  try {
    if (reason.empty() && ReadFile(temporary, content.size()) != content)
      reason = "another content was read back";
  } catch (const Error& error) {
    reason = error.what();
  }
  std::error_code fault;
  if (reason.empty()) std::filesystem::rename(temporary, file, fault);
  if (fault) reason = fault.message();
  if (reason.empty()) return;
  std::filesystem::remove(temporary, ignored);
  Fail(file, "The file %s1% cannot be written: %s2%.", reason);
}

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder, std::string_view ending) {
  std::vector<std::filesystem::path> files;
  std::error_code fault;
  for (std::filesystem::directory_iterator entry(folder, fault), end; !fault && entry != end;
       entry.increment(fault)) {
    if (PathText(entry->path()).ends_with(ending)) files.push_back(entry->path());
  }
  std::ranges::sort(files);
  return files;
}

}  // namespace base
