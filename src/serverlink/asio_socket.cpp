#include "serverlink/asio_socket.h"

#include <algorithm>
#include <utility>

#ifndef _WIN32
#include <poll.h>
#endif

namespace serverlink {
namespace {

using asio::ip::tcp;
using Handle = tcp::socket::native_handle_type;

// Asio waits with a time limit only in its queue of handlers, where a read that is under way would own memory
// of a transaction that may be given up meanwhile. So an open connection is read and written directly.
#ifdef _WIN32
// A read that runs into its time limit leaves the socket in no defined state.
constexpr bool kReadsMayWait = false;
constexpr int kWithoutWaiting = 0;  // the socket itself does not wait
constexpr auto kPoll = &WSAPoll;

asio::error_code LastError() { return {WSAGetLastError(), asio::error::get_system_category()}; }

void SetPatience(Handle, std::chrono::milliseconds) {}
int Length(std::size_t bytes) { return static_cast<int>(std::min<std::size_t>(bytes, 1 << 30)); }
#else
constexpr bool kReadsMayWait = true;
constexpr int kWithoutWaiting = MSG_DONTWAIT | MSG_NOSIGNAL;
constexpr auto kPoll = &::poll;

asio::error_code LastError() { return {errno, asio::error::get_system_category()}; }

/// How long a read waits; saves the poll before each.
void SetPatience(Handle handle, std::chrono::milliseconds longest) {
  timeval limit = {};
  limit.tv_sec = static_cast<time_t>(longest.count() / 1000);
  limit.tv_usec = static_cast<suseconds_t>(longest.count() % 1000 * 1000);
  setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
}
std::size_t Length(std::size_t bytes) { return bytes; }
#endif

bool MeansLater(const asio::error_code& error) {
  return error == asio::error::would_block || error == asio::error::try_again ||
         error == asio::error::interrupted;
}

/// The same words on every system; other failures go by their number.
const char* Words(const asio::error_code& error) {
  static const struct {
    asio::error_code code;
    const char* words;
  } kWords[] = {
      {asio::error::connection_refused, "The connection was refused."},
      {asio::error::connection_reset, "The server broke the connection."},
      {asio::error::connection_aborted, "The connection was broken on this side."},
      {asio::error::broken_pipe, "The server broke the connection."},
      {asio::error::timed_out, "There was no answer."},
      {asio::error::host_unreachable, "There is no way to this address."},
      {asio::error::network_unreachable, "There is no way to this network."},
      {asio::error::network_down, "The network is down."},
      {asio::error::host_not_found, "There is no host of this name."},
      {asio::error::host_not_found_try_again, "The name of the host could not be looked up."},
      {asio::error::no_data, "There is no host of this name."},
      {asio::error::service_not_found, "There is no host of this name."},
  };
  for (const auto& entry : kWords) {
    if (entry.code == error) return entry.words;
  }
  return "The system reports error %s1%.";
}

}  // namespace

void AsioSocket::Connect(const std::string& host, std::uint16_t port) {
  Close();
  state_ = State::kConnecting;
  try {
    lookUp_ = LookUp(ask_, host, port);
  } catch (const std::system_error& error) {
    Fail(error.code());
  }
}

void AsioSocket::WaitForConnection(std::chrono::milliseconds longest) {
  if (!lookUp_.valid()) {
    io_.restart();
    io_.run_one_for(longest);
  } else if (lookUp_.wait_for(longest) == std::future_status::ready) {
    Reach(lookUp_.get());
  }
}

void AsioSocket::Reach(const Addresses& found) {
  if (found.error) return Fail(found.error);
  asio::async_connect(socket_, found.endpoints,
                      [this, attempt = attempt_](const asio::error_code& error, const tcp::endpoint&) {
                        if (attempt != attempt_) return;
                        error ? Fail(error) : Opened();
                      });
}

void AsioSocket::Opened() {
  asio::error_code error;
  socket_.native_non_blocking(!kReadsMayWait, error);
  if (!error) socket_.set_option(tcp::no_delay(true), error);
  if (error) return Fail(error);
  patience_ = {};
  broken_ = false;
  state_ = State::kConnected;
}

void AsioSocket::Close() {
  ++attempt_;
  lookUp_ = {};
  asio::error_code ignored;
  socket_.close(ignored);
  state_ = State::kClosed;
  DropUnsent();
}

void AsioSocket::DropUnsent() {
  std::vector<std::uint8_t>().swap(unsent_);
  sent_ = 0;
}

void AsioSocket::SendData(std::span<const std::uint8_t> bytes) {
  if (!Connected()) return;
  const std::size_t count = unsent_.empty() ? Send(bytes) : 0;
  if (Connected())
    unsent_.insert(unsent_.end(), bytes.begin() + static_cast<std::ptrdiff_t>(count), bytes.end());
}

void AsioSocket::Flush() {
  sent_ += Send(std::span(unsent_).subspan(sent_));
  if (sent_ == unsent_.size()) DropUnsent();
}

/// As much as the connection accepts now.
std::size_t AsioSocket::Send(std::span<const std::uint8_t> bytes) {
  const auto count = ::send(socket_.native_handle(), reinterpret_cast<const char*>(bytes.data()),
                            Length(bytes.size()), kWithoutWaiting);
  if (count >= 0) return static_cast<std::size_t>(count);
  const auto error = LastError();
  if (!MeansLater(error)) Fail(error);
  return 0;
}

std::size_t AsioSocket::GetData(std::span<std::uint8_t> space) {
  if (!Connected()) return 0;
  const auto count = ::recv(socket_.native_handle(), reinterpret_cast<char*>(space.data()),
                            Length(space.size()), std::exchange(readWaits_, false) ? 0 : kWithoutWaiting);
  if (count > 0) return static_cast<std::size_t>(count);
  if (count < 0) {
    const auto error = LastError();
    if (!MeansLater(error)) Fail(error);
    return 0;
  }
  if (broken_) {
    Fail(asio::error::connection_reset);
    return 0;
  }
  Close();
  onClose();
  return 0;
}

void AsioSocket::Wait(std::chrono::milliseconds longest) {
  if (state_ == State::kClosed) return;
  if (state_ == State::kConnecting) return WaitForConnection(longest);
  if (kReadsMayWait && unsent_.empty()) {
    readWaits_ = longest.count() > 0;
    if (readWaits_ && std::exchange(patience_, longest) != longest)
      SetPatience(socket_.native_handle(), longest);
    onDataArrival();
    readWaits_ = false;
    return;
  }
  pollfd waited = {};
  waited.fd = socket_.native_handle();
  waited.events = static_cast<short>(unsent_.empty() ? POLLIN : POLLIN | POLLOUT);
  if (kPoll(&waited, 1, static_cast<int>(longest.count())) <= 0) return;
  if (waited.revents & POLLOUT) Flush();
  // On Wine, reading a connection that broke only tells that it ended.
  broken_ = (waited.revents & POLLERR) != 0;
  // A connection that broke counts as readable: reading it tells why.
  if (waited.revents & ~POLLOUT && Connected()) onDataArrival();
}

void AsioSocket::Fail(const asio::error_code& error) {
  Close();
  onError(Words(error), error.value());
}

}  // namespace serverlink
