#include "simulator/controls/win32/ole_control.h"

// After windows.h, which it needs.
#include <olectl.h>

#include "SimControls.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/type_library.h"

namespace simcontrols {
namespace {

constexpr SIZEL kUsualExtent = {9000, 5000};

win32::ComPtr<ITypeInfo> InfoOf(const GUID& id) {
  win32::ComPtr<ITypeInfo> info;
  if (const auto library = win32::OwnTypeLibrary(kTypeLibrary)) library->GetTypeInfoOfGuid(id, info.Put());
  return info;
}

void MoveTo(HWND window, const RECT& place) {
  SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

OleControl::OleControl(const ControlClass& controlClass, const MadeControl& made)
    : class_(controlClass),
      loop_([this](const std::string& text) { events_->RaiseFailed(text); }),
      control_(made.control),
      members_(win32::ToDispatch(made.members, InfoOf(class_.interfaceId).Get())),
      events_(new EventSource(*this)),
      extent_(kUsualExtent) {
  control_->onFailed = [this](const std::string& text) { events_->RaiseFailed(text); };
}

OleControl::~OleControl() {
  toolkit_.Discard(control_->GetWindow());
  events_->Detach();
  control_->onFailed = nullptr;
}

HRESULT OleControl::QueryInterface(REFIID id, void** object) {
  // The older interface of each of these is the first part of the newer one.
  if (id == __uuidof(IOleWindow)) return OleParts::QueryInterface(__uuidof(IOleInPlaceObject), object);
  if (id == __uuidof(IViewObject)) return OleParts::QueryInterface(__uuidof(IViewObject2), object);
  if (id == __uuidof(IPersist)) return OleParts::QueryInterface(__uuidof(IPersistStreamInit), object);
  if (id == __uuidof(IProvideClassInfo))
    return OleParts::QueryInterface(__uuidof(IProvideClassInfo2), object);
  if (id == class_.interfaceId) return OleParts::QueryInterface(__uuidof(IDispatch), object);
  return OleParts::QueryInterface(id, object);
}

HRESULT OleControl::SetClientSite(IOleClientSite* site) {
  site_ = win32::ComPtr<IOleClientSite>::Share(site);
  return S_OK;
}

HRESULT OleControl::GetClientSite(IOleClientSite** site) {
  if (!site) return E_POINTER;
  *site = win32::ComPtr<IOleClientSite>::Share(site_.Get()).Release();
  return S_OK;
}

HRESULT OleControl::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) {
  switch (verb) {
    case OLEIVERB_HIDE:
      return InPlaceDeactivate();
    case OLEIVERB_PRIMARY:
    case OLEIVERB_SHOW:
    case OLEIVERB_UIACTIVATE:
      return Activate(true);
    case OLEIVERB_INPLACEACTIVATE:
      return Activate(false);
    default:
      return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
  }
}

HRESULT OleControl::Activate(bool withKeys) {
  const auto place = site_.As<IOleInPlaceSite>();
  if (!place) return E_FAIL;
  if (!Window()) {
    HWND parent = nullptr;
    win32::ComPtr<IOleInPlaceFrame> frame;
    win32::ComPtr<IOleInPlaceUIWindow> around;
    RECT area = {};
    RECT clip = {};
    OLEINPLACEFRAMEINFO info = {};
    info.cb = sizeof info;
    if (place->CanInPlaceActivate() != S_OK || FAILED(place->GetWindow(&parent))) return E_FAIL;
    place->OnInPlaceActivate();
    place->GetWindowContext(frame.Put(), around.Put(), &area, &clip, &info);
    try {
      toolkit_.Discard(control_->GetWindow());  // what a container left behind that did not deactivate
      toolkit_.RealizeInside(control_->GetWindow(), parent);
    } catch (const std::exception&) {
      place->OnInPlaceDeactivate();
      return E_FAIL;
    }
    MoveTo(Window(), area);
    site_->ShowObject();
  }
  if (withKeys) TakeKeys(place);
  return S_OK;
}

void OleControl::TakeKeys(const win32::ComPtr<IOleInPlaceSite>& place) {
  if (!hasKeys_) place->OnUIActivate();
  hasKeys_ = true;
  if (!IsChild(Window(), GetFocus())) SetFocus(Window());
}

HRESULT OleControl::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = Window();
  return *window ? S_OK : E_FAIL;
}

HRESULT OleControl::InPlaceDeactivate() {
  if (!Window()) return S_OK;
  UIDeactivate();
  toolkit_.Discard(control_->GetWindow());
  if (const auto place = site_.As<IOleInPlaceSite>()) place->OnInPlaceDeactivate();
  return S_OK;
}

HRESULT OleControl::UIDeactivate() {
  if (!hasKeys_) return S_OK;
  hasKeys_ = false;
  if (const auto place = site_.As<IOleInPlaceSite>()) place->OnUIDeactivate(FALSE);
  return S_OK;
}

HRESULT OleControl::SetObjectRects(LPCRECT place, LPCRECT) {
  if (!place) return E_POINTER;
  if (const HWND window = Window()) MoveTo(window, *place);
  return S_OK;
}

HRESULT OleControl::TranslateAccelerator(LPMSG message) {
  if (!message) return E_POINTER;
  const HWND window = Window();
  const HWND focus = GetFocus();
  if (message->message != WM_KEYDOWN || message->wParam != VK_TAB || !window || !IsChild(window, focus))
    return S_FALSE;
  const HWND first = GetNextDlgTabItem(window, nullptr, FALSE);
  const bool leaves =
      GetKeyState(VK_SHIFT) < 0 ? focus == first : GetNextDlgTabItem(window, focus, FALSE) == first;
  return !leaves && IsDialogMessageW(window, message) ? S_OK : S_FALSE;
}

HRESULT OleControl::SetExtent(DWORD aspect, SIZEL* size) {
  if (!size) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  extent_ = *size;
  return S_OK;
}

HRESULT OleControl::GetExtent(DWORD aspect, SIZEL* size) {
  if (!size) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *size = extent_;
  return S_OK;
}

HRESULT OleControl::GetMiscStatus(DWORD, DWORD* status) {
  if (!status) return E_POINTER;
  *status = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
            OLEMISC_SETCLIENTSITEFIRST;
  return S_OK;
}

HRESULT OleControl::GetClassID(CLSID* id) {
  if (!id) return E_POINTER;
  *id = class_.classId;
  return S_OK;
}

HRESULT OleControl::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (id != DIID__ControlEvents) return CONNECT_E_NOCONNECTION;
  *point = win32::ComPtr<EventSource>::Share(events_.Get()).Release();
  return S_OK;
}

HRESULT OleControl::GetClassInfo(ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = InfoOf(class_.classId).Release();
  return *info ? S_OK : E_FAIL;
}

HRESULT OleControl::GetGUID(DWORD kind, GUID* id) {
  if (!id) return E_POINTER;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *id = DIID__ControlEvents;
  return S_OK;
}

HRESULT OleControl::Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                           VARIANT* result, EXCEPINFO* exception, UINT* argument) {
  // The container may let go of the control in the event that a call raises.
  const auto keep = win32::ComPtr<IOleObject>::Share(this);
  return members_->Invoke(id, reserved, locale, flags, parameters, result, exception, argument);
}

}  // namespace simcontrols
