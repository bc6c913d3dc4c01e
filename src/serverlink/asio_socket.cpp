#include "serverlink/asio_socket.h"

#ifndef _WIN32
#include <poll.h>
#endif

namespace serverlink {
namespace {

using asio::ip::tcp;

/// Asio waits with a time limit only in its queue of handlers, where a read that is under way would own
/// memory of a transaction that may be given up meanwhile.
struct Readiness {
  bool canRead = false;
  bool canWrite = false;
};

Readiness WaitFor(tcp::socket::native_handle_type handle, bool write, std::chrono::milliseconds longest) {
  pollfd waited = {};
  waited.fd = handle;
  waited.events = static_cast<short>(write ? POLLIN | POLLOUT : POLLIN);
  const int milliseconds = static_cast<int>(longest.count());
#ifdef _WIN32
  const int count = WSAPoll(&waited, 1, milliseconds);
#else
  const int count = ::poll(&waited, 1, milliseconds);
#endif
  if (count <= 0) return {};
  // A connection that broke counts as readable: reading it tells why.
  return {(waited.revents & ~POLLOUT) != 0, (waited.revents & POLLOUT) != 0};
}

/// The same words on every system; other failures go by their number.
std::string Words(const asio::error_code& error) {
  static const struct {
    asio::error_code code;
    const char* words;
  } kWords[] = {
      {asio::error::connection_refused, "the connection was refused"},
      {asio::error::connection_reset, "the server broke the connection"},
      {asio::error::connection_aborted, "the connection was broken on this side"},
      {asio::error::broken_pipe, "the server broke the connection"},
      {asio::error::timed_out, "there was no answer"},
      {asio::error::host_unreachable, "there is no way to this address"},
      {asio::error::network_unreachable, "there is no way to this network"},
      {asio::error::network_down, "the network is down"},
      {asio::error::host_not_found, "there is no host of this name"},
      {asio::error::host_not_found_try_again, "the name of the host could not be looked up"},
      {asio::error::no_data, "there is no host of this name"},
      {asio::error::service_not_found, "there is no host of this name"},
  };
  for (const auto& entry : kWords) {
    if (entry.code == error) return entry.words;
  }
  return "system error " + std::to_string(error.value());
}

}  // namespace

void AsioSocket::Connect(const std::string& host, std::uint16_t port) {
  Close();
  state_ = State::kConnecting;
  const int attempt = ++attempt_;
  resolver_.async_resolve(
      host, std::to_string(port),
      [this, attempt](const asio::error_code& error, const tcp::resolver::results_type& found) {
        if (attempt != attempt_) return;
        if (error) return Fail(error);
        asio::async_connect(socket_, found,
                            [this, attempt](const asio::error_code& failure, const tcp::endpoint&) {
                              if (attempt != attempt_) return;
                              failure ? Fail(failure) : Opened();
                            });
      });
}

void AsioSocket::Opened() {
  asio::error_code error;
  socket_.non_blocking(true, error);
  if (!error) socket_.set_option(tcp::no_delay(true), error);
  if (error) return Fail(error);
  state_ = State::kConnected;
}

void AsioSocket::Close() {
  ++attempt_;
  resolver_.cancel();
  asio::error_code ignored;
  socket_.close(ignored);
  state_ = State::kClosed;
  unsent_.clear();
  sent_ = 0;
}

void AsioSocket::SendData(automation::Bytes bytes) {
  if (!Connected()) return;
  if (unsent_.empty()) {
    unsent_ = std::move(bytes);
  } else {
    unsent_.insert(unsent_.end(), bytes.begin(), bytes.end());
  }
  Flush();
}

void AsioSocket::Flush() {
  asio::error_code error;
  sent_ += socket_.write_some(asio::buffer(unsent_) + sent_, error);
  if (error == asio::error::would_block || error == asio::error::try_again) return;
  if (error) return Fail(error);
  if (sent_ < unsent_.size()) return;
  unsent_.clear();
  sent_ = 0;
}

std::size_t AsioSocket::GetData(std::span<std::uint8_t> space) {
  if (!Connected()) return 0;
  asio::error_code error;
  const std::size_t count = socket_.read_some(asio::buffer(space.data(), space.size()), error);
  if (!error) return count;
  if (error == asio::error::would_block || error == asio::error::try_again) return 0;
  if (error != asio::error::eof) {
    Fail(error);
    return 0;
  }
  Close();
  if (onClose) onClose();
  return 0;
}

void AsioSocket::Wait(std::chrono::milliseconds longest) {
  if (state_ == State::kClosed) return;
  if (state_ == State::kConnecting) {
    io_.restart();
    io_.run_one_for(longest);
    return;
  }
  const Readiness ready = WaitFor(socket_.native_handle(), !unsent_.empty(), longest);
  if (ready.canWrite) Flush();
  if (ready.canRead && Connected() && onDataArrival) onDataArrival();
}

void AsioSocket::Fail(const asio::error_code& error) {
  Close();
  if (onError) onError(Words(error));
}

}  // namespace serverlink
