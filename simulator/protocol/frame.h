// One request or answer of the binary protocol as the server sees it: read from bytes and written to bytes,
// all numbers with the most significant byte first. Written apart from the tool's own code, so that each
// checks the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace simulator {

struct Frame {
  std::uint16_t command = 0;
  std::uint16_t sequence = 0;
  std::uint16_t parameter = 0;
  std::uint16_t argumentType = 0;
  std::vector<std::uint8_t> argument = {};
};

/// Bytes of a header before and after the greeting.
inline constexpr std::size_t kGreetingHeader = 12;
inline constexpr std::size_t kFullHeader = 24;

/// The fields of a header, and how long its argument will be; nothing when the bytes are no header of their
/// length (12 or 24).
struct Header {
  Frame fields;
  std::size_t argumentLength = 0;
};
std::optional<Header> ReadHeader(std::span<const std::uint8_t> bytes);

/// Header of `headerLength` bytes and argument.
std::vector<std::uint8_t> WriteFrame(const Frame& frame, std::size_t headerLength);

}  // namespace simulator
