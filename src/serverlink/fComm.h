// The client of the host's server: one connection, one request at a time. It builds the request, waits for
// the answer while the message loop keeps running, and gives out the answer's parts. Owns the open
// transactions and its timers; the socket, the loop and the prompts are handed in and outlive it.
//
// Failures of the public operations are automation::Error kApplicationDefined with a sentence that says what
// happened and the application's title as the source.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "serverlink/receiver.h"
#include "serverlink/socket.h"
#include "ui/event_loop.h"
#include "ui/prompts.h"

namespace serverlink {

struct Surroundings {
  Socket& socket;
  ui::EventLoop& loop;
  ui::Prompts& prompts;
  Texts text;
  std::string title;
  Trace trace = {};
  /// From UTF-8 to the system's 8-bit code page.
  std::function<std::string(const std::string&)> toCodePage = [](const std::string& text) { return text; };
  std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
};

class fComm {
 public:
  explicit fComm(Surroundings surroundings);
  ~fComm();

  /// The server's address as the plug-in was given it; shown when the connection is lost.
  std::string NetworkIpAddress;

  /// Closes, connects within 30 seconds and greets; yes when the server answered the greeting with "Ok".
  /// Whatever the connection before left unfinished is dropped.
  bool ovpConnect(const std::string& host, std::int32_t port, const std::string& greeting,
                  std::int16_t greetingType);
  /// Closes and lets go of everything that was not sent yet; the last complete answer stays.
  void ovpClose();

  /// Opens the next transaction with these bytes to be sent.
  void ovpSetArgument(const Bytes& argument);
  /// Sends a transaction and waits for its answer: without `argumentType` a new one with no argument, with it
  /// the one that ovpSetArgument opened. A `text` goes before the argument, behind its length in bytes (at
  /// most 32767), and adds 100 to the type. Numbers below 0 do not fit on the wire and are refused, and so is
  /// a request while the one before has not gone out; a refused one can be repeated. An answer of more than
  /// kLongestAnswer bytes ends the connection; so does what the server sends without being asked, also behind
  /// a complete answer, which stands.
  bool ovpTransaction(std::int16_t command, std::int16_t parameter, std::optional<std::int16_t> argumentType,
                      const std::string& text);

  /// Parts of the last complete answer.
  std::int16_t ovpGetRspCmd() const { return Short(Field::kCommand); }
  std::int16_t ovpGetRspParam() const { return Short(Field::kParameter); }
  std::int16_t ovpGetRspArgType() const { return Short(Field::kArgumentType); }
  std::int32_t ovpGetRspArgLen() const;
  /// Stays until the next answer is complete.
  const Bytes& ovpGetRspArgVal() const;
  std::int16_t ovpGetRspArgTypeTransaction(const CTransaction& transaction) const;
  /// By the decimal text of the sequence number: unfinished transactions and the last complete one.
  std::shared_ptr<CTransaction> Transaction(const std::string& key) const { return table_.Find(key); }

  /// How long ovpTransaction waits for an answer, in seconds; 60 by default.
  void setTransactionTimeout(std::int16_t seconds) { timeout_ = seconds; }
  void setTransactionTimeoutDefault() { setTransactionTimeout(kDefaultTimeout); }
  /// 10 seconds and 2 for each 1,000 bytes, rounded half to even, but at least 60.
  void setTransactionTimeoutFromBufferSize(std::int32_t size);

  /// True while a transaction is recent: until 8 ticks of a second after the last one was sent.
  bool TransactionOn() const { return transactionOn_; }
  /// True once the user was told that the connection broke.
  bool ConnectionLost() const { return connectionLost_; }

  /// Most significant byte first; refuse as an overflow what is negative or too large.
  Bytes shortToByteArray(std::int16_t value) const { return NumberBytes(value, 2); }
  Bytes unsignedShortToByteArray(std::int32_t value) const { return NumberBytes(value, 2); }
  Bytes unsignedIntToByteArray(std::int32_t value) const { return NumberBytes(value, 4); }

 private:
  static constexpr std::int16_t kDefaultTimeout = 60;
  using Time = std::chrono::steady_clock::time_point;
  class Busy;

  template <class Work>
  decltype(auto) Raising(Work work) const;
  [[noreturn]] void Raise(const std::string& why) const;

  void Connect(const std::string& host, std::int32_t port);
  void Greet(const std::string& greeting, std::int16_t greetingType);
  void Forget();

  CTransaction& Open();
  void Transact(std::int16_t command, std::int16_t parameter, std::int16_t argumentType,
                const std::string& text);
  std::shared_ptr<CTransaction> NewRecord();
  void BuildRequest(CTransaction& transaction, std::int16_t command, std::int16_t parameter,
                    std::int16_t argumentType, const std::string& text);
  void CheckReady(Time now);
  void Await(CTransaction& transaction, Time start);
  void WaitUntil(const std::function<bool()>& done, Time start, Time end);
  void PassTime(Time start, Time now, Time end);
  void Finish(CTransaction& transaction);
  static void GiveUp(CTransaction& transaction);

  void OnDataArrival();
  void OnClose();
  void OnError(const std::string& why, int number);
  void Abandon(const std::string& why);
  void EndConnection(const std::string& why);
  std::string NotConnected() const;
  void OnTimerTransaction();
  void OnPollError();
  void SwitchTransactionOn();

  const CTransaction& LastCompleted() const;
  std::int16_t Short(Field field) const;
  Bytes NumberBytes(std::int64_t value, std::size_t width) const;

  Surroundings given_;
  TransactionTable table_;
  Receiver receiver_;
  HeaderMode mode_ = HeaderMode::kGreeting;
  std::int16_t m_seqNumber = kBeforeFirst;
  std::int16_t lastCompleted_ = kBeforeFirst;
  std::shared_ptr<CTransaction> spare_;     // a record that nobody needs any more, for the next transaction
  Bytes request_;                           // header and argument of the last one
  bool opened_ = false;                     // the last one was not sent yet
  std::int16_t timeout_ = kDefaultTimeout;  // seconds
  bool busy_ = false;
  bool connecting_ = false;
  std::string failure_;  // why the connection ended, a sentence
  Time lastTurn_ = {};

  bool transactionOn_ = false;
  int ticks_ = 0;
  bool error_ = false;
  bool errorReported_ = false;
  bool connectionLost_ = false;
  ui::Timer TimerTransaction;
  ui::Timer PollError;
};

}  // namespace serverlink
