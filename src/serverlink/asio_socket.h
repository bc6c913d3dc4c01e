// The connection over the system's sockets, the same on Linux and Windows. Used by programs that talk to a
// server; never uses a window, so it serves with any message loop.
#pragma once

#include <vector>

#include "serverlink/look_up.h"
#include "serverlink/socket.h"

namespace serverlink {

class AsioSocket : public Socket {
 public:
  explicit AsioSocket(AskName ask = AskSystem) : ask_(std::move(ask)), socket_(io_) {}
  ~AsioSocket() override { Close(); }

  void Connect(const std::string& host, std::uint16_t port) override;
  void Close() override;
  bool Connected() const override { return state_ == State::kConnected; }
  void SendData(std::span<const std::uint8_t> bytes) override;
  bool Sending() const override { return !unsent_.empty(); }
  std::size_t GetData(std::span<std::uint8_t> space) override;
  void Wait(std::chrono::milliseconds longest) override;

 private:
  enum class State { kClosed, kConnecting, kConnected };

  void WaitForConnection(std::chrono::milliseconds longest);
  void Reach(const Addresses& found);
  void Opened();
  std::size_t Send(std::span<const std::uint8_t> bytes);
  void Flush();
  void DropUnsent();
  void Fail(const asio::error_code& error);

  asio::io_context io_{1};
  AskName ask_;
  std::future<Addresses> lookUp_;
  asio::ip::tcp::socket socket_;
  State state_ = State::kClosed;
  int attempt_ = 0;  // results of an attempt that was given up may still come
  std::vector<std::uint8_t> unsent_;
  std::size_t sent_ = 0;    // of unsent_
  bool readWaits_ = false;  // the next read may itself wait, for as long as patience_
  std::chrono::milliseconds patience_{0};
  bool broken_ = false;
};

}  // namespace serverlink
