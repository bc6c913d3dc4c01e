#include "plugin/end_of_program.h"

#include <algorithm>
#include <utility>

namespace plugin {

EndOfProgram::EndOfProgram(ui::EventLoop& loop, std::vector<Reason> reasons, std::function<bool()> busy,
                           std::function<void()> end)
    : busy_(std::move(busy)), end_(std::move(end)) {
  for (Reason& reason : reasons) {
    Watched& watched = watched_.emplace_back(loop, std::move(reason));
    watched.timer.onTick = [this, &watched] { Tick(watched); };
  }
}

void EndOfProgram::Look() {
  for (Watched& watched : watched_) {
    const bool holds = !ended_ && watched.reason.holds();
    if (holds && !watched.timer.Running()) watched.timer.Start();
    if (!holds) watched.timer.Stop();
  }
}

bool EndOfProgram::Due() const {
  return ended_ ||
         std::ranges::any_of(watched_, [](const Watched& watched) { return watched.reason.holds(); });
}

// Nobody need have told of the last change: the reason is asked again.
void EndOfProgram::Tick(Watched& watched) {
  if (ended_ || !watched.reason.holds()) return watched.timer.Stop();
  if (busy_()) return;  // until the next tick
  ended_ = true;
  Look();
  end_();
}

}  // namespace plugin
