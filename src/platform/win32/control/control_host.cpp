#include "platform/win32/control/control_host.h"

// After windows.h, which it needs.
#include <commctrl.h>
#include <ocidl.h>
#include <ole2.h>

#include <bit>
#include <utility>

#include <fmt/format.h>

#include "automation/error.h"
#include "platform/win32/com/com_class.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/control/kinds.h"
#include "platform/win32/system/own_window.h"
#include "platform/win32/system/registry.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/form_native.h"

namespace win32 {
namespace {

constexpr int kOtherBits = sizeof(void*) == 8 ? 32 : 64;
constexpr const wchar_t* kContainerClass = L"AtlAxWin";

/// The container's functions. The library is there on every system, but the compiler's libraries do not name
/// it for all machines; it stays loaded, because it registers window classes.
struct Container {
  HRESULT(WINAPI* create)(LPCOLESTR, HWND, IStream*, IUnknown**) = nullptr;
  HRESULT(WINAPI* control)(HWND, IUnknown**) = nullptr;

  Container() {
    const HMODULE library = LoadLibraryExW(L"atl.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!library) return;
    BOOL(WINAPI * init)() = nullptr;
    Find(library, "AtlAxWinInit", init);
    Find(library, "AtlAxCreateControl", create);
    Find(library, "AtlAxGetControl", control);
    // Once only: a second call answers no on some systems.
    ready_ = init && create && control && init();
  }

  bool Ready() const { return ready_; }

 private:
  template <class Function>
  static void Find(HMODULE library, const char* name, Function& function) {
    function = std::bit_cast<Function>(GetProcAddress(library, name));
  }

  bool ready_ = false;
};

[[noreturn]] void Fail(const std::string& programId, HRESULT result) {
  const auto code = static_cast<std::uint32_t>(result);
  if (result == CO_E_CLASSSTRING || result == REGDB_E_CLASSNOTREG)
    throw automation::Error(
        code, fmt::format("The control \"{}\" is not registered on this machine (error 0x{:08X}).", programId,
                          code));
  throw automation::Error(
      code, fmt::format("The control \"{}\" could not be created: {}", programId, SystemText(result)));
}

void Require(const std::string& programId, HRESULT result) {
  if (FAILED(result)) Fail(programId, result);
}

/// A library is loaded only into programs of its own width, and the system keeps the classes of each width
/// apart ("Registry Keys Affected by WOW64" of the platform's documentation), while it shares the program
/// ids.
void RequireOwnWidth(const std::string& programId, const CLSID& classId) {
  const HKEY hive = HKEY_CLASSES_ROOT;
  const std::string key = "CLSID\\" + GuidText(classId);
  const std::string library = key + "\\InprocServer32";
  if (HasKey(RegistryView::kOwn, hive, library) || HasKey(RegistryView::kOwn, hive, key + "\\LocalServer32"))
    return;
  if (!HasKey(RegistryView::kOther, hive, library)) Fail(programId, REGDB_E_CLASSNOTREG);
  throw automation::Error(static_cast<std::uint32_t>(REGDB_E_CLASSNOTREG),
                          fmt::format("The control \"{}\" is a {}-bit control; use the {}-bit tool.",
                                      programId, kOtherBits, kOtherBits));
}

const Container& GetContainer(const std::string& programId) {
  static const Container container;
  if (!container.Ready()) {
    throw automation::Error(
        automation::kApplicationDefined,
        fmt::format("The control \"{}\" could not be created: the system's control container "
                    "(atl.dll) cannot be used.",
                    programId));
  }
  return container;
}

/// A control window that has no steps of its own is one step; the container is one for a control without a
/// window.
void JoinTabOrder(const ComPtr<IUnknown>& control, HWND container) {
  const auto place = control.As<IOleInPlaceObject>();
  HWND window = nullptr;
  if (!place) return;
  if (FAILED(place->GetWindow(&window)) || !window || window == container) {
    const LONG_PTR style = GetWindowLongPtrW(container, GWL_EXSTYLE);
    SetWindowLongPtrW(container, GWL_EXSTYLE, style & ~static_cast<LONG_PTR>(WS_EX_CONTROLPARENT));
    window = container;
  }
  if (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) return;
  SetWindowLongPtrW(window, GWL_STYLE, GetWindowLongPtrW(window, GWL_STYLE) | WS_TABSTOP);
}

// --- the one event that the tool wants of such a control: Failed(text) ---

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

/// Keeps the connection for its life. A control that has no events is not listened to.
class FailedEvent {
 public:
  FailedEvent(MessageLoop& loop, const ComPtr<IUnknown>& control,
              std::function<void(const std::string&)> onFailed) {
    const IID events = EventsOf(control);
    const auto container = control.As<IConnectionPointContainer>();
    if (!container || FAILED(container->FindConnectionPoint(events, point_.Put()))) return;
    const ComPtr<Sink> sink(new Sink(loop, events, NumberOf(control, events), std::move(onFailed)));
    if (FAILED(point_->Advise(sink.Get(), &cookie_))) point_.Reset();
  }
  FailedEvent(const FailedEvent&) = delete;
  FailedEvent& operator=(const FailedEvent&) = delete;
  ~FailedEvent() {
    if (point_) point_->Unadvise(cookie_);
  }

