#include "serverlink/receiver.h"

#include <algorithm>
#include <utility>

#include "base/error.h"

namespace serverlink {
namespace {

constexpr std::size_t kSpaceAhead = 4096;  // bytes

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
  kept_ = 0;
  mode_ = HeaderMode::kGreeting;
}

void Receiver::DataArrival() {
  trace_("DataArrival in");
  for (bool more = true; more;) {
    const bool inPlace = ReadsInPlace();
    const auto space = inPlace ? ArgumentSpace() : std::span(arrived_).subspan(kept_);
    const std::size_t count = socket_.GetData(space);
    more = count == space.size();  // else the connection is empty now
    if (count == 0) break;
    if (inPlace) {
      Count(count);
      TraceRest();
    } else {
      TakeArrived(count);
    }
  }
  if (kept_ > 0) RefuseCutHeader();
  trace_("DataArrival out normal ", rx_);
}

/// A long rest, or one that there is space for; a short one is better read together with what is behind it.
bool Receiver::ReadsInPlace() const {
  if (!receiving_ || receiving_->IsGivenUp) return false;
  return receiving_->RspArgument.size() > Received(*receiving_) || Rest() >= arrived_.size();
}

/// What lies in arrived_: answers, one behind the other. The beginning of a header waits for its rest, which
/// the next read brings.
void Receiver::TakeArrived(std::size_t count) {
  std::span<const std::uint8_t> bytes = std::span(arrived_).first(std::exchange(kept_, 0) + count);
  int further = 0;  // packets behind the first
  while (!bytes.empty()) {
    if (receiving_) {
      bytes = TakeArgument(bytes);
      TraceRest();
      // It comes in small pieces; from now on each is read straight to its place.
      if (receiving_ && !receiving_->IsGivenUp) Grow(*receiving_);
    } else {
      CTransaction& transaction = Expected();
      if (bytes.size() < HeaderLength(mode_)) {
        kept_ = bytes.size();
        std::ranges::copy(bytes, arrived_.begin());
        break;
      }
      bytes = TakeHeader(transaction, bytes);
      if (!bytes.empty())
        trace_("(1) More packets waiting in the buffer. Bytes to read: ", SignedSize(bytes));
    }
    if (bytes.empty()) break;
    trace_("*********  We have extra packet in the buffer. Bytes remaining: ", SignedSize(bytes));
    ++further;
  }
  for (; further > 0; --further) trace_("*********  Ending recursive call, Rx=", rx_);
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
  throw base::Error(text_("The server sent data that no request waits for.", {}));
}

std::span<const std::uint8_t> Receiver::TakeHeader(CTransaction& transaction,
                                                   std::span<const std::uint8_t> bytes) {
  const std::size_t header = HeaderLength(mode_);
  transaction.RspHeader.assign(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(header));
  const std::int64_t length = ReadField(bytes, mode_, Field::kArgumentLength);
  const std::int64_t number = ReadField(bytes, mode_, Field::kSequence);
  if (number != rx_ || length > kLongestAnswer) RefuseHeader(number, length);
  bytes = bytes.subspan(header);
  argumentLength_ = static_cast<std::size_t>(length);
  transaction.State = kReceiving;
  transaction.ReceivedBytesArg = 0;
  if (argumentLength_ == 0) {
    Complete(transaction);
    return bytes;
  }
  receiving_ = &transaction;
  if (!transaction.IsGivenUp && spare_.capacity() > 0) {
    // Memory that an earlier answer filled is not cleared, which would take as long as reading.
    transaction.RspArgument.swap(spare_);
    transaction.RspArgument.resize(std::min(transaction.RspArgument.size(), argumentLength_));
  }
  bytes = TakeArgument(bytes);
  if (receiving_) trace_("Not all data has been read for packet ", rx_);
  return bytes;
}

std::span<const std::uint8_t> Receiver::TakeArgument(std::span<const std::uint8_t> bytes) {
  const std::size_t count = std::min(Rest(), bytes.size());
  if (!receiving_->IsGivenUp) Store(receiving_->RspArgument, bytes.first(count));
  Count(count);
  return bytes.subspan(count);
}

void Receiver::Store(Bytes& argument, std::span<const std::uint8_t> bytes) const {
  const std::size_t received = Received(*receiving_);
  if (bytes.size() <= argument.size() - received) {
    std::ranges::copy(bytes, argument.begin() + static_cast<std::ptrdiff_t>(received));
    return;
  }
  argument.resize(received);
  argument.reserve(SpaceFor(received + bytes.size()));
  argument.insert(argument.end(), bytes.begin(), bytes.end());
}

std::size_t Receiver::Rest() const { return argumentLength_ - Received(*receiving_); }

/// Bytes that an argument may take up when so many of them have arrived.
std::size_t Receiver::SpaceFor(std::size_t received) const {
  return std::min(argumentLength_, kSpaceAhead + 2 * received);
}

void Receiver::RefuseHeader(std::int64_t number, std::int64_t length) const {
  if (number != rx_) {
    trace_("Received out-of-synch packet. Rx=", rx_);
    throw base::Error(text_("The server answered transaction %s1% where %s2% was due.",
                            {std::to_string(number), std::to_string(rx_)}));
  }
  throw base::Error(text_("The server announced an answer of %s1% bytes; at most %s2% are taken.",
                          {std::to_string(length), std::to_string(kLongestAnswer)}));
}

void Receiver::RefuseCutHeader() const {
  trace_("Erreur header too small");
  throw base::Error(text_("Only %s1% of the %s2% bytes of a header came in one piece.",
                          {std::to_string(kept_), std::to_string(HeaderLength(mode_))}));
}

std::span<std::uint8_t> Receiver::ArgumentSpace() {
  if (Received(*receiving_) == receiving_->RspArgument.size()) Grow(*receiving_);
  return std::span(receiving_->RspArgument).subspan(Received(*receiving_));
}

void Receiver::Grow(CTransaction& transaction) const {
  const std::size_t size = SpaceFor(Received(transaction));
  transaction.RspArgument.reserve(size);  // exactly; resize alone might take more
  transaction.RspArgument.resize(size);
}

void Receiver::Recycle(Bytes memory) {
  if (memory.capacity() <= kLargestKept) spare_ = std::move(memory);
}

void Receiver::TraceRest() const {
  if (!trace_.On()) return;
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
