// This executable as a server of automation classes: makes the class objects known to the system, creates
// local objects for callers in other processes and counts those that are still held. Used by the tool and by
// the stand-in host; they decide themselves when the process ends.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/local_object.h"
#include "platform/win32/system/handle.h"

namespace win32 {

struct ServerClass {
  GUID classId;
  /// The first one is the principal program id; all of them create the class.
  std::vector<std::string> programIds;
  std::string friendlyName;
  /// Makes one object for a caller; an exception becomes a failed creation.
  std::function<std::shared_ptr<automation::LocalObject>()> make;
  /// The interface that describes the class in the type library; none by default.
  GUID interfaceId = {};
  /// True: an ActiveX control in a library, created inside the process of its user.
  bool control = false;
  /// Groups classes under the system's rules for starting their program; none by default.
  GUID applicationId = {};
};

class ComServer {
 public:
  struct Options {
    /// True: a process makes one object, of whichever class, and the next one is made by another process.
    /// False: it makes all of them.
    bool singleUse = true;
    /// Number of the executable's TYPELIB resource; 0 for none.
    int typeLibrary = 0;
    /// Runs on this thread each time that the last created object was released and no lock is held. What it
    /// throws goes to the debugger's output.
    std::function<void()> onLastRelease;
  };

  /// Makes the class objects known to the system. The thread is in a ComApartment. Throws base::Error.
  ComServer(const std::vector<ServerClass>& classes, Options options);
  /// Callers that still hold objects lose them, so that no object outlives what it works on.
  ~ComServer();
  ComServer(const ComServer&) = delete;
  ComServer& operator=(const ComServer&) = delete;

  /// Created objects that somebody still holds, and locks.
  int Outstanding() const;

 private:
  class Factory;
  struct State;

  std::shared_ptr<State> state_;
};

}  // namespace win32
