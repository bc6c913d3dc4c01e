#include "serverlink/fComm.h"

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "base/numbers.h"
#include "serverlink/fComm_calls.h"

namespace serverlink {

using namespace std::chrono_literals;

namespace {

constexpr auto kTick = 1s;
// A round of waiting ends at once when the connection has something. These bound how long a window waits for
// its turn; after the first two seconds it may wait longer.
constexpr auto kRound = 10ms;
constexpr auto kLaterRound = 100ms;
constexpr auto kBriskTime = 2s;
constexpr int kTextTypeOffset = 100;

}  // namespace

fComm::fComm(Surroundings surroundings)
    : given_(std::move(surroundings)),
      receiver_(given_.socket, table_, given_.text, given_.trace),
      TimerTransaction(given_.loop, kTick),
      PollError(given_.loop, kTick) {
  given_.socket.onDataArrival = [this] { OnDataArrival(); };
  given_.socket.onClose = [this] { OnClose(); };
  given_.socket.onError = [this](const std::string& why, int number) { OnError(why, number); };
  TimerTransaction.onTick = [this] { OnTimerTransaction(); };
  PollError.onTick = [this] { OnPollError(); };
}

fComm::~fComm() {
  given_.socket.Close();
  given_.socket.onDataArrival = given_.socket.onClose = nullptr;
  given_.socket.onError = nullptr;
}

// --- one transaction -----------------------------------------------------------------------------------

void fComm::ovpSetArgument(const Bytes& argument) {
  Raising([&] {
    const Busy busy(*this);
    Open().SndArgument = argument;
  });
}

bool fComm::ovpTransaction(std::int16_t command, std::int16_t parameter,
                           std::optional<std::int16_t> argumentType, const std::string& text) {
  return Raising([&] {
    const Busy busy(*this);
    if (!argumentType) Open();
    Transact(command, parameter, argumentType.value_or(0), text);
    return true;
  });
}

/// A transaction that was never sent gives its number to the next one, as the server will not answer it.
CTransaction& fComm::Open() {
  if (!opened_) m_seqNumber = NextNumber(m_seqNumber);
  auto& place = table_.At(m_seqNumber);
  // Complete but not consumed is the late answer to a request that was given up.
  if (place && !opened_ && place->State != kIdle && place->State != kComplete) {
    given_.trace("Transaction buffer overflow");
    given_.trace("m_seqNumber=", m_seqNumber);
    throw base::Error(given_.text("Transaction %s1% has never been answered; please connect again.",
                                  {std::to_string(m_seqNumber)}));
  }
  place = NewRecord();
  place->SeqNumber = m_seqNumber;
  opened_ = true;
  return *place;
}

/// A record that nobody holds any more is used again, with its memory.
std::shared_ptr<CTransaction> fComm::NewRecord() {
  if (!spare_) return std::make_shared<CTransaction>();
  spare_->State = kIdle;
  spare_->ReceivedBytesArg = 0;
  spare_->RspArgument.clear();
  spare_->RspHeader.clear();
  spare_->SndArgument.clear();
  return std::exchange(spare_, nullptr);
}

void fComm::Transact(std::int16_t command, std::int16_t parameter, std::int16_t argumentType,
                     const std::string& text) {
  given_.trace("Transaction in ", m_seqNumber);
  try {
    if (!opened_) {
      given_.trace("Transaction non traitée");
      throw base::Error(given_.text("No argument was set for the transaction.", {}));
    }
    const Time start = given_.now();
    CheckReady(start);
    CTransaction& transaction = *table_.At(m_seqNumber);
    BuildRequest(transaction, command, parameter, argumentType, text);
    opened_ = false;
    transaction.State = kSent;
    SwitchTransactionOn();
    given_.socket.SendData(request_);
    if (request_.capacity() > kLargestKept) Bytes().swap(request_);
    Await(transaction, start);
    Finish(transaction);
  } catch (...) {
    given_.trace("Transaction out erreur");
    throw;
  }
  given_.trace("Transaction out normal ", m_seqNumber);
}

/// Changes the transaction only when all of it fits on the wire, so that a refused call can be repeated.
void fComm::BuildRequest(CTransaction& transaction, std::int16_t command, std::int16_t parameter,
                         std::int16_t argumentType, const std::string& text) {
  Bytes prefix;
  if (!text.empty()) {
    const std::string bytes = given_.toCodePage(text);
    prefix.resize(2);
    WriteNumber(prefix, ToShort(static_cast<std::int64_t>(bytes.size())));
    prefix.insert(prefix.end(), bytes.begin(), bytes.end());
    argumentType = ToShort(argumentType + kTextTypeOffset);
  }
  const std::size_t header = HeaderLength(mode_);
  const std::size_t argument = prefix.size() + transaction.SndArgument.size();
  request_.assign(header, 0);
  WriteField(request_, mode_, Field::kCommand, command);
  WriteField(request_, mode_, Field::kSequence, transaction.SeqNumber);
  WriteField(request_, mode_, Field::kParameter, parameter);
  WriteField(request_, mode_, Field::kArgumentType, argumentType);
  WriteField(request_, mode_, Field::kArgumentLength, static_cast<std::int64_t>(argument));
  WriteField(request_, mode_, Field::kHeaderLength, static_cast<std::int64_t>(header));
  Bytes& sent = transaction.SndArgument;
  sent.insert(sent.begin(), prefix.begin(), prefix.end());
  request_.insert(request_.end(), sent.begin(), sent.end());
}

/// A request goes out when the one before has gone and nothing has come that nobody asked for; the connection
/// is asked for that when there was time for it.
void fComm::CheckReady(Time now) {
  if (given_.socket.Sending() || now - lastTurn_ >= kRound) given_.socket.Wait(0ms);
  if (!given_.socket.Connected()) throw base::Error(NotConnected());
  if (given_.socket.Sending())
    throw base::Error(given_.text("The request before this one has not been sent yet.", {}));
}

void fComm::Await(CTransaction& transaction, Time start) {
  WaitUntil([&] { return transaction.State == kComplete || transaction.State == kIdle; }, start,
            start + std::chrono::seconds(timeout_));
  if (transaction.State == kComplete) return;
  GiveUp(transaction);
  if (!failure_.empty()) throw base::Error(failure_);
  given_.trace("Erreur timeout de transaction");
  const std::string seconds = std::to_string(timeout_);
  if (transaction.State != kReceiving)
    throw base::Error(given_.text("The server has not answered within %s1% s.", {seconds}));
  throw base::Error(
      given_.text("The server has not finished its answer within %s1% s; %s2% of %s3% bytes have come.",
                  {seconds, std::to_string(transaction.ReceivedBytesArg),
                   std::to_string(ReadField(transaction, Field::kArgumentLength))}));
}

/// Its answer may still come; it is then counted, so that the next one is found behind it, but not kept.
void fComm::GiveUp(CTransaction& transaction) {
  transaction.IsGivenUp = true;
  Bytes().swap(transaction.SndArgument);
  Bytes().swap(transaction.RspArgument);
}

/// The last round begins when the time is over: what lies in the socket counts, also when one turn of the
/// message loop lasted longer than that.
void fComm::WaitUntil(const std::function<bool()>& done, Time start, Time end) {
  for (Time now = start;; now = given_.now()) {
    PassTime(start, now, end);
    if (done() || now >= end) return;
  }
}

/// One round of waiting. The message loop takes part in every round, but when answers come faster than a
/// round lasts, not in every transaction.
void fComm::PassTime(Time start, Time now, Time end) {
  if (now - lastTurn_ >= kRound) {
    given_.loop.Turn();
    lastTurn_ = now = given_.now();
  }
  const auto round = now - start < kBriskTime ? kRound : kLaterRound;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
  given_.socket.Wait(std::clamp<std::chrono::milliseconds>(left, 0ms, round));
}

/// The one before goes: only the last complete answer can be asked for.
void fComm::Finish(CTransaction& transaction) {
  if (lastCompleted_ != kBeforeFirst && lastCompleted_ != transaction.SeqNumber) {
    auto previous = std::exchange(table_.At(lastCompleted_), nullptr);
    if (previous.use_count() == 1) {
      receiver_.Recycle(std::move(previous->RspArgument));
      if (previous->SndArgument.capacity() <= kLargestKept) spare_ = std::move(previous);
    }
  }
  lastCompleted_ = transaction.SeqNumber;
  transaction.State = kIdle;
}

void fComm::setTransactionTimeoutFromBufferSize(std::int32_t size) {
  Raising([&] {
    const double seconds = size / 1000.0 + size / 1000.0 + 10.0;
    const std::int16_t whole = ToShort(static_cast<std::int64_t>(base::RoundHalfToEven(seconds)));
    setTransactionTimeout(std::max<std::int16_t>(whole, kDefaultTimeout));
  });
}

// --- the answer ----------------------------------------------------------------------------------------

const CTransaction& fComm::LastCompleted() const {
  if (lastCompleted_ != kBeforeFirst) return *table_.At(lastCompleted_);
  throw base::Error(given_.text("No transaction has been completed.", {}));
}

std::int16_t fComm::Short(Field field) const {
  return Raising([&] { return static_cast<std::int16_t>(ReadField(LastCompleted(), field)); });
}

std::int32_t fComm::ovpGetRspArgLen() const {
  return Raising(
      [&] { return static_cast<std::int32_t>(ReadField(LastCompleted(), Field::kArgumentLength)); });
}

const Bytes& fComm::ovpGetRspArgVal() const {
  return Raising([&]() -> const Bytes& {
    const Bytes& argument = LastCompleted().RspArgument;
    given_.trace("Sending response argument ", static_cast<std::int64_t>(argument.size()));
    return argument;
  });
}

std::int16_t fComm::ovpGetRspArgTypeTransaction(const CTransaction& transaction) const {
  return static_cast<std::int16_t>(ReadField(transaction, Field::kArgumentType));
}

Bytes fComm::NumberBytes(std::int64_t value, std::size_t width) const {
  return Raising([&] {
    Bytes bytes(width);
    WriteNumber(bytes, value);
    return bytes;
  });
}

}  // namespace serverlink
