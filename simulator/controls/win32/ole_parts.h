// The interfaces that a container expects of an ActiveX control, with the answers that are the same whatever
// the control shows: nothing is kept by the container, nothing is drawn but by the control's own window, and
// there are no verbs, links, menus or shortcuts. OleControl adds the rest.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <oleidl.h>

#include "platform/win32/com/com_class.h"

namespace simcontrols {

using OleInterfaces =
    win32::ComClass<IOleObject, IOleInPlaceObject, IOleInPlaceActiveObject, IOleControl, IViewObject2,
                    IPersistStreamInit, IConnectionPointContainer, IProvideClassInfo2, IDispatch>;

class OleParts : public OleInterfaces {
 public:
  // --- IOleObject ---
  HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) override { return OLE_S_USEREG; }
  HRESULT STDMETHODCALLTYPE Advise(IAdviseSink*, DWORD*) override { return OLE_E_ADVISENOTSUPPORTED; }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
  HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }
  HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

  // --- IOleInPlaceObject, IOleInPlaceActiveObject ---
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

  // --- IOleControl ---
  HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnMnemonic(MSG*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL) override { return S_OK; }

  // --- IViewObject2 ---
  HRESULT STDMETHODCALLTYPE Draw(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, HDC, LPCRECTL, LPCRECTL,
                                 BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetAdvise(DWORD, DWORD, IAdviseSink*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetAdvise(DWORD*, DWORD*, IAdviseSink**) override { return E_NOTIMPL; }

  // --- IPersistStreamInit: the device keeps the values, the container none ---
  HRESULT STDMETHODCALLTYPE IsDirty() override { return S_FALSE; }
  HRESULT STDMETHODCALLTYPE Load(IStream*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Save(IStream*, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override {
    if (!size) return E_POINTER;
    size->QuadPart = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
};

}  // namespace simcontrols
