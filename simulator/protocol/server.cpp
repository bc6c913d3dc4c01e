#include "simulator/protocol/server.h"

#include <asio.hpp>

#include <algorithm>
#include <array>
#include <mutex>
#include <thread>
#include <utility>

#include "base/error.h"

namespace simulator {
namespace {

using asio::ip::tcp;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kLongestArgument = 64 << 20;  // bytes; more is no request that anybody means

constexpr std::pair<std::string_view, ServerMode> kModes[] = {
    {"echo", ServerMode::kEcho},
    {"chunked", ServerMode::kChunked},
    {"out-of-step", ServerMode::kOutOfStep},
    {"surplus", ServerMode::kSurplus},
    {"late", ServerMode::kLate},
    {"silent", ServerMode::kSilent},
    {"closing", ServerMode::kClosing},
    {"resetting", ServerMode::kResetting},
    {"garbage", ServerMode::kGarbage},
};

/// Any pattern that no frame begins with.
Bytes Garbage() {
  Bytes bytes(200);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(0xA5 ^ (i * 37));
  return bytes;
}

}  // namespace

std::optional<ServerMode> ModeByName(std::string_view name) {
  const auto* found = std::ranges::find(kModes, name, &std::pair<std::string_view, ServerMode>::first);
  if (found == std::end(kModes)) return std::nullopt;
  return found->second;
}

std::string ModeNames() {
  std::string names;
  for (const auto& [name, mode] : kModes) names += (names.empty() ? "" : ", ") + std::string(name);
  return names;
}

class ProtocolServer::Impl {
 public:
  Impl(const ServerOptions& options, std::uint16_t port, const std::string& address)
      : options_(options), acceptor_(io_) {
    try {
      const tcp::endpoint endpoint(asio::ip::make_address(address), port);
      acceptor_.open(endpoint.protocol());
      acceptor_.set_option(tcp::acceptor::reuse_address(true));
      acceptor_.bind(endpoint);
      acceptor_.listen();
    } catch (const std::exception& error) {
      throw base::Error("The server cannot listen at " + address + ", port " + std::to_string(port) + ": " +
                        error.what());
    }
    asio::co_spawn(io_, Accept(), asio::detached);
    thread_ = std::thread([this] { io_.run(); });
  }

  ~Impl() {
    io_.stop();
    thread_.join();
  }

  std::uint16_t Port() const { return acceptor_.local_endpoint().port(); }

  void Set(const ServerOptions& options) {
    const std::lock_guard lock(mutex_);
    options_ = options;
  }

  std::vector<Frame> TakeRequests() {
    const std::lock_guard lock(mutex_);
    return std::exchange(requests_, {});
  }

  void KeepNoRequests() {
    const std::lock_guard lock(mutex_);
    keepRequests_ = false;
  }

 private:
  asio::awaitable<void> Accept();
  asio::awaitable<void> Serve(tcp::socket socket);
  asio::awaitable<bool> ReadRequest(tcp::socket& socket, std::size_t headerLength, Frame& request);
  asio::awaitable<bool> Answer(tcp::socket& socket, Bytes answer, std::size_t headerLength,
                               ServerOptions options);
  asio::awaitable<void> SendInPieces(tcp::socket& socket, Bytes answer, std::size_t headerLength,
                                     ServerOptions options);
  ServerOptions Note(const Frame& request);

  std::mutex mutex_;  // for what both threads use
  ServerOptions options_;
  std::vector<Frame> requests_;
  bool keepRequests_ = true;

