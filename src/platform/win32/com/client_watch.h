// Notices that the programs which use this server have ended, also when they were killed and never released
// their objects, so that no server process without a window stays behind. Used by the tool's entry point.
//
// The clients are found from the calls that they make; where the system does not tell who calls (Wine), the
// process that started this one counts, because there the client itself starts the server.
#pragma once

#include <functional>
#include <memory>

#include "platform/win32/com/apartment.h"

namespace win32 {

class ClientWatch {
 public:
  /// `onAllGone` runs on this thread, from its message loop, each time that the last known client process has
  /// ended.
  ClientWatch(ComApartment& apartment, std::function<void()> onAllGone);
  ~ClientWatch();

 private:
  class Impl;

  ComApartment& apartment_;
  std::unique_ptr<Impl> impl_;
};

}  // namespace win32