 private:
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

// --- the place: an empty window, whose one child always fills it ---

constexpr const wchar_t* kSiteClass = L"TarnControlSite";

class NativeControlSite : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override {
    const auto& site = static_cast<const ui::ControlSite&>(Control());
    return {Metrics().X(site.Width()), Metrics().Y(site.Height())};
  }

 private:
  Style GetStyle() const override {
    RegisterWindowClass(kSiteClass, &DefWindowProcW);
    return {kSiteClass, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
  }

  std::optional<LRESULT> Filter(UINT message, WPARAM, LPARAM lParam) override {
    const HWND inside = GetWindow(Window(), GW_CHILD);
    if (inside && message == WM_SIZE) {
      SetWindowPos(inside, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // The site itself does nothing with the keys.
    if (inside && message == WM_SETFOCUS) SetFocus(GetNextDlgTabItem(Window(), nullptr, FALSE));
    return std::nullopt;
  }
};

}  // namespace

struct ActiveXHost::Hosted {
  ActiveXHost* host;
  ComPtr<IOleInPlaceActiveObject> keys;
  std::unique_ptr<FailedEvent> failed;
};

ActiveXHost::ActiveXHost(NativeToolkit& toolkit, MessageLoop& loop) : toolkit_(toolkit), loop_(loop) {
  loop_.AddFilter(*this);
}

ActiveXHost::~ActiveXHost() {
  loop_.RemoveFilter(*this);
  while (!hosted_.empty()) {
    const HWND window = hosted_.begin()->first;
    DestroyWindow(window);
    hosted_.erase(window);
  }
}

automation::Object ActiveXHost::Create(ui::ControlSite& site, const std::string& programId,
                                       std::function<void(const std::string&)> onFailed) {
  const Container& container = GetContainer(programId);
  Check(programId);
  const HWND place = toolkit_.HandleOf(site);
  if (!place) Fail(programId, OLE_E_INVALIDHWND);
  Destroy(site);

  RECT area = {};
  GetClientRect(place, &area);
  // The text of such a window would be taken for the name of a control.
  WindowHandle window(CreateWindowExW(WS_EX_CONTROLPARENT, kContainerClass, L"",
                                      WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, area.right, area.bottom,
                                      place, nullptr, ThisModule(), nullptr));
  if (!window) Fail(programId, HRESULT_FROM_WIN32(GetLastError()));
  ComPtr<IUnknown> around;
  Require(programId, container.create(Wide(programId).c_str(), window.Get(), nullptr, around.Put()));
  ComPtr<IUnknown> control;
  Require(programId, container.control(window.Get(), control.Put()));
  const auto dispatch = control.As<IDispatch>();
  if (!dispatch) Fail(programId, E_NOINTERFACE);
  JoinTabOrder(control, window.Get());

  auto hosted = std::make_unique<Hosted>();
  hosted->host = this;
  hosted->keys = control.As<IOleInPlaceActiveObject>();
  hosted->failed = std::make_unique<FailedEvent>(loop_, control, std::move(onFailed));
  SetWindowSubclass(window.Get(), &Subclass, 0, reinterpret_cast<DWORD_PTR>(hosted.get()));
  hosted_[window.Release()] = std::move(hosted);
  return FromDispatch(dispatch.Get());
}

void ActiveXHost::Check(const std::string& programId) {
  CLSID classId;
  Require(programId, CLSIDFromProgID(Wide(programId).c_str(), &classId));
  RequireOwnWidth(programId, classId);
}

void ActiveXHost::Destroy(ui::ControlSite& site) {
  const HWND place = toolkit_.HandleOf(site);
  const HWND window = place ? GetWindow(place, GW_CHILD) : nullptr;
  if (window && hosted_.contains(window)) DestroyWindow(window);
}

bool ActiveXHost::Translate(MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  for (const auto& [window, hosted] : hosted_) {
    // A control without a window of its own has the container's.
    if (!hosted->keys || (message.hwnd != window && !IsChild(window, message.hwnd))) continue;
    if (!IsWindowEnabled(GetAncestor(window, GA_ROOT))) return false;
    // The control may be destroyed by what the key does.
    const auto keys = ComPtr<IOleInPlaceActiveObject>::Share(hosted->keys.Get());
    return keys->TranslateAccelerator(&message) == S_OK;
  }
  return false;
}

// The container closes the control when its window is destroyed, whoever destroys it.
LRESULT CALLBACK ActiveXHost::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR self) {
  if (message == WM_DESTROY) {
    RemoveWindowSubclass(window, &Subclass, 0);
    reinterpret_cast<Hosted*>(self)->host->hosted_.erase(window);
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

std::unique_ptr<NativeControl> MakeControlSite(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeControlSite>(form, control);
}

}  // namespace win32
