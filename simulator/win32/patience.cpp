#include "simulator/win32/patience.h"

#include <thread>

#include "base/error.h"

namespace simhost {

namespace {
constexpr std::chrono::milliseconds kPause{30};
}

void Patience::Until(const std::function<std::string()>& amiss) const {
  const auto end = std::chrono::steady_clock::now() + limit;
  for (;;) {
    const std::string complaint = amiss();
    if (complaint.empty()) return;
    if (interrupt) interrupt();
    if (std::chrono::steady_clock::now() >= end) {
      throw base::Error(complaint + " (waited " + std::to_string(limit.count() / 1000) + " s)");
    }
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace simhost
