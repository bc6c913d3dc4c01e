// The other ends of the link benchmarks: threads that answer with plain blocking sockets and as little work
// as can be, the same for every client that is compared.
#pragma once

#include <cstdint>
#include <functional>
#include <thread>

namespace bench {

/// A listening socket; each client is served by `serve` on a thread of its own until it goes.
class Peer {
 public:
  explicit Peer(std::function<void(int connection)> serve);
  ~Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  std::uint16_t Port() const { return port_; }

 private:
  int listener_ = -1;
  std::uint16_t port_ = 0;
  std::thread thread_;
};

/// Sends all of it, or receives exactly so much; no when the connection ended.
bool SendAll(int socket, const void* bytes, std::size_t count);
bool ReceiveAll(int socket, void* bytes, std::size_t count);

/// A blocking connection to a peer.
class RawClient {
 public:
  explicit RawClient(std::uint16_t port);
  ~RawClient();
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;
  int Socket() const { return socket_; }

 private:
  int socket_ = -1;
};

/// Answers the server protocol: the greeting with "Ok", command 2 with an argument of 1 MiB, any other
/// request with itself.
inline constexpr std::size_t kLargeAnswer = 1 << 20;
Peer& ProtocolPeer();

/// Answers every request for registers with seven of them: 23 bytes.
Peer& ModbusPeer();

}  // namespace bench
