// A connection in memory that hands out bytes as the system's does: a read gets as much as is there and fits;
// and the reassembly behind it. For what takes bytes apart, in tests, fuzzing and benchmarks.
#pragma once

#include <algorithm>

#include "serverlink/receiver.h"
#include "shell/strings.h"

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

/// A receiver with transactions that await their answers, the first of them number 7018.
struct Awaiting {
  serverlink::TransactionTable table;
  serverlink::Texts text = shell::ReplacePlaceholders;
  serverlink::Trace trace;
  ByteSocket socket;
  serverlink::Receiver receiver{socket, table, text, trace};

  void Await(std::size_t count) {
    receiver.Restart(serverlink::kBeforeFirst);
    receiver.SetMode(serverlink::HeaderMode::kAuthenticated);
    table.Clear();
    for (std::size_t i = 0; i < count; ++i) {
      auto& transaction = table.At(static_cast<std::int16_t>(7018 + i));
      transaction = std::make_shared<serverlink::CTransaction>();
      transaction->State = serverlink::kSent;
    }
  }
  serverlink::CTransaction& At(std::size_t place) {
    return *table.At(static_cast<std::int16_t>(7018 + place));
  }
  void Arrive(std::span<const std::uint8_t> bytes) {
    socket.Arrive(bytes);
    receiver.DataArrival();
  }
};

}  // namespace tests
