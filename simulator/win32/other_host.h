// A second stand-in host, a process of its own that works through a script: so the host of a tool can die or
// hang while this one looks at what the tool does then. Used by the scripts.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/win32/system/handle.h"
#include "simulator/win32/patience.h"

namespace simhost {

/// What a host does to itself in the middle of a call of the tool.
[[noreturn]] void EndOwnProcess();
/// Returns when another process has resumed this one.
void SuspendOwnProcess();

class OtherHost {
 public:
  /// Ends the process if it still runs.
  ~OtherHost();

  /// `settings` are texts "name=text" for the script. Throws base::Error.
  void Start(const std::filesystem::path& script, const std::vector<std::string>& settings);
  void Suspend();
  void Resume();
  /// Waits for the end; throws base::Error when it was not by EndOwnProcess (`killed`), or not with success.
  void WaitEnd(const Patience& patience, bool killed);

 private:
  DWORD id_ = 0;
  win32::Handle process_;
};

}  // namespace simhost
