// The failure of a late-bound call: the platform's result code, the description and the source that the
// failing object gave. Raised by automation::Object; the tool raises kApplicationDefined itself towards the
// host.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace automation {

/// Result codes as the platform's automation library documents them (32-bit, high bit set).
inline constexpr std::uint32_t kApplicationDefined = 0x80040000;
inline constexpr std::uint32_t kMemberNotFound = 0x80020003;
inline constexpr std::uint32_t kTypeMismatch = 0x80020005;
inline constexpr std::uint32_t kUnknownName = 0x80020006;
inline constexpr std::uint32_t kOverflow = 0x8002000A;
inline constexpr std::uint32_t kBadIndex = 0x8002000B;
inline constexpr std::uint32_t kBadArgumentCount = 0x8002000E;
inline constexpr std::uint32_t kInvalidArgument = 0x80070057;

class Error : public std::runtime_error {
 public:
  Error(std::uint32_t code, const std::string& description, std::string source = {})
      : std::runtime_error(description), code_(code), source_(std::move(source)) {}

  std::uint32_t Code() const { return code_; }
  const std::string& Source() const { return source_; }
  std::string Description() const { return what(); }
  /// True when the called object itself has answered, so that it did nothing. Remote calls (facility 1) and
  /// the system (facility 7), but for an argument that it does not take, fail on the way to it. After
  /// all others nothing was done: a host may raise a fault of its run-time library or any number of its own.
  bool Answered() const {
    const std::uint32_t facility = (code_ >> 16) & 0x1FFF;
    return facility != 1 && (facility != 7 || code_ == kInvalidArgument);
  }

 private:
  std::uint32_t code_;
  std::string source_;
};

}  // namespace automation
