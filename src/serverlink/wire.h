// The bytes on the wire: whole numbers with the most significant byte first, the two header layouts and the
// run of sequence numbers. Used by the client to build requests and by the receiver to read responses.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "serverlink/transaction.h"

namespace serverlink {

/// Which header is on the wire: the short one for the greeting, the long one for everything after it.
enum class HeaderMode : std::uint16_t { kGreeting = 0, kAuthenticated = 1 };

enum class Field { kHeaderLength, kCommand, kSequence, kParameter, kArgumentType, kArgumentLength, kEnd };

/// Offset of each field in mode 0 and mode 1. A field ends where the next one begins, but for the argument
/// length of mode 1, behind which lie eight reserved bytes. The last pair is the length of the header.
inline constexpr std::size_t kOffsets[][2] = {{0, 0}, {2, 4}, {4, 6}, {6, 8}, {8, 10}, {10, 12}, {12, 24}};

/// Length of the header of `mode` in bytes. The header-length field holds just this, without the argument.
constexpr std::size_t HeaderLength(HeaderMode mode) { return kOffsets[6][static_cast<int>(mode)]; }

/// Writes `value` into all of `where`. Throws base::Error (overflow) when it is negative or does not fit.
void WriteNumber(std::span<std::uint8_t> where, std::int64_t value);

/// Writes one field of a header that lies at the front of `frame`; throws as WriteNumber.
void WriteField(std::span<std::uint8_t> frame, HeaderMode mode, Field field, std::int64_t value);

/// A field of a response header, by the layout that its length tells; missing bytes count as 0. Two bytes
/// are signed but for lengths.
std::int64_t ReadField(const CTransaction& transaction, Field field);

/// A number of 16 bits that was reckoned with more; throws base::Error (overflow).
std::int16_t ToShort(std::int64_t value);

/// Sequence numbers run from 7018 to 8086 and start over; 7017 only ever stands before the first one. The
/// server relies on these bounds.
inline constexpr std::int16_t kBeforeFirst = 7017;
inline constexpr std::int16_t kLastNumber = 8086;
constexpr std::int16_t NextNumber(std::int16_t number) {
  return static_cast<std::int16_t>(number == kLastNumber ? kBeforeFirst + 1 : number + 1);
}

}  // namespace serverlink
