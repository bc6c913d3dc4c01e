#include "platform/win32/control/control_host.h"

// After windows.h, which it needs.
#include <commctrl.h>
#include <ole2.h>

#include <bit>
#include <utility>

#include <fmt/format.h>

#include "automation/error.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/control/control_events.h"
#include "platform/win32/system/registry.h"
#include "platform/win32/system/system_error.h"
#include "platform/win32/system/window_class.h"

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
/// apart
/// ("Registry Keys Affected by WOW64" of the platform's documentation), while it shares the program ids.
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

}  // namespace win32
