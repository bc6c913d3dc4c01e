#include "platform/win32/com/client_watch.h"

#include <map>
#include <set>

// Needs windows.h before it.
#include <tlhelp32.h>

#include "platform/win32/system/own_window.h"

namespace win32 {
namespace {

constexpr UINT kProcessEnded = WM_APP;

DWORD ProcessOfThread(DWORD threadId) {
  const Handle thread(OpenThread(THREAD_QUERY_LIMITED_INFORMATION, FALSE, threadId));
  return thread ? GetProcessIdOfThread(thread.Get()) : 0;
}

struct EndWait {
  void operator()(HANDLE wait) const { UnregisterWaitEx(wait, INVALID_HANDLE_VALUE); }
};

/// Posts kProcessEnded to a window when the process has ended.
class WatchedProcess {
 public:
  WatchedProcess(const MessageWindow& window, DWORD id, Handle process)
      : window_(window), id_(id), process_(std::move(process)) {
    RegisterWaitForSingleObject(wait_.Put(), process_.Get(), &WatchedProcess::OnEnd, this, INFINITE,
                                WT_EXECUTEONLYONCE);
  }
  WatchedProcess(const WatchedProcess&) = delete;
  WatchedProcess& operator=(const WatchedProcess&) = delete;

 private:
  static void CALLBACK OnEnd(void* self, BOOLEAN) {
    const auto* watched = static_cast<WatchedProcess*>(self);
    watched->window_.Post(kProcessEnded, watched->id_);
  }

  const MessageWindow& window_;
  DWORD id_;
  Handle process_;
  Owner<HANDLE, EndWait> wait_;  // ended before the process handle is closed
};

// --- for Wine alone ---
// There the client itself starts the server, and calls do not tell who makes them.

DWORD ParentProcess() {
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  const DWORD self = GetCurrentProcessId();
  for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more;
       more = Process32NextW(snapshot.Get(), &entry)) {
    if (entry.th32ProcessID == self) return entry.th32ParentProcessID;
  }
  return 0;
}

// ---

}  // namespace

class ClientWatch::Impl {
 public:
  explicit Impl(std::function<void()> onAllGone)
      : onAllGone_(std::move(onAllGone)), window_([this](UINT message, WPARAM id, LPARAM) {
          if (message == kProcessEnded) OnEnded(static_cast<DWORD>(id));
          return message == kProcessEnded;
        }) {
    WatchParent();
  }

  void NoteCaller(DWORD threadId) {
    if (!seenThreads_.insert(threadId).second) return;
    const DWORD process = ProcessOfThread(threadId);
    if (process == 0 || process == GetCurrentProcessId()) return;
    if (Watch(process)) ForgetParent(process);
  }

 private:
  /// False when the process is not to be watched: a part of the system, or one that has ended.
  bool Watch(DWORD id) {
    if (id == 0) return false;
    if (watched_.contains(id)) return true;
    Handle process(OpenProcess(SYNCHRONIZE, FALSE, id));
    if (process) {
      watched_.try_emplace(id, window_, id, std::move(process));
      return true;
    }
    // It ended before it could be watched.
    if (GetLastError() == ERROR_INVALID_PARAMETER) window_.Post(kProcessEnded, id);
    return false;
  }

  void OnEnded(DWORD id) {
    watched_.erase(id);
    seenThreads_.clear();  // thread ids are used again
    if (watched_.empty()) onAllGone_();
  }

  // --- for Wine alone, see ParentProcess ---
  void WatchParent() {
    parent_ = ParentProcess();
    if (!Watch(parent_)) parent_ = 0;
  }
  /// `client` is known from its calls.
  void ForgetParent(DWORD client) {
    if (parent_ == client) return;
    watched_.erase(parent_);
    parent_ = 0;
  }
  DWORD parent_ = 0;
  // ---

  std::function<void()> onAllGone_;
  MessageWindow window_;
  std::map<DWORD, WatchedProcess> watched_;
  std::set<DWORD> seenThreads_;
};

ClientWatch::ClientWatch(ComApartment& apartment, std::function<void()> onAllGone)
    : apartment_(apartment), impl_(std::make_unique<Impl>(std::move(onAllGone))) {
  apartment_.WatchIncoming([this](DWORD callerThread) { impl_->NoteCaller(callerThread); });
}

ClientWatch::~ClientWatch() { apartment_.WatchIncoming(nullptr); }

}  // namespace win32
