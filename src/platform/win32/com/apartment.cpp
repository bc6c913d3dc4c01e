#include "platform/win32/com/apartment.h"

#include <ole2.h>

#include "base/error.h"
#include "platform/win32/com/com_class.h"
#include "platform/win32/system/text.h"

namespace win32 {

class CallFilter : public ComClass<IMessageFilter> {
 public:
  std::function<void(DWORD)> onIncoming;
  CallWatch* watch = nullptr;

  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK caller, DWORD, LPINTERFACEINFO) override {
    if (onIncoming) Guarded([&] { onIncoming(static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(caller))); });
    return SERVERCALL_ISHANDLED;
  }

  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD elapsed, DWORD) override {
    constexpr DWORD kPatience = 10'000;  // milliseconds since the call was made
    constexpr DWORD kPause = 200;        // 100 or more: the system waits as long and repeats the call
    constexpr DWORD kGiveUp = 0xFFFFFFFF;
    return elapsed < kPatience ? kPause : kGiveUp;
  }

  DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override {
    return watch && watch->GivesUp() ? PENDINGMSG_CANCELCALL : PENDINGMSG_WAITDEFPROCESS;
  }
};

ComApartment::ComApartment() {
  const HRESULT result = OleInitialize(nullptr);
  if (FAILED(result)) throw base::Error("COM cannot be used on this thread: " + SystemText(result));
  filter_ = new CallFilter;
  ComPtr<IMessageFilter> previous;
  CoRegisterMessageFilter(filter_, previous.Put());
}

ComApartment::~ComApartment() {
  filter_->onIncoming = nullptr;
  filter_->watch = nullptr;
  ComPtr<IMessageFilter> previous;
  CoRegisterMessageFilter(nullptr, previous.Put());
  filter_->Release();
  OleUninitialize();
}

void ComApartment::WatchIncoming(std::function<void(DWORD)> observer) {
  filter_->onIncoming = std::move(observer);
}

void ComApartment::WatchPending(CallWatch::Handlers handlers) {
  watch_ = std::make_unique<CallWatch>(std::move(handlers));
  filter_->watch = watch_.get();
}

}  // namespace win32
