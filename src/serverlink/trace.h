// The log of the link for whoever looks for a fault on site, off by default: a line for each step, in the
// words that the log has always had. Nothing is put together while it is off.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace serverlink {

class Trace {
 public:
  using Sink = std::function<void(std::string_view line)>;

  Trace() = default;
  explicit Trace(Sink sink) : sink_(std::move(sink)) {}

  bool On() const { return sink_ != nullptr; }
  void operator()(std::string_view text) const {
    if (sink_) sink_(text);
  }
  void operator()(std::string_view text, std::int64_t number) const {
    if (sink_) Write(text, number);
  }

 private:
  void Write(std::string_view text, std::int64_t number) const;

  Sink sink_;
};

/// Appends to the file, each line with the UTC time; off when the file cannot be written. A file of `limit`
/// bytes is renamed to <path>.old, in place of the one before, and a new one begun, so that the last steps
/// are never lost and twice the limit is never exceeded.
Trace TraceToFile(const std::string& path, std::int64_t limit = 8 << 20);

/// To the file that the environment variable KVTARN_LINK_TRACE names; off when there is no such variable.
Trace TraceFromEnvironment();

}  // namespace serverlink
