// The server of the binary protocol, on TCP: greets, then answers each request, well or in one of the bad
// ways that a server has. It runs on a thread of its own; tests and the command-line program own it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/protocol/frame.h"

namespace simulator {

enum class ServerMode {
  kEcho,       // the request comes back as it was sent
  kChunked,    // the same in pieces: the header, then `piece` bytes at a time, `pause` between them
  kOutOfStep,  // an answer under another sequence number
  kSurplus,    // an answer and, after `pause`, `piece` bytes more
  kLate,       // no answer before `piece` requests have come, then those to all of them in one piece
  kSilent,     // only the first `offset` bytes of the answer, then nothing
  kClosing,    // the same, then the connection is closed
  kResetting,  // the same, then the connection is broken
  kGarbage,    // bytes that are no answer
};

/// The mode of that name ("echo", "chunked", ...), or nothing; all names, for a help text.
std::optional<ServerMode> ModeByName(std::string_view name);
std::string ModeNames();

struct ServerOptions {
  ServerMode mode = ServerMode::kEcho;
  std::string greetingAnswer = "Ok";
  bool spoilsGreeting = false;  // the mode holds for the answer to the greeting too
  std::size_t piece = 7;
  std::chrono::milliseconds pause{0};
  std::size_t offset = 0;
  std::optional<std::size_t> answerBytes = {};  // instead of an echo, an argument of so many bytes
};

class ProtocolServer {
 public:
  /// Serves at once, on this port of `address`; 0 for any free one. Throws base::Error when that is not
  /// possible.
  explicit ProtocolServer(const ServerOptions& options = {}, std::uint16_t port = 0,
                          const std::string& address = "127.0.0.1");
  /// Ends all connections.
  ~ProtocolServer();

  std::uint16_t Port() const;
  /// Holds for every request that arrives from now on.
  void Set(const ServerOptions& options);
  /// Requests as they arrived since the last call, greetings too.
  std::vector<Frame> TakeRequests();
  /// Does not keep the frames for TakeRequests; for a server that runs for long.
  void KeepNoRequests();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace simulator
