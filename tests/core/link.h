// The protocol client connected to the stand-in server over a real socket, with a clock that may run faster
// than time does, so that a time-out of whole seconds takes milliseconds.
#pragma once

#include <thread>

#include "serverlink/asio_socket.h"
#include "serverlink/fComm.h"
#include "shell/strings.h"
#include "simulator/protocol/server.h"
#include "stand_ins.h"

namespace tests {

/// Looks one name up for longer than anybody waits.
inline serverlink::Addresses SlowName(const std::string& host, std::uint16_t port) {
  if (host == "slow.test") std::this_thread::sleep_for(std::chrono::minutes(1));
  return serverlink::AskSystem(host, port);
}

struct Link {
  simulator::ProtocolServer server;
  serverlink::AsioSocket socket{SlowName};
  ManualLoop loop;
  ScriptedPrompts prompts;
  int clockSpeed = 1;
  std::vector<std::string> traced;
  serverlink::fComm comm{
      {.socket = socket,
       .loop = loop,
       .prompts = prompts,
       .text = shell::ReplacePlaceholders,
       .title = "KV-TARN Configuration",
       .trace = serverlink::Trace([this](std::string_view line) { traced.emplace_back(line); }),
       .now = [this] { return start_ + (std::chrono::steady_clock::now() - start_) * clockSpeed; }}};

  bool Connect() { return comm.ovpConnect("127.0.0.1", server.Port(), "hello", 3); }

  /// The bytes come back as the answer.
  serverlink::Bytes Echo(const serverlink::Bytes& argument) {
    comm.ovpSetArgument(argument);
    comm.ovpTransaction(1, 2, 3, "");
    return comm.ovpGetRspArgVal();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// "" or the text of the application-defined error; anything else that is thrown goes through.
template <class Work>
std::string Refusal(Work work) {
  try {
    work();
    return "";
  } catch (const automation::Error& error) {
    if (error.Code() != automation::kApplicationDefined || error.Source() != "KV-TARN Configuration") throw;
    return error.Description();
  }
}

inline serverlink::Bytes Pattern(std::size_t size) {
  serverlink::Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 31 + i / 251);
  return bytes;
}

}  // namespace tests
