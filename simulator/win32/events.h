// What happened in the building, told in sentences for the person in front of it: who connected, which
// transactions began and how they ended, what was refused. Read off the building's own counters, so nothing
// of the building knows it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/building.h"

namespace simhost {

class Events {
 public:
  /// Switches the counting on.
  explicit Events(simulator::Building& building);

  /// The sentences since the last call, the building's own included.
  std::vector<std::string> News();

 private:
  static constexpr std::size_t kKinds = 6;

  simulator::Building& building_;
  std::array<std::uint64_t, kKinds> told_{};
  std::size_t logTold_ = 0;
};

}  // namespace simhost
