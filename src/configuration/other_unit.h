// The units of a network beside the one in view, each opened in a session of its own when it is asked for.
#pragma once

#include <string>
#include <vector>

#include "host/device_tree.h"
#include "host/session.h"
#include "shell/platform.h"

namespace configuration {

/// A unit as the network lists it.
struct UnitEntry {
  std::string name, location, programId;
};

/// The units of this kind, but for the one in view. Throws automation::Error.
std::vector<UnitEntry> ListUnits(const automation::Object& network, std::string_view programId,
                                 std::string_view inView);

/// Its end lets go of the unit, and the host ends the session.
class OtherUnit {
 public:
  /// Throws host::StepError, automation::Error or base::Error.
  OtherUnit(const shell::Platform& platform, const host::SessionRequest& request,
            const base::Numbers& numbers);

  const host::DeviceObjects& Device() const { return device_; }
  /// Throws automation::Error.
  std::string ReadLocation();
  const automation::Object& Network() const { return session_.Network(); }

 private:
  host::Journal journal_;
  host::Session session_;
  host::DeviceObjects device_;
};

}  // namespace configuration
