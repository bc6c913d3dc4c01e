#include "simulator/protocol/frame.h"

namespace simulator {
namespace {

class Reader {
 public:
  explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  std::uint16_t Two() { return static_cast<std::uint16_t>(Take(2)); }
  std::size_t Take(std::size_t width) {
    std::size_t number = 0;
    for (const std::uint8_t byte : bytes_.first(width)) number = number << 8 | byte;
    bytes_ = bytes_.subspan(width);
    return number;
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

void Append(std::vector<std::uint8_t>& bytes, std::size_t number, std::size_t width) {
  for (std::size_t i = width; i > 0; --i) bytes.push_back(static_cast<std::uint8_t>(number >> (8 * (i - 1))));
}

}  // namespace

std::optional<Header> ReadHeader(std::span<const std::uint8_t> bytes) {
  const std::size_t wide = bytes.size() == kFullHeader ? 4 : 2;
  Reader reader(bytes);
  if (reader.Take(wide) != bytes.size()) return std::nullopt;
  Header header;
  header.fields.command = reader.Two();
  header.fields.sequence = reader.Two();
  header.fields.parameter = reader.Two();
  header.fields.argumentType = reader.Two();
  header.argumentLength = reader.Take(wide);
  return header;
}

std::vector<std::uint8_t> WriteFrame(const Frame& frame, std::size_t headerLength) {
  const std::size_t wide = headerLength == kFullHeader ? 4 : 2;
  std::vector<std::uint8_t> bytes;
  bytes.reserve(headerLength + frame.argument.size());
  Append(bytes, headerLength, wide);
  for (const std::uint16_t field : {frame.command, frame.sequence, frame.parameter, frame.argumentType}) {
    Append(bytes, field, 2);
  }
  Append(bytes, frame.argument.size(), wide);
  bytes.resize(headerLength);  // the reserved bytes are zero
  bytes.insert(bytes.end(), frame.argument.begin(), frame.argument.end());
  return bytes;
}

}  // namespace simulator
