// Puts responses together from whatever pieces the connection delivers. It keeps its own count of the
// sequence number that comes next and gives every byte to that transaction. Knows no socket: the client
// hands it bytes, or lets the rest of an argument be read straight to where it stays.
#pragma once

#include <span>

#include "serverlink/trace.h"
#include "serverlink/transaction_table.h"
#include "shell/strings.h"

namespace serverlink {

class Receiver {
 public:
  Receiver(const TransactionTable& table, const shell::Strings& strings, const Trace& trace)
      : table_(table), strings_(strings), trace_(trace) {}

  /// Starts with a new connection: the next bytes belong to the transaction after `lastNumber`.
  void Restart(std::int16_t lastNumber);
  void SetMode(HeaderMode mode) { mode_ = mode; }

  /// Takes what has arrived. Bytes behind a complete response belong to the next transaction. A header must
  /// arrive in one piece. Throws base::Error in words when nothing awaits the bytes, when they cannot be the
  /// response that is due, or when it announces more than 2^31-1 bytes; what follows cannot be understood
  /// then.
  void DataArrival(std::span<const std::uint8_t> bytes);

  /// Where the next bytes of an unfinished argument go, empty when none is under way. ArgumentArrived tells
  /// how many of them were filled. The space grows with what has arrived: 4 KiB and twice of it, whatever the
  /// header announced.
  std::span<std::uint8_t> ArgumentSpace();
  void ArgumentArrived(std::size_t count);

  /// Gives back the memory of an answer that nobody needs any more, for a later one.
  void Recycle(Bytes memory);

 private:
  CTransaction& Expected();
  std::span<const std::uint8_t> TakeHeader(CTransaction& transaction, std::span<const std::uint8_t> bytes);
  std::span<const std::uint8_t> TakeArgument(std::span<const std::uint8_t> bytes);
  [[noreturn]] void RefuseHeader(std::int64_t number, std::int64_t length) const;
  void StoreFirst(CTransaction& transaction, std::span<const std::uint8_t> bytes);
  bool IsMiddlePiece(std::size_t count) const;
  std::size_t SpaceFor(std::size_t received) const;
  void Grow(CTransaction& transaction) const;
  void Count(std::size_t count);
  void TraceRest() const;
  void Complete(CTransaction& transaction);

  const TransactionTable& table_;
  const shell::Strings& strings_;
  const Trace& trace_;
  HeaderMode mode_ = HeaderMode::kGreeting;
  std::int16_t rx_ = kBeforeFirst;
  bool advance_ = true;                // the next bytes belong to the next number
  CTransaction* receiving_ = nullptr;  // the one whose argument is under way; the table holds it
  std::size_t argumentLength_ = 0;     // its final length
  Bytes spare_;
};

}  // namespace serverlink
