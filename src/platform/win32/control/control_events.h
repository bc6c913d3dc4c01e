// Listening to the one event that the tool wants of another maker's control: Failed(text). Used by the
// control host.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>

#include <functional>
#include <string>

#include "platform/win32/system/handle.h"
#include "platform/win32/window/message_loop.h"

namespace win32 {

/// Keeps the connection for its life. A control that has no events is not listened to.
class FailedEvent {
 public:
  FailedEvent(MessageLoop& loop, const ComPtr<IUnknown>& control,
              std::function<void(const std::string&)> onFailed);
  FailedEvent(const FailedEvent&) = delete;
  FailedEvent& operator=(const FailedEvent&) = delete;
  ~FailedEvent();

 private:
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace win32
