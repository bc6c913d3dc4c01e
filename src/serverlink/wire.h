// The bytes on the wire: whole numbers with the most significant byte first, the two header layouts and the
// run of sequence numbers. Used by the client to build requests and by the receiver to read responses.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "serverlink/transaction.h"

namespace serverlink {

/// Which header is on the wire: the short one for the greeting, the long one for everything after it.
enum class HeaderMode : std::uint16_t { kGreeting = 0, kAuthenticated = 1 };

enum class Field { kHeaderLength, kCommand, kSequence, kParameter, kArgumentType, kArgumentLength, kEnd };

/// Offset of each field in mode 0 and mode 1. The last pair is the length of the header; in mode 1 its last
/// eight bytes are reserved and zero.
inline constexpr std::size_t kOffsets[][2] = {{0, 0}, {2, 4}, {4, 6}, {6, 8}, {8, 10}, {10, 12}, {12, 24}};

constexpr std::size_t Offset(HeaderMode mode, Field field) {
  return kOffsets[static_cast<std::size_t>(field)][static_cast<std::size_t>(mode)];
}

/// Length of the header of `mode` in bytes. The header-length field holds just this, without the argument.
constexpr std::size_t HeaderLength(HeaderMode mode) { return Offset(mode, Field::kEnd); }

constexpr bool IsLength(Field field) {
  return field == Field::kHeaderLength || field == Field::kArgumentLength;
}

/// The two lengths are four bytes in mode 1; everything else is two.
constexpr std::size_t Width(HeaderMode mode, Field field) {
  return IsLength(field) && mode == HeaderMode::kAuthenticated ? 4 : 2;
}

/// An argument of an answer that is longer is refused by its header: no answer of the server comes near it,
/// and the tool's memory must not follow what a broken header says. The server takes requests of the same
/// length.
inline constexpr std::int64_t kLongestAnswer = 64 << 20;  // bytes

/// Memory of a transaction that is kept for the next one; larger pieces are given back to the system.
inline constexpr std::size_t kLargestKept = 4 << 20;  // bytes

/// A number that does not fit on the wire. The client puts it into words.
struct Overflow {
  std::int64_t value;
  std::size_t bytes;
};

/// Writes `value` into all of `where`. Throws Overflow when it is negative or does not fit.
inline void WriteNumber(std::span<std::uint8_t> where, std::int64_t value) {
  std::int64_t rest = value;
  for (std::size_t i = where.size(); i > 0; --i) {
    where[i - 1] = static_cast<std::uint8_t>(rest & 0xFF);
    rest >>= 8;
  }
  if (rest != 0) throw Overflow{value, where.size()};  // a negative number leaves -1
}

/// Writes one field of a header that lies at the front of `frame`; throws as WriteNumber.
inline void WriteField(std::span<std::uint8_t> frame, HeaderMode mode, Field field, std::int64_t value) {
  const std::size_t offset = Offset(mode, field);
  if (Width(mode, field) == 2) {
    WriteNumber(frame.subspan(offset).first<2>(), value);
  } else {
    WriteNumber(frame.subspan(offset).first<4>(), value);
  }
}

/// A field of a whole header; two bytes are signed but for lengths.
inline std::int64_t ReadField(std::span<const std::uint8_t> header, HeaderMode mode, Field field) {
  const std::uint8_t* bytes = &header[Offset(mode, field)];
  const std::uint32_t two = std::uint32_t{bytes[0]} << 8 | bytes[1];
  if (!IsLength(field)) return static_cast<std::int16_t>(two);
  return Width(mode, field) == 2 ? two : std::int64_t{two << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3]};
}

/// A field of a response header, by the layout that its length tells; missing bytes count as 0.
inline std::int64_t ReadField(const CTransaction& transaction, Field field) {
  const Bytes& header = transaction.RspHeader;
  const bool isShort = header.size() == HeaderLength(HeaderMode::kGreeting);
  std::array<std::uint8_t, HeaderLength(HeaderMode::kAuthenticated)> padded{};
  std::copy_n(header.begin(), std::min(header.size(), padded.size()), padded.begin());
  return ReadField(padded, isShort ? HeaderMode::kGreeting : HeaderMode::kAuthenticated, field);
}

/// A number of 16 bits that was reckoned with more; throws Overflow.
inline std::int16_t ToShort(std::int64_t value) {
  if (!std::in_range<std::int16_t>(value)) throw Overflow{value, 2};
  return static_cast<std::int16_t>(value);
}

/// Sequence numbers run from 7018 to 8086 and start over; 7017 only ever stands before the first one. The
/// server relies on these bounds.
inline constexpr std::int16_t kBeforeFirst = 7017;
inline constexpr std::int16_t kLastNumber = 8086;
constexpr std::int16_t NextNumber(std::int16_t number) {
  return static_cast<std::int16_t>(number == kLastNumber ? kBeforeFirst + 1 : number + 1);
}

}  // namespace serverlink
