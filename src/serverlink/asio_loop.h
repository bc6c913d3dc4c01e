// A message loop for programs without windows: posted work and timers by Asio. Used where the client runs on
// a command line.
#pragma once

#include <map>
#include <memory>

#include "serverlink/asio.h"
#include "ui/event_loop.h"

namespace serverlink {

class AsioLoop : public ui::EventLoop {
 public:
  void Turn() override;
  void Post(std::function<void()> work) override { asio::post(io_, std::move(work)); }
  void RunUntil(const std::function<bool()>& done) override;
  void Quit() override { quit_ = true; }
  void SetWaiting(bool) override {}

 private:
  void Start(ui::Timer& timer) override;
  void Stop(ui::Timer& timer) override { timers_.erase(&timer); }
  void Arm(ui::Timer& timer);

  asio::io_context io_{1};
  bool quit_ = false;
  std::map<ui::Timer*, std::unique_ptr<asio::steady_timer>> timers_;
};

}  // namespace serverlink
