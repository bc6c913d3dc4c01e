#include "simulator/controls/win32/event_source.h"

// After windows.h, which it needs.
#include <olectl.h>

#include <vector>

#include "SimControls.h"

namespace simcontrols {
namespace {

constexpr DISPID kFailed = 1;

}  // namespace

void EventSource::Detach() {
  control_ = nullptr;
  listeners_.clear();
}

void EventSource::RaiseFailed(const std::string& text) {
  // A listener may leave while it is told.
  std::vector<win32::ComPtr<IDispatch>> told;
  for (const auto& [cookie, listener] : listeners_)
    told.push_back(win32::ComPtr<IDispatch>::Share(listener.Get()));
  const win32::Bstr sentence(text);
  for (const auto& listener : told) {
    VARIANT argument = {};
    argument.vt = VT_BSTR;
    argument.bstrVal = sentence.Get();
    DISPPARAMS parameters = {&argument, nullptr, 1, 0};
    listener->Invoke(kFailed, GUID{}, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                     nullptr);
  }
}

HRESULT EventSource::GetConnectionInterface(IID* id) {
  if (!id) return E_POINTER;
  *id = DIID__ControlEvents;
  return S_OK;
}

HRESULT EventSource::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = control_;
  if (!control_) return E_UNEXPECTED;
  control_->AddRef();
  return S_OK;
}

HRESULT EventSource::Advise(IUnknown* listener, DWORD* cookie) {
  if (!listener || !cookie) return E_POINTER;
  *cookie = 0;
  // Some listeners answer for the event interface alone.
  void* found = nullptr;
  if (FAILED(listener->QueryInterface(DIID__ControlEvents, &found)) &&
      FAILED(listener->QueryInterface(__uuidof(IDispatch), &found))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  *cookie = ++lastCookie_;
  listeners_[*cookie] = win32::ComPtr<IDispatch>(static_cast<IDispatch*>(found));
  return S_OK;
}

HRESULT EventSource::Unadvise(DWORD cookie) {
  return listeners_.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
}

}  // namespace simcontrols
