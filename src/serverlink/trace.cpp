#include "serverlink/trace.h"

#include <fmt/chrono.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace serverlink {

void Trace::Write(std::string_view text, std::int64_t number) const {
  sink_(std::string(text) + std::to_string(number));
}

namespace {

class LimitedFile {
 public:
  LimitedFile(const std::string& path, std::int64_t limit)
      : path_(path), limit_(limit), file_(path, std::ios::app) {
    file_.seekp(0, std::ios::end);
  }
  bool Opened() const { return file_.is_open(); }

  void Append(const std::string& line) {
    if (file_.tellp() + static_cast<std::streamoff>(line.size()) > limit_) BeginAnew();
    file_ << line << std::flush;  // what led to a crash must be in the file
  }

 private:
  void BeginAnew() {
    file_.close();
    const std::string old = path_ + ".old";
    std::remove(old.c_str());  // Windows renames to no name that is taken
    std::rename(path_.c_str(), old.c_str());
    file_.open(path_, std::ios::trunc);
  }

  std::string path_;
  std::int64_t limit_;
  std::ofstream file_;
};

}  // namespace

Trace TraceToFile(const std::string& path, std::int64_t limit) {
  const auto file = std::make_shared<LimitedFile>(path, limit);
  if (!file->Opened()) return {};
  return Trace([file](std::string_view line) {
    const auto now =
        std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto seconds = std::chrono::system_clock::to_time_t(now);
    file->Append(fmt::format("{:%Y-%m-%d %H:%M:%S}.{:03} {}\n", fmt::gmtime(seconds),
                             now.time_since_epoch().count() % 1000, line));
  });
}

Trace TraceFromEnvironment() {
  const char* path = std::getenv("KVTARN_LINK_TRACE");
  return path ? TraceToFile(path) : Trace();
}

}  // namespace serverlink
