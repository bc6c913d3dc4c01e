// A connection in memory that hands out bytes as the system's does: a read gets as much as is there and fits.
// For what takes bytes apart, in tests, fuzzing and benchmarks.
#pragma once

#include <algorithm>
#include <utility>

#include "serverlink/socket.h"

namespace tests {

class ByteSocket : public serverlink::Socket {
 public:
  void Connect(const std::string&, std::uint16_t) override {}
  void Close() override { there_ = {}; }
  bool Connected() const override { return true; }
  void SendData(std::span<const std::uint8_t>) override {}
  bool Sending() const override { return false; }
  void Wait(std::chrono::milliseconds) override {}

  /// These have arrived and stay where they are until they were read; what came before must have been.
  void Arrive(std::span<const std::uint8_t> bytes) { there_ = bytes; }
  std::size_t GetData(std::span<std::uint8_t> space) override {
    const std::size_t count = std::min(space.size(), there_.size());
    std::copy_n(there_.begin(), count, space.begin());
    there_ = there_.subspan(count);
    return count;
  }

 private:
  std::span<const std::uint8_t> there_;
};

}  // namespace tests
