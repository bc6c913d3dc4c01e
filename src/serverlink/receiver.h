// Puts responses together from whatever pieces the connection delivers. It keeps its own count of the
// sequence number that comes next and gives every byte to that transaction. The client tells it when
// something has arrived; it reads that itself, the rest of a long argument straight to where it stays.
#pragma once

#include <array>

#include "serverlink/socket.h"
#include "serverlink/texts.h"
#include "serverlink/trace.h"
#include "serverlink/transaction_table.h"

namespace serverlink {

class Receiver {
 public:
  Receiver(Socket& socket, const TransactionTable& table, const Texts& text, const Trace& trace)
      : socket_(socket), table_(table), text_(text), trace_(trace) {}

  /// Starts with a new connection: the next bytes belong to the transaction after `lastNumber`.
  void Restart(std::int16_t lastNumber);
  void SetMode(HeaderMode mode) { mode_ = mode; }

  /// Reads and takes all that the connection has now. Bytes behind a complete response belong to the next
  /// transaction; of one that was given up they are counted and not kept. Throws base::Error in words when
  /// nothing awaits the bytes, when they cannot be the response that is due, when they end inside of a
  /// header, or when it announces more than kLongestAnswer; what follows cannot be understood then. The
  /// memory of an argument grows with what has arrived: 4 KiB and twice of it, whatever the header announced.
  void DataArrival();

  /// Gives back the memory of an answer that nobody needs any more, for a later one.
  void Recycle(Bytes memory);

 private:
  bool ReadsInPlace() const;
  std::span<std::uint8_t> ArgumentSpace();
  // Inline, since a stream of small pieces must not cost much more than copying it.
  inline void TakeArrived(std::size_t count);
  inline CTransaction& Expected();
  inline std::span<const std::uint8_t> TakeHeader(CTransaction& transaction,
                                                  std::span<const std::uint8_t> bytes);
  [[noreturn]] void RefuseHeader(std::int64_t number, std::int64_t length) const;
  [[noreturn]] void RefuseCutHeader() const;
  inline std::span<const std::uint8_t> TakeArgument(std::span<const std::uint8_t> bytes);
  inline void Store(Bytes& argument, std::span<const std::uint8_t> bytes) const;
  inline std::size_t Rest() const;
  std::size_t SpaceFor(std::size_t received) const;
  void Grow(CTransaction& transaction) const;
  void Count(std::size_t count);
  void TraceRest() const;
  void Complete(CTransaction& transaction);

  Socket& socket_;
  const TransactionTable& table_;
  const Texts& text_;
  const Trace& trace_;
  HeaderMode mode_ = HeaderMode::kGreeting;
  std::int16_t rx_ = kBeforeFirst;
  bool advance_ = true;                // the next bytes belong to the next number
  CTransaction* receiving_ = nullptr;  // the one whose argument is under way; the table holds it
  std::size_t argumentLength_ = 0;     // its final length
  Bytes spare_;
  std::array<std::uint8_t, 4096> arrived_;
  std::size_t kept_ = 0;  // bytes of a header at the front of arrived_ whose rest was not read yet
};

}  // namespace serverlink