  asio::io_context io_{1};
  tcp::acceptor acceptor_;
  std::thread thread_;
};

asio::awaitable<void> ProtocolServer::Impl::Accept() {
  for (;;) {
    tcp::socket socket = co_await acceptor_.async_accept(asio::use_awaitable);
    asio::error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
    asio::co_spawn(io_, Serve(std::move(socket)), asio::detached);
  }
}

asio::awaitable<void> ProtocolServer::Impl::Serve(tcp::socket socket) {
  try {
    std::size_t headerLength = kGreetingHeader;
    Bytes late;
    std::size_t requests = 0;  // whose answers are late
    for (;;) {
      Frame frame;
      const bool understood = co_await ReadRequest(socket, headerLength, frame);
      if (!understood) co_return;
      ServerOptions options = Note(frame);
      if (headerLength == kGreetingHeader) {
        frame.argument.assign(options.greetingAnswer.begin(), options.greetingAnswer.end());
        if (!options.spoilsGreeting) options.mode = ServerMode::kEcho;
      } else if (options.answerBytes) {
        frame.argument.assign(*options.answerBytes, 0x5A);
      }
      if (options.mode == ServerMode::kOutOfStep) ++frame.sequence;
      const Bytes answer = WriteFrame(frame, headerLength);
      late.insert(late.end(), answer.begin(), answer.end());
      if (options.mode == ServerMode::kLate && ++requests < options.piece) continue;
      requests = 0;
      const bool goesOn = co_await Answer(socket, std::exchange(late, {}), headerLength, options);
      if (!goesOn) co_return;
      headerLength = kFullHeader;
    }
  } catch (const std::exception&) {
    // The client went away.
  }
}

/// False when the bytes are no request, or one that is much too long.
asio::awaitable<bool> ProtocolServer::Impl::ReadRequest(tcp::socket& socket, std::size_t headerLength,
                                                        Frame& request) {
  std::array<std::uint8_t, kFullHeader> bytes{};
  co_await asio::async_read(socket, asio::buffer(bytes.data(), headerLength), asio::use_awaitable);
  const auto header = ReadHeader(std::span(bytes).first(headerLength));
  if (!header || header->argumentLength > kLongestArgument) co_return false;
  request = header->fields;
  // The memory grows with what comes, not with what was announced.
  co_await asio::async_read(socket, asio::dynamic_buffer(request.argument, header->argumentLength),
                            asio::transfer_exactly(header->argumentLength), asio::use_awaitable);
  co_return true;
}

ServerOptions ProtocolServer::Impl::Note(const Frame& request) {
  const std::lock_guard lock(mutex_);
  if (keepRequests_) requests_.push_back(request);
  return options_;
}

/// False when the connection ends here.
asio::awaitable<bool> ProtocolServer::Impl::Answer(tcp::socket& socket, Bytes answer,
                                                   std::size_t headerLength, ServerOptions options) {
  switch (options.mode) {
    case ServerMode::kChunked:
      co_await SendInPieces(socket, std::move(answer), headerLength, options);
      co_return true;
    case ServerMode::kSurplus:
      if (options.pause.count() > 0) {
        co_await asio::async_write(socket, asio::buffer(answer), asio::use_awaitable);
        answer.clear();
        co_await asio::steady_timer(io_, options.pause).async_wait(asio::use_awaitable);
      }
      answer.insert(answer.end(), options.piece, 0);
      break;
    case ServerMode::kSilent:
    case ServerMode::kClosing:
    case ServerMode::kResetting:
      answer.resize(std::min(answer.size(), options.offset));
      break;
    case ServerMode::kGarbage:
      answer = Garbage();
      break;
    default:
      break;
  }
  co_await asio::async_write(socket, asio::buffer(answer), asio::use_awaitable);
  if (options.mode == ServerMode::kResetting) {
    // Closing a socket that lingers for no time breaks the connection; its destructor would end it in order.
    socket.set_option(asio::socket_base::linger(true, 0));
    socket.close();
  }
  co_return options.mode != ServerMode::kClosing&& options.mode != ServerMode::kResetting;
}

asio::awaitable<void> ProtocolServer::Impl::SendInPieces(tcp::socket& socket, Bytes answer,
                                                         std::size_t headerLength, ServerOptions options) {
  asio::steady_timer timer(io_);
  std::size_t length = headerLength;
  for (std::size_t sent = 0; sent < answer.size(); length = std::max<std::size_t>(1, options.piece)) {
    length = std::min(length, answer.size() - sent);
    co_await asio::async_write(socket, asio::buffer(answer.data() + sent, length), asio::use_awaitable);
    sent += length;
    if (sent == answer.size()) co_return;  // the next answer waits for nothing
    timer.expires_after(options.pause);
    co_await timer.async_wait(asio::use_awaitable);
  }
}

ProtocolServer::ProtocolServer(const ServerOptions& options, std::uint16_t port, const std::string& address)
    : impl_(std::make_unique<Impl>(options, port, address)) {}
ProtocolServer::~ProtocolServer() = default;
std::uint16_t ProtocolServer::Port() const { return impl_->Port(); }
void ProtocolServer::Set(const ServerOptions& options) { impl_->Set(options); }
std::vector<Frame> ProtocolServer::TakeRequests() { return impl_->TakeRequests(); }
void ProtocolServer::KeepNoRequests() { impl_->KeepNoRequests(); }

}  // namespace simulator
