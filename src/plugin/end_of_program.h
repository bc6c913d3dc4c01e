// The one place that decides when the program ends. It is given the reasons for an end as a table and looks
// at them again whenever something has changed; a reason that has held for its time ends the program, but
// never in the middle of something. Owned by plugin::Program.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <vector>

#include "ui/event_loop.h"

namespace plugin {

class EndOfProgram {
 public:
  struct Reason {
    std::chrono::milliseconds after;  // for how long it must have held
    std::function<bool()> holds;
  };

  /// `busy` puts the end off; `end` runs once, from the message loop.
  EndOfProgram(ui::EventLoop& loop, std::vector<Reason> reasons, std::function<bool()> busy,
               std::function<void()> end);

  /// To be called when something has changed that a reason looks at.
  void Look();
  /// Whether the program is about to end, now or as soon as it may.
  bool Due() const;

 private:
  struct Watched {
    Watched(ui::EventLoop& loop, Reason theReason)
        : reason(std::move(theReason)), timer(loop, reason.after) {}
    Reason reason;
    ui::Timer timer;
  };
  void Tick(Watched& watched);

  std::deque<Watched> watched_;
  std::function<bool()> busy_;
  std::function<void()> end_;
  bool ended_ = false;
};

}  // namespace plugin
