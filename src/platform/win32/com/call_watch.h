// Watches the calls of one thread to other processes. A call that is not answered for some seconds is put to
// somebody who can give it up; until then the thread waits as COM makes it wait. The apartment owns the watch
// and passes it what COM's call filter hears; late-bound objects announce their calls to it.
//
// The watch is reminded in two ways, of which either is enough: by a posted message, for which COM asks the
// call filter, and by a sent one, which the system hands to a thread whenever that looks for messages, as COM
// does while it waits for an answer.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <string_view>
#include <thread>

#include "platform/win32/system/own_window.h"

namespace win32 {

class CallWatch;

/// A call to another process, from its start to its end. Made by whoever calls; calls may be nested.
class PendingCall {
 public:
  /// `member` must live as long as the call.
  explicit PendingCall(std::string_view member);
  PendingCall(const PendingCall&) = delete;
  PendingCall& operator=(const PendingCall&) = delete;
  ~PendingCall();

 private:
  friend class CallWatch;

  CallWatch* watch_;  // of this thread; nothing when its calls are not watched
  std::string_view member_;
  ULONGLONG start_ = 0;  // milliseconds that the system was awake
  PendingCall* outer_ = nullptr;
  bool givenUp_ = false;
};

class CallWatch {
 public:
  /// What is done about an unanswered call. Both run on the thread that makes the calls.
  struct Handlers {
    /// Asked some times a second about a call that has been pending for `elapsed`, at least kPatience and
    /// without the time that the computer was asleep, until it ends; the first yes gives it up.
    std::function<bool(std::string_view member, std::chrono::milliseconds elapsed)> overdue;
    /// The call that was asked about has ended.
    std::function<void()> over;
  };

  static constexpr std::chrono::milliseconds kPatience{5'000};
  /// Once a call was given up the host gets no more than this, unasked, until it answers one again.
  static constexpr std::chrono::milliseconds kGivenUpPatience{1'000};

  /// For the calls of the thread that makes the watch. Throws base::Error.
  explicit CallWatch(Handlers handlers);
  ~CallWatch();

  /// Called while a call is pending, by the call filter on each message that arrives; yes cancels the call.
  bool GivesUp();

 private:
  friend class PendingCall;
  void Begin(PendingCall& call);
  void End(PendingCall& call);
  void Remind(const std::stop_token& stop);
  bool Receive(UINT message);

  Handlers handlers_;
  MessageWindow window_;
  PendingCall* innermost_ = nullptr;
  bool givenUp_ = false;
  bool asked_ = false;
  bool asking_ = false;

  // Shared with the thread that reminds.
  std::atomic<ULONGLONG> since_ = 0;  // start of the innermost call; 0 while there is none
  std::atomic<bool> parked_ = false;
  std::mutex mutex_;
  std::condition_variable_any begun_;
  std::jthread reminder_;
};

}  // namespace win32
