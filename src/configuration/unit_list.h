// The units of a network as it lists them. Asked by the desk, before one is compared, by the copying to many
// units and for scripts.
#pragma once

#include <string>
#include <vector>

#include "host/session.h"
#include "shell/platform.h"

namespace configuration {

struct UnitEntry {
  std::string name, location, programId;
  std::string version;  // of the template, and its revision
  std::string fault;    // why the host did not give it, in its words; its name is not known then
};

/// An object server for one session more. Throws automation::Error or base::Error.
automation::Object NewServer(const shell::Platform& platform);

/// All units, in the host's order. Asked in a session of its own: a session's transactions are those of the
/// unit that it was asked for last. A unit that is open in another session may be refused. Throws
/// host::StepError, automation::Error or base::Error when the network cannot be asked at all.
std::vector<UnitEntry> ListUnits(const shell::Platform& platform, const host::SessionRequest& request);

/// The unit in view may be refused to the session that lists, in words that a host may choose: where none has
/// its name, it is the first without one, and gets it.
void NameInView(std::vector<UnitEntry>& units, const std::string& inView);

/// Those that `programId` and `inView` leave: of the same kind, not the one in view, and known by name.
std::vector<UnitEntry> OthersOfKind(std::vector<UnitEntry> units, std::string_view programId,
                                    std::string_view inView);

}  // namespace configuration
