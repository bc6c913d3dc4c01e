// One TCP connection as the protocol client sees it. A port: implemented with Asio for programs, and by bytes
// in memory where every event must come at a chosen moment. All calls and events are on one thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace serverlink {

class Socket {
 public:
  virtual ~Socket() = default;

  /// Raised from inside Wait; Close and Error also from inside SendData and GetData when these find the
  /// connection ended. The handler of DataArrival reads until a GetData fills less than its space; the first
  /// may find nothing. After Close and Error the socket is closed; Error says why in an English sentence, in
  /// which %s1% stands for the system's number of the error.
  std::function<void()> onDataArrival;
  std::function<void()> onClose;
  std::function<void(const std::string& why, int number)> onError;

  /// Closes, then begins to connect; Wait carries it on. A failure is Error.
  virtual void Connect(const std::string& host, std::uint16_t port) = 0;
  /// Ends the connection without an event; what was not sent yet is dropped, with its memory.
  virtual void Close() = 0;
  virtual bool Connected() const = 0;
  /// Takes all the bytes, without waiting; what the connection does not accept yet goes out in Wait.
  virtual void SendData(std::span<const std::uint8_t> bytes) = 0;
  /// True while the connection has not accepted all of it.
  virtual bool Sending() const = 0;
  /// Reads what is there, at most `space`; answers the count. 0 when there is nothing or the connection
  /// ended, which raises the event. For the handler of DataArrival alone.
  virtual std::size_t GetData(std::span<std::uint8_t> space) = 0;
  /// Waits for the connection, at most so long, and raises its events. Returns as soon as there was one, and
  /// at once when there is nothing to wait for. With 0 it looks without waiting.
  virtual void Wait(std::chrono::milliseconds longest) = 0;
};

}  // namespace serverlink
