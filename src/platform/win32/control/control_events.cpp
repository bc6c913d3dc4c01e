#include "platform/win32/control/control_events.h"

#include "platform/win32/com/com_class.h"
#include "platform/win32/com/variant.h"

namespace win32 {
namespace {

constexpr wchar_t kEventName[] = L"Failed";
constexpr MEMBERID kFirstEvent = 1;

/// The interface that the control calls its events on by default; none when it does not tell.
IID EventsOf(const ComPtr<IUnknown>& control) {
  IID id = {};
  const auto provider = control.As<IProvideClassInfo2>();
  if (provider) provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id);
  return id;
}

/// The number of the event in the control's type library. A control without one is taken to have one event.
MEMBERID NumberOf(const ComPtr<IUnknown>& control, const IID& events) {
  const auto provider = control.As<IProvideClassInfo>();
  ComPtr<ITypeInfo> classInfo;
  ComPtr<ITypeLib> library;
  ComPtr<ITypeInfo> eventInfo;
  UINT place = 0;
  if (!provider || FAILED(provider->GetClassInfo(classInfo.Put()))) return kFirstEvent;
  if (FAILED(classInfo->GetContainingTypeLib(library.Put(), &place))) return kFirstEvent;
  if (FAILED(library->GetTypeInfoOfGuid(events, eventInfo.Put()))) return kFirstEvent;
  std::wstring name = kEventName;
  LPOLESTR names[] = {name.data()};
  MEMBERID number = MEMBERID_NIL;
  eventInfo->GetIDsOfNames(names, 1, &number);
  return number;
}

class Sink : public ComClass<IDispatch> {
 public:
  Sink(MessageLoop& loop, const IID& events, MEMBERID number,
       std::function<void(const std::string&)> onFailed)
      : loop_(loop), events_(events), number_(number), onFailed_(std::move(onFailed)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    return ComClass::QueryInterface(id == events_ ? __uuidof(IDispatch) : id, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    if (id != number_ || !parameters || parameters->cArgs == 0) return S_OK;
    // The handler may let go of the control and so of this object.
    const auto handler = onFailed_;
    const VARIANT& text = parameters->rgvarg[parameters->cArgs - 1];
    if (handler) loop_.Guard([&] { handler(ToValue(text).AsText()); });
    return S_OK;
  }

 private:
  MessageLoop& loop_;
  IID events_;
  MEMBERID number_;
  std::function<void(const std::string&)> onFailed_;
};

}  // namespace

FailedEvent::FailedEvent(MessageLoop& loop, const ComPtr<IUnknown>& control,
                         std::function<void(const std::string&)> onFailed) {
  const IID events = EventsOf(control);
  const auto container = control.As<IConnectionPointContainer>();
  if (!container || FAILED(container->FindConnectionPoint(events, point_.Put()))) return;
  const ComPtr<Sink> sink(new Sink(loop, events, NumberOf(control, events), std::move(onFailed)));
  if (FAILED(point_->Advise(sink.Get(), &cookie_))) point_.Reset();
}

FailedEvent::~FailedEvent() {
  if (point_) point_->Unadvise(cookie_);
}

}  // namespace win32
