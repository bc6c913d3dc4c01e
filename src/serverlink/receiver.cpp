#include "serverlink/receiver.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "base/error.h"

namespace serverlink {
namespace {

constexpr std::size_t kSpaceAhead = 4096;       // bytes
constexpr std::size_t kLargestSpare = 4 << 20;  // bytes
constexpr std::int64_t kLongestArgument = std::numeric_limits<std::int32_t>::max();

std::int64_t SignedSize(std::span<const std::uint8_t> bytes) {
  return static_cast<std::int64_t>(bytes.size());
}

std::size_t Received(const CTransaction& transaction) {
  return static_cast<std::size_t>(transaction.ReceivedBytesArg);
}

}  // namespace

void Receiver::Restart(std::int16_t lastNumber) {
  rx_ = lastNumber;
  advance_ = true;
  receiving_ = nullptr;
  mode_ = HeaderMode::kGreeting;
}

void Receiver::DataArrival(std::span<const std::uint8_t> bytes) {
  if (IsMiddlePiece(bytes.size()) && !trace_.On()) {
    // Many small pieces must not cost much more than copying them.
    std::memcpy(receiving_->RspArgument.data() + Received(*receiving_), bytes.data(), bytes.size());
    receiving_->ReceivedBytesArg += static_cast<std::int32_t>(bytes.size());
    return;
  }
  trace_("DataArrival in");
  int further = 0;  // packets behind the first
  while (!bytes.empty()) {
    if (receiving_) {
      bytes = TakeArgument(bytes);
      TraceRest();
    } else {
      bytes = TakeHeader(Expected(), bytes);
      if (!bytes.empty()) {
        trace_("(1) More packets waiting in the buffer. Bytes to read: ", SignedSize(bytes));
      }
    }
    if (bytes.empty()) break;
    trace_("*********  We have extra packet in the buffer. Bytes remaining: ", SignedSize(bytes));
    ++further;
  }
  for (; further > 0; --further) trace_("*********  Ending recursive call, Rx=", rx_);
  trace_("DataArrival out normal ", rx_);
}

/// The transaction that the next header belongs to.
CTransaction& Receiver::Expected() {
  if (advance_) {
    rx_ = NextNumber(rx_);
    advance_ = false;
    trace_("Rx=", rx_);
  } else {
    trace_("Rx unchanged =", rx_);
  }
  CTransaction* transaction = rx_ > kBeforeFirst ? table_.At(rx_).get() : nullptr;
  if (transaction && transaction->State == kSent) return *transaction;
  trace_("Erreur données non attendues");
  throw base::Error(strings_.GetStrings("The server sent data that no request waits for."));
}

std::span<const std::uint8_t> Receiver::TakeHeader(CTransaction& transaction,
                                                   std::span<const std::uint8_t> bytes) {
  const std::size_t header = HeaderLength(mode_);
  if (bytes.size() < header) {
    trace_("Erreur header too small");
    throw base::Error(
        strings_.FormatStrings("The server sent %s1% bytes where a header of %s2% bytes was due.",
                               {std::to_string(bytes.size()), std::to_string(header)}));
  }
  transaction.RspHeader.assign(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(header));
  const std::int64_t length = ReadField(bytes, mode_, Field::kArgumentLength);
  const std::int64_t number = ReadField(bytes, mode_, Field::kSequence);
  if (number != rx_ || length > kLongestArgument) RefuseHeader(number, length);
  bytes = bytes.subspan(header);
  argumentLength_ = static_cast<std::size_t>(length);
  transaction.State = kReceiving;
  transaction.ReceivedBytesArg = 0;
  if (argumentLength_ == 0) {
    Complete(transaction);
    return bytes;
  }
  const std::size_t count = std::min(argumentLength_, bytes.size());
  StoreFirst(transaction, bytes.first(count));
  receiving_ = &transaction;
  Count(count);
  if (receiving_) trace_("Not all data has been read for packet ", rx_);
  return bytes.subspan(count);
}

/// What came with the header. Memory that an earlier answer filled is used again; it is not cleared, which
/// would take as long as reading.
void Receiver::StoreFirst(CTransaction& transaction, std::span<const std::uint8_t> bytes) {
  Bytes& argument = transaction.RspArgument;
  if (spare_.capacity() > 0) argument.swap(spare_);
  if (argument.size() > bytes.size()) {
    argument.resize(std::min(argument.size(), argumentLength_));
    std::ranges::copy(bytes, argument.begin());
  } else {
    argument.reserve(SpaceFor(bytes.size()));
    argument.assign(bytes.begin(), bytes.end());
  }
}

/// Bytes that an argument may take up when so many of them have arrived.
std::size_t Receiver::SpaceFor(std::size_t received) const {
  return std::min(argumentLength_, kSpaceAhead + 2 * received);
}

void Receiver::RefuseHeader(std::int64_t number, std::int64_t length) const {
  if (number != rx_) {
    trace_("Received out-of-synch packet. Rx=", rx_);
    throw base::Error(strings_.FormatStrings("The server answered transaction %s1% where %s2% was due.",
                                             {std::to_string(number), std::to_string(rx_)}));
  }
  throw base::Error(strings_.FormatStrings("The server announced an answer of %s1% bytes, which is too long.",
                                           {std::to_string(length)}));
}

std::span<const std::uint8_t> Receiver::TakeArgument(std::span<const std::uint8_t> bytes) {
  Bytes& argument = receiving_->RspArgument;
  const std::size_t rest = argumentLength_ - Received(*receiving_);
  if (bytes.size() >= rest && Received(*receiving_) == argument.size()) {
    // What completes it is put behind it, without clearing space first.
    argument.reserve(argumentLength_);
    argument.insert(argument.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(rest));
    Count(rest);
    return bytes.subspan(rest);
  }
  while (receiving_ && !bytes.empty()) {
    const auto space = ArgumentSpace();
    const std::size_t count = std::min(space.size(), bytes.size());
    std::copy_n(bytes.begin(), count, space.begin());
    Count(count);
    bytes = bytes.subspan(count);
  }
  return bytes;
}

/// True when so many bytes neither complete the argument nor need more space.
bool Receiver::IsMiddlePiece(std::size_t count) const {
  return receiving_ && count < receiving_->RspArgument.size() - Received(*receiving_);
}

std::span<std::uint8_t> Receiver::ArgumentSpace() {
  if (!receiving_) return {};
  if (Received(*receiving_) == receiving_->RspArgument.size()) Grow(*receiving_);
  return std::span(receiving_->RspArgument).subspan(Received(*receiving_));
}

void Receiver::Grow(CTransaction& transaction) const {
  const std::size_t size = SpaceFor(Received(transaction));
  transaction.RspArgument.reserve(size);  // exactly; resize alone might take more
  transaction.RspArgument.resize(size);
}

void Receiver::Recycle(Bytes memory) {
  if (memory.capacity() <= kLargestSpare) spare_ = std::move(memory);
}

void Receiver::ArgumentArrived(std::size_t count) {
  Count(count);
  TraceRest();
}

void Receiver::TraceRest() const {
  trace_("Finishing reading Rx=", rx_);
  if (receiving_) trace_("After second read, not all data has been read for packet ", rx_);
}

void Receiver::Count(std::size_t count) {
  receiving_->ReceivedBytesArg += static_cast<std::int32_t>(count);
  if (Received(*receiving_) == argumentLength_) Complete(*receiving_);
}

void Receiver::Complete(CTransaction& transaction) {
  transaction.State = kComplete;
  receiving_ = nullptr;
  advance_ = true;
}

}  // namespace serverlink
