#include "link_peer.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace bench {
namespace {

void SendAtOnce(int socket) {
  const int yes = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

/// Every connection's answer comes from the same memory: which pages memory of its own had, and so how they
/// share the cache with the reader's, made one connection twice as slow as the next.
bool SendLarge(int connection, const std::uint8_t* request) {
  static std::vector<std::uint8_t> answer(24 + kLargeAnswer, 0x5A);
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  std::memcpy(answer.data(), request, 24);
  answer[12] = answer[14] = answer[15] = 0;
  answer[13] = kLargeAnswer >> 16;
  return SendAll(connection, answer.data(), answer.size());
}

void ServeProtocol(int connection) {
  std::vector<std::uint8_t> frame(1 << 16);
  if (recv(connection, frame.data(), 12, MSG_WAITALL) != 12) return;
  if (!ReceiveAll(connection, frame.data() + 12, frame[11])) return;
  frame[11] = 2;
  std::memcpy(&frame[12], "Ok", 2);
  if (!SendAll(connection, frame.data(), 14)) return;

  for (;;) {
    // A request comes in one piece here, being small.
    const ssize_t count = recv(connection, frame.data(), frame.size(), 0);
    if (count <= 0) return;
    if (frame[5] != 2) {
      if (!SendAll(connection, frame.data(), static_cast<std::size_t>(count))) return;
      continue;
    }
    if (!SendLarge(connection, frame.data())) return;
  }
}

void ServeModbus(int connection) {
  std::array<std::uint8_t, 12> request;
  std::array<std::uint8_t, 23> answer{};
  while (recv(connection, request.data(), request.size(), 0) > 0) {
    std::memcpy(answer.data(), request.data(), 8);
    answer[5] = 17;  // bytes that follow
    answer[8] = 14;  // bytes of registers
    if (!SendAll(connection, answer.data(), answer.size())) return;
  }
}

}  // namespace

bool SendAll(int socket, const void* bytes, std::size_t count) {
  const auto* next = static_cast<const std::uint8_t*>(bytes);
  while (count > 0) {
    const ssize_t sent = send(socket, next, count, MSG_NOSIGNAL);
    if (sent <= 0) return false;
    next += sent;
    count -= static_cast<std::size_t>(sent);
  }
  return true;
}

bool ReceiveAll(int socket, void* bytes, std::size_t count) {
  auto* next = static_cast<std::uint8_t*>(bytes);
  while (count > 0) {
    const ssize_t received = recv(socket, next, count, 0);
    if (received <= 0) return false;
    next += received;
    count -= static_cast<std::size_t>(received);
  }
  return true;
}

Peer::Peer(std::function<void(int)> serve) : listener_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, plain, size) != 0 || listen(listener_, 1) != 0 ||
      getsockname(listener_, plain, &size) != 0)
    throw std::runtime_error("The peer of a benchmark cannot listen.");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this, serve = std::move(serve)] {
    std::vector<std::jthread> connections;  // ends when all clients are gone
    for (int connection; (connection = accept(listener_, nullptr, nullptr)) >= 0;) {
      SendAtOnce(connection);
      connections.emplace_back([serve, connection] {
        serve(connection);
        close(connection);
      });
    }
  });
}

Peer::~Peer() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

RawClient::RawClient(std::uint16_t port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
    throw std::runtime_error("The peer of a benchmark cannot be reached.");
  SendAtOnce(socket_);
}

RawClient::~RawClient() { close(socket_); }

Peer& ProtocolPeer() {
  static Peer peer(ServeProtocol);
  return peer;
}

Peer& ModbusPeer() {
  static Peer peer(ServeModbus);
  return peer;
}

}  // namespace bench
