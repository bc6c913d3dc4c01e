// The message loop of the one user-interface thread, its timers and the waiting pointer. A port: implemented
// by the Windows edge, and by a plain queue in tests.
#pragma once

#include <chrono>
#include <functional>

namespace ui {

class EventLoop;

/// Calls onTick every interval while it runs. Stops when destroyed.
class Timer {
 public:
  Timer(EventLoop& loop, std::chrono::milliseconds interval) : loop_(loop), interval_(interval) {}
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  ~Timer() { Stop(); }

  std::function<void()> onTick;

  std::chrono::milliseconds Interval() const { return interval_; }
  bool Running() const { return running_; }
  void Start();
  void Stop();

 private:
  EventLoop& loop_;
  std::chrono::milliseconds interval_;
  bool running_ = false;
};

class EventLoop {
 public:
  virtual ~EventLoop() = default;
  /// Handles what is waiting (painting, timers, calls from the host) and returns at once.
  virtual void Turn() = 0;
  /// Runs `work` from the loop, not from inside this call.
  virtual void Post(std::function<void()> work) = 0;
  /// Handles events until `done` answers yes or the program's loop is ended; for a dialog that keeps its
  /// caller waiting.
  virtual void RunUntil(const std::function<bool()>& done) = 0;
  /// Ends the program's loop.
  virtual void Quit() = 0;
  /// Shows the hourglass pointer, or the normal one again.
  virtual void SetWaiting(bool waiting) = 0;

 private:
  friend class Timer;
  virtual void Start(Timer& timer) = 0;
  virtual void Stop(Timer& timer) = 0;
};

inline void Timer::Start() {
  if (running_) loop_.Stop(*this);
  running_ = true;
  loop_.Start(*this);
}

inline void Timer::Stop() {
  if (!running_) return;
  running_ = false;
  loop_.Stop(*this);
}

/// Shows the hourglass pointer for the life of the object.
class WaitPointer {
 public:
  explicit WaitPointer(EventLoop& loop) : loop_(loop) { loop_.SetWaiting(true); }
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;
  ~WaitPointer() { loop_.SetWaiting(false); }

 private:
  EventLoop& loop_;
};

}  // namespace ui
