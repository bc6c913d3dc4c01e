// The event Failed(text) of a control, and everybody who listens to it.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>

#include <map>
#include <string>

#include "platform/win32/com/com_class.h"

namespace simcontrols {

/// Lives as long as the control that it belongs to, or as somebody holds it.
class EventSource : public win32::ComClass<IConnectionPoint> {
 public:
  explicit EventSource(IConnectionPointContainer& control) : control_(&control) {}

  /// The control ends: nobody hears anything any more.
  void Detach();
  void RaiseFailed(const std::string& text);

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* listener, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  IConnectionPointContainer* control_;
  std::map<DWORD, win32::ComPtr<IDispatch>> listeners_;
  DWORD lastCookie_ = 0;
};

}  // namespace simcontrols
