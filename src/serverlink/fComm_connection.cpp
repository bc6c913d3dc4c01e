// The client's connection: how it begins and ends, and what happens while nobody calls: events of the socket
// and ticks of the timers.
#include <algorithm>
#include <utility>

#include "serverlink/fComm.h"
#include "serverlink/fComm_calls.h"

namespace serverlink {

using namespace std::chrono_literals;

namespace {

constexpr auto kConnectTime = 30s;
constexpr int kTicksOn = 8;
constexpr std::size_t kLongestShown = 40;

/// What a server answered, fit to be shown.
std::string Shown(const Bytes& answer) {
  std::string text;
  for (const std::uint8_t byte : std::span(answer).first(std::min(answer.size(), kLongestShown))) {
    text += byte >= ' ' && byte < 0x7F ? static_cast<char>(byte) : '?';
  }
  return answer.size() > kLongestShown ? text + "..." : text;
}

}  // namespace

bool fComm::ovpConnect(const std::string& host, std::int32_t port, const std::string& greeting,
                       std::int16_t greetingType) {
  return Raising([&] {
    const Busy busy(*this);
    given_.trace("Connection in");
    try {
      Connect(host, port);
      Greet(greeting, greetingType);
    } catch (...) {
      given_.trace("Connection out erreur");
      connecting_ = false;
      given_.socket.Close();
      throw;
    }
    given_.trace("Connection out normal");
    return true;
  });
}

void fComm::Connect(const std::string& host, std::int32_t port) {
  Forget();
  if (host.empty()) throw base::Error(given_.text("No host was given.", {}));
  if (port < 1 || port > 65535)
    throw base::Error(given_.text("The port %s1% is not between 1 and 65535.", {std::to_string(port)}));
  connecting_ = true;
  given_.socket.Connect(host, static_cast<std::uint16_t>(port));
  PollError.Start();
  const Time start = given_.now();
  WaitUntil([this] { return given_.socket.Connected() || !failure_.empty(); }, start, start + kConnectTime);
  connecting_ = false;
  if (given_.socket.Connected()) return;
  given_.trace("Erreur timeout de connection");
  if (failure_.empty())
    failure_ = given_.text("There was no answer within %s1% s.", {std::to_string(kConnectTime.count())});
  throw base::Error(given_.text("The server %s1% could not be reached at port %s2%. %s3%",
                                {host, std::to_string(port), failure_}));
}

void fComm::Greet(const std::string& greeting, std::int16_t greetingType) {
  const std::string bytes = given_.toCodePage(greeting);
  Open().SndArgument.assign(bytes.begin(), bytes.end());
  try {
    Transact(0, 1, greetingType, "");
  } catch (const base::Error&) {
    given_.trace("Erreur transaction authentification");
    throw;
  }
  const Bytes& answer = LastCompleted().RspArgument;
  if (std::string_view(reinterpret_cast<const char*>(answer.data()), answer.size()) != "Ok") {
    given_.trace("Erreur authentification");
    throw base::Error(given_.text("The server refused the greeting; it answered \"%s1%\".", {Shown(answer)}));
  }
  mode_ = HeaderMode::kAuthenticated;
  receiver_.SetMode(mode_);
}

/// Of the connection before, nothing will be answered any more; the numbers go on.
void fComm::Forget() {
  given_.socket.Close();
  table_.Clear();
  opened_ = false;
  lastCompleted_ = kBeforeFirst;
  failure_.clear();
  error_ = false;
  mode_ = HeaderMode::kGreeting;
  receiver_.Restart(m_seqNumber);
}

void fComm::ovpClose() {
  given_.socket.Close();
  EndConnection(given_.text("The connection was closed.", {}));
  if (std::exchange(opened_, false)) table_.At(m_seqNumber) = nullptr;
  Bytes().swap(request_);
}

[[noreturn]] void fComm::Raise(const std::string& why) const {
  throw automation::Error(automation::kApplicationDefined, why, given_.title);
}

// --- events ---------------------------------------------------------------------------------------

void fComm::OnDataArrival() {
  try {
    receiver_.DataArrival();
  } catch (const base::Error& error) {
    Abandon(error.what());
  } catch (const std::bad_alloc&) {
    Abandon(given_.text("There is not enough memory for the answer of the server.", {}));
  }
}

/// After what the receiver could not understand, nothing that follows can be understood.
void fComm::Abandon(const std::string& why) {
  given_.trace("DataArrival out error ");
  given_.socket.Close();
  EndConnection(why);
}

void fComm::OnClose() { EndConnection(given_.text("The server closed the connection.", {})); }

void fComm::OnError(const std::string& why, int number) {
  const std::string sentence = given_.text(why, {std::to_string(number)});
  if (connecting_) return EndConnection(sentence);
  error_ = true;
  EndConnection(given_.text("The connection to the server failed. %s1%", {sentence}));
}

/// Whoever waits ends at once; an answer that is complete stands.
void fComm::EndConnection(const std::string& why) {
  failure_ = why;
  if (m_seqNumber == kBeforeFirst) return;
  const auto& current = table_.At(m_seqNumber);
  if (current && current->State != kComplete) current->State = kIdle;
}

std::string fComm::NotConnected() const {
  if (failure_.empty()) return given_.text("There is no connection to the server.", {});
  return given_.text("There is no connection to the server any more. %s1%", {failure_});
}

void fComm::SwitchTransactionOn() {
  ticks_ = 0;
  if (transactionOn_) return;
  transactionOn_ = true;
  TimerTransaction.Start();
  given_.trace("Transaction is On");
}

void fComm::OnTimerTransaction() {
  ticks_ = (ticks_ + 1) % kTicksOn;
  if (ticks_ != 0) return;
  TimerTransaction.Stop();
  transactionOn_ = false;
  given_.trace("Transaction is Off");
}

void fComm::OnPollError() {
  // A connection that ends while nothing is asked is noticed here.
  if (!busy_) given_.socket.Wait(std::chrono::milliseconds(0));
  if (!error_ || errorReported_) return;
  errorReported_ = true;  // before the box, whose message loop lets this timer tick
  given_.prompts.Ask(
      {given_.text("Connection lost with host %s%, you should restart this plugin", {NetworkIpAddress}),
       given_.title, ui::Buttons::kOk, ui::Icon::kError});
  connectionLost_ = true;
}

}  // namespace serverlink
