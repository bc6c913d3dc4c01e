#include "serverlink/wire.h"

#include <string>
#include <utility>

#include "base/error.h"

namespace serverlink {
namespace {

std::size_t Offset(HeaderMode mode, Field field) {
  return kOffsets[static_cast<std::size_t>(field)][static_cast<std::size_t>(mode)];
}

/// The two lengths are four bytes in mode 1; everything else is two.
std::size_t Width(HeaderMode mode, Field field) {
  const bool isLength = field == Field::kHeaderLength || field == Field::kArgumentLength;
  return isLength && mode == HeaderMode::kAuthenticated ? 4 : 2;
}

}  // namespace

void WriteNumber(std::span<std::uint8_t> where, std::int64_t value) {
  std::int64_t rest = value;
  for (std::size_t i = where.size(); i > 0; --i) {
    where[i - 1] = static_cast<std::uint8_t>(rest & 0xFF);
    rest >>= 8;
  }
  // A negative number leaves -1.
  if (rest != 0) {
    throw base::Error("Overflow: " + std::to_string(value) + " does not fit into " +
                      std::to_string(where.size()) + " bytes.");
  }
}

void WriteField(std::span<std::uint8_t> frame, HeaderMode mode, Field field, std::int64_t value) {
  WriteNumber(frame.subspan(Offset(mode, field), Width(mode, field)), value);
}

std::int64_t ReadField(const CTransaction& transaction, Field field) {
  const bool isShort = transaction.RspHeader.size() == HeaderLength(HeaderMode::kGreeting);
  const HeaderMode mode = isShort ? HeaderMode::kGreeting : HeaderMode::kAuthenticated;
  const auto offset = static_cast<std::int32_t>(Offset(mode, field));
  const auto width = static_cast<std::int32_t>(Width(mode, field));
  std::uint32_t number = 0;
  for (std::int32_t i = 0; i < width; ++i) number = number << 8 | transaction.GetRspHeaderElement(offset + i);
  const bool isLength = field == Field::kHeaderLength || field == Field::kArgumentLength;
  return isLength ? std::int64_t{number} : std::int64_t{static_cast<std::int16_t>(number)};
}

std::int16_t ToShort(std::int64_t value) {
  if (std::in_range<std::int16_t>(value)) return static_cast<std::int16_t>(value);
  throw base::Error("Overflow: " + std::to_string(value) + " does not fit into 16 bits.");
}

}  // namespace serverlink
