// The message loop of the user-interface thread: runs the program, keeps it alive during long operations,
// carries posted work and timers. It knows the tool's top-level windows, for which it turns keys into tab
// steps, mnemonics, default and cancel buttons and menu accelerators. One per process; every call comes from
// its own thread.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/win32/system/own_window.h"
#include "ui/event_loop.h"

namespace win32 {

/// Takes the text of a failure inside a handler; the failure goes no further.
using FaultSink = std::function<void(const std::string&)>;

/// Sees each message before it is dispatched; yes when it has handled it.
class MessageFilter {
 public:
  virtual ~MessageFilter() = default;
  virtual bool Translate(MSG& message) = 0;
};

class MessageLoop : public ui::EventLoop {
 public:
  /// `onFault` takes what posted work, timers and the handlers of controls let out. Throws base::Error.
  explicit MessageLoop(FaultSink onFault);

  /// Handles messages until Quit; answers the program's exit code.
  int Run();
  void Turn() override;
  /// Handles what is waiting for `window` and its controls alone.
  void TurnFor(HWND window);
  void Post(std::function<void()> work) override;
  /// Runs `work` now, or from the loop while another thread waits in SendMessage for the present message: COM
  /// lets nobody call another process then (RPC_E_CANTCALLOUT_ININPUTSYNCCALL). So do assistive and test
  /// programs click.
  void RunOutsideSend(const std::function<void()>& work);
  void RunUntil(const std::function<bool()>& done) override;
  void Quit() override;
  void SetWaiting(bool waiting) override;

  /// True while the hourglass pointer is to be shown.
  bool Waiting() const { return waiting_ > 0; }
  /// Shows the hourglass if it is to be shown; a window answers WM_SETCURSOR with the result.
  bool ShowPointer() const;

  /// Runs `work`; an exception goes to the fault sink.
  void Guard(const std::function<void()>& work) const noexcept;

  /// The one added last sees a message first.
  void AddFilter(MessageFilter& filter) { filters_.insert(filters_.begin(), &filter); }
  void RemoveFilter(MessageFilter& filter) { std::erase(filters_, &filter); }

 private:
  void Start(ui::Timer& timer) override;
  void Stop(ui::Timer& timer) override;
  /// Waits for the next message; no at the end of the loop.
  static bool Next(MSG& message);
  void Handle(MSG& message);
  void KeepQuit(const MSG& message);
  bool Receive(UINT message, WPARAM wParam);
  void RunPosted();

  FaultSink onFault_;
  MessageWindow window_;
  std::deque<std::function<void()>> posted_;
  std::map<UINT_PTR, ui::Timer*> timers_;
  UINT_PTR lastTimer_ = 0;
  std::vector<MessageFilter*> filters_;
  int waiting_ = 0;
  bool quitting_ = false;
};

}  // namespace win32
