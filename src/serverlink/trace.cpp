#include "serverlink/trace.h"

#include <fmt/chrono.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace serverlink {

void Trace::Write(std::string_view text, std::int64_t number) const {
  sink_(std::string(text) + std::to_string(number));
}

Trace TraceToFile(const std::string& path) {
  const auto file = std::make_shared<std::ofstream>(path, std::ios::app);
  if (!*file) return {};
  return Trace([file](std::string_view line) {
    const auto now =
        std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto seconds = std::chrono::system_clock::to_time_t(now);
    *file << fmt::format("{:%Y-%m-%d %H:%M:%S}.{:03} {}\n", fmt::gmtime(seconds),
                         now.time_since_epoch().count() % 1000, line)
          << std::flush;  // what led to a crash must be in the file
  });
}

Trace TraceFromEnvironment() {
  const char* path = std::getenv("KVTARN_LINK_TRACE");
  return path ? TraceToFile(path) : Trace();
}

}  // namespace serverlink
