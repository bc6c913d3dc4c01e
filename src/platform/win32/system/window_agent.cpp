#include "platform/win32/system/window_agent.h"

#include <windows.h>

#include "platform/win32/system/handle.h"
#include "platform/win32/system/own_window.h"

namespace win32 {
namespace {

constexpr const wchar_t* kMarkProperty = L"TarnPublished";
constexpr UINT kAnswerTime = 5000;  // milliseconds

HWND WindowOf(std::int32_t window) { return static_cast<HWND>(LongToHandle(window)); }

BOOL CALLBACK FindVisible(HWND window, LPARAM found) {
  if (!IsWindowVisible(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// The keyboard can be given to a window of another thread only while both share their input.
class SharedInput {
 public:
  explicit SharedInput(HWND window) : other_(GetWindowThreadProcessId(window, nullptr)) {
    if (other_ == GetCurrentThreadId() || !AttachThreadInput(GetCurrentThreadId(), other_, TRUE)) other_ = 0;
  }
  SharedInput(const SharedInput&) = delete;
  SharedInput& operator=(const SharedInput&) = delete;
  ~SharedInput() {
    if (other_) AttachThreadInput(GetCurrentThreadId(), other_, FALSE);
  }

 private:
  DWORD other_;
};

using MappedView = Owner<void*, Calls<UnmapViewOfFile>>;

class PagedSection : public plugin::SharedSection {
 public:
  PagedSection(win32::Handle section, MappedView view)
      : section_(std::move(section)), view_(std::move(view)) {}

  std::uintptr_t Handle() const override { return reinterpret_cast<std::uintptr_t>(section_.Get()); }
  void* View() const override { return view_.Get(); }
  bool Unmap() override {
    if (!UnmapViewOfFile(view_.Get())) return false;
    view_.Release();
    section_.Reset();
    return true;
  }

 private:
  win32::Handle section_;
  MappedView view_;  // ends before its section
};

std::size_t MappedBytes(void* view) {
  MEMORY_BASIC_INFORMATION region = {};
  return VirtualQuery(view, &region, sizeof region) ? region.RegionSize : 0;
}

}  // namespace

void NativeDesktop::Mark(std::int32_t window, std::int32_t mark) {
  if (mark == 0) {
    RemovePropW(WindowOf(window), kMarkProperty);
  } else {
    SetPropW(WindowOf(window), kMarkProperty, LongToHandle(mark));
  }
}

plugin::Sight NativeDesktop::Look(std::int32_t window, std::int32_t mark) {
  HWND there = WindowOf(window);
  if (GetPropW(there, kMarkProperty) != LongToHandle(mark)) return plugin::Sight::kGone;
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutW(there, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kAnswerTime, &answer))
    return IsWindow(there) ? plugin::Sight::kSilent : plugin::Sight::kGone;
  return IsZoomed(there) ? plugin::Sight::kMaximized : plugin::Sight::kNormal;
}

void NativeDesktop::Show(std::int32_t window, int command) { ShowWindow(WindowOf(window), command); }

void NativeDesktop::SetTopmost(std::int32_t window, bool topmost) {
  SetWindowPos(WindowOf(window), topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE);
}

// A program may bring a window to the front only with the leave of the one that the user works with.
void NativeDesktop::RaiseLoading(std::int32_t window) {
  DWORD process = 0;
  const DWORD thread = GetWindowThreadProcessId(WindowOf(window), &process);
  AllowSetForegroundWindow(process);
  HWND shown = nullptr;
  EnumThreadWindows(thread, FindVisible, reinterpret_cast<LPARAM>(&shown));
  if (shown) Activate(HandleToLong(shown));
}

void NativeDesktop::Activate(std::int32_t window) {
  HWND there = WindowOf(window);
  SetForegroundWindow(there);
  BringWindowToTop(there);
  HWND receiver = EnabledOver(there);
  if (receiver != there) SetForegroundWindow(receiver);
  const SharedInput input(receiver);
  SetFocus(receiver);
}

std::unique_ptr<plugin::SharedSection> PagedMemory::Open(std::int32_t size, const std::string& name) {
  denied_ = false;
  if (size <= 0) return nullptr;
  Handle section(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                    static_cast<DWORD>(size), Wide(name).c_str()));
  // "CreateFileMappingW" of the platform's documentation: the name exists, and its owner lets only others in.
  // So it is with what a program with administrator's rights made.
  denied_ = !section && GetLastError() == ERROR_ACCESS_DENIED;
  if (!section) return nullptr;
  MappedView view(MapViewOfFile(section.Get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
  if (!view || MappedBytes(view.Get()) < static_cast<std::size_t>(size)) return nullptr;
  return std::make_unique<PagedSection>(std::move(section), std::move(view));
}

}  // namespace win32
