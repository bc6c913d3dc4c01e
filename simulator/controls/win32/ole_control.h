// One of the maker's controls as an ActiveX control: its window in the container's window, its members as
// IDispatch, its event. Created by the class factory, owned by its container.
#pragma once

#include <memory>

#include "automation/object.h"
#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/toolkit.h"
#include "simulator/controls/makers_control.h"
#include "simulator/controls/win32/event_source.h"
#include "simulator/controls/win32/ole_parts.h"

namespace simcontrols {

/// Number of the library's TYPELIB resource.
inline constexpr int kTypeLibrary = 1;

struct MadeControl {
  std::shared_ptr<controls::MakersControl> control;
  automation::Object members;  // the same control
};

/// One class of the library; lives as long as the library.
struct ControlClass {
  GUID classId;
  GUID interfaceId;  // of its members, in the type library
  std::string programId;
  std::string name;
  MadeControl (*make)();
};

class OleControl : public OleParts {
 public:
  OleControl(const ControlClass& controlClass, const MadeControl& made);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;

  // --- IOleObject ---
  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
  HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
  HRESULT STDMETHODCALLTYPE Close(DWORD) override { return InPlaceDeactivate(); }
  HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) override;
  HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* id) override { return GetClassID(id); }
  HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* size) override;
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* size) override;
  HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;

  // --- IViewObject2 ---
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) override {
    return GetExtent(aspect, size);
  }

  // --- IOleInPlaceObject, IOleInPlaceActiveObject ---
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
  HRESULT STDMETHODCALLTYPE UIDeactivate() override;
  HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override;
  /// Tab within the control; at its ends the container goes on.
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;

  // --- IPersistStreamInit ---
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override;

  // --- IConnectionPointContainer, IProvideClassInfo2 ---
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

  // --- IDispatch ---
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return members_->GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return members_->GetTypeInfo(index, locale, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return members_->GetIDsOfNames(id, names, count, locale, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

 private:
  ~OleControl() override;

  HWND Window() const { return toolkit_.HandleOf(control_->GetWindow()); }
  HRESULT Activate(bool withKeys);
  void TakeKeys(const win32::ComPtr<IOleInPlaceSite>& place);

  const ControlClass& class_;
  win32::MessageLoop loop_;
  win32::NativeToolkit toolkit_{loop_};
  std::shared_ptr<controls::MakersControl> control_;
  win32::ComPtr<IDispatch> members_;
  win32::ComPtr<EventSource> events_;
  win32::ComPtr<IOleClientSite> site_;
  SIZEL extent_;  // hundredths of a millimetre
  bool hasKeys_ = false;
};

}  // namespace simcontrols
