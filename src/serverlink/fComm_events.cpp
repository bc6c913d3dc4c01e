// What happens to the client while nobody calls it: events of the socket and ticks of its timers.
#include "base/error.h"
#include "serverlink/fComm.h"

namespace serverlink {
namespace {

constexpr int kTicksOn = 8;

}  // namespace

void fComm::OnDataArrival() {
  try {
    const auto rest = receiver_.ArgumentSpace();
    const auto space = rest.empty() ? std::span<std::uint8_t>(arrived_) : rest;
    const std::size_t count = given_.socket.GetData(space);
    if (count == 0) return;
    if (rest.empty()) {
      receiver_.DataArrival(space.first(count));
    } else {
      receiver_.ArgumentArrived(count);
    }
  } catch (const base::Error& error) {
    Abandon(error.what());
  } catch (const std::bad_alloc&) {
    Abandon(given_.strings.GetStrings("There is not enough memory for the answer of the server."));
  }
}

/// After what the receiver could not understand, nothing that follows can be understood.
void fComm::Abandon(const std::string& why) {
  given_.trace("DataArrival out error ");
  given_.socket.Close();
  EndConnection(why);
}

void fComm::OnClose() { EndConnection(given_.strings.GetStrings("The server closed the connection.")); }

void fComm::OnError(const std::string& why) {
  if (connecting_) return EndConnection(why);
  error_ = true;
  EndConnection(given_.strings.FormatStrings("The connection to the server failed: %s1%.", {why}));
}

/// Whoever waits ends at once.
void fComm::EndConnection(const std::string& why) {
  failure_ = why;
  if (m_seqNumber == kBeforeFirst) return;
  if (const auto& current = table_.At(m_seqNumber)) current->State = kIdle;
}

std::string fComm::NotConnected() const {
  if (failure_.empty()) return given_.strings.GetStrings("There is no connection to the server.");
  return given_.strings.FormatStrings("There is no connection to the server any more. %s1%", {failure_});
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
      {given_.strings.FormatStrings("Connection lost with host %s%, you should restart this plugin",
                                    {NetworkIpAddress}),
       given_.title, ui::Buttons::kOk, ui::Icon::kError});
  connectionLost_ = true;
}

}  // namespace serverlink
