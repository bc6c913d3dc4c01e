#include "platform/win32/system/own_window.h"

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

#include "base/error.h"
#include "platform/win32/system/text.h"

// The linker's name for the beginning of the program or library.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace win32 {
namespace {

constexpr const wchar_t* kMessageClass = L"TarnMessages";

std::vector<ATOM>& Given() {
  static std::vector<ATOM> given;
  return given;
}

BOOL CALLBACK FindEnabledOver(HWND window, LPARAM found) {
  HWND& there = *reinterpret_cast<HWND*>(found);
  if (GetWindow(window, GW_OWNER) != there || !IsWindowVisible(window)) return TRUE;
  const HWND receiver = EnabledOver(window);
  if (!IsWindowEnabled(receiver)) return TRUE;
  there = receiver;
  return FALSE;
}

}  // namespace

HINSTANCE ThisModule() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

HWND EnabledOver(HWND window) {
  if (!IsWindowEnabled(window))
    EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), FindEnabledOver,
                      reinterpret_cast<LPARAM>(&window));
  return window;
}

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = ThisModule();
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_3DFACE + 1));
  description.lpszClassName = name;
  RegisterClassExW(&description);
}

WindowName::WindowName(HWND window, std::string_view name)
    : window_(window), atom_(GlobalAddAtomW(Wide(name).c_str())) {
  if (!atom_) return;
  Given().push_back(atom_);
  SetPropW(window_, kNameProperty, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(atom_)));
}

WindowName::~WindowName() {
  RemovePropW(window_, kNameProperty);
  const auto own = std::ranges::find(Given(), atom_);
  if (own == Given().end()) return;
  GlobalDeleteAtom(atom_);
  Given().erase(own);
}

void WindowName::GiveAllBack() {
  for (const ATOM atom : Given()) GlobalDeleteAtom(atom);
  Given().clear();
}

void TellDebugger() noexcept {
  try {
    throw;
  } catch (const std::exception& error) {
    OutputDebugStringA(error.what());
  } catch (...) {
    OutputDebugStringA("Unknown failure");
  }
}

MessageWindow::MessageWindow(Receiver receive) : receive_(std::move(receive)) {
  RegisterWindowClass(kMessageClass, &Procedure);
  window_ = WindowHandle(
      CreateWindowExW(0, kMessageClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ThisModule(), nullptr));
  if (!window_) throw base::Error("A window for messages could not be made: " + LastErrorText());
  SetWindowLongPtrW(Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK MessageWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto* self = reinterpret_cast<const MessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  bool received = false;
  if (self) Guarded([&] { received = self->receive_(message, wParam, lParam); });
  return received ? 0 : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace win32
