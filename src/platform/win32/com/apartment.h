// The thread's membership in COM: a single-threaded apartment with OLE, and the filter for calls in both
// directions. While a call to another process is under way, windows are painted but clicks and keys wait, so
// that no command starts inside another one; a busy callee is asked again for ten seconds. Created first by
// every program.
#pragma once

#include <functional>
#include <memory>

#include "platform/win32/com/call_watch.h"

namespace win32 {

class CallFilter;

class ComApartment {
 public:
  /// Throws base::Error when the system refuses.
  ComApartment();
  ~ComApartment();

  /// Runs at the start of each call that comes in from outside, with the id of the calling thread as the
  /// system gives it (Wine gives this process' id instead). What it throws goes to the debugger's output.
  void WatchIncoming(std::function<void(DWORD callerThread)> observer);

  /// Puts calls of this thread that are not answered to `handlers` from now on; not while one is pending.
  /// Throws base::Error.
  void WatchPending(CallWatch::Handlers handlers);

 private:
  CallFilter* filter_ = nullptr;
  std::unique_ptr<CallWatch> watch_;
};

}  // namespace win32
