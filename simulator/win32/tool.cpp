#include "simulator/win32/tool.h"

// After windows.h, which it needs.
#include <objbase.h>

#include <algorithm>

#include "base/text.h"
#include "platform/win32/com/com_object.h"
#include "simulator/win32/foreign.h"
#include "simulator/win32/setup.h"
#include "simulator/win32/tool_process.h"

namespace simhost {

// Each tool is a process of its own.
Tool::Tool() {
  const std::vector<DWORD> before = ToolProcesses();
  object_ = win32::CreateObject(kToolProgramId);
  for (const DWORD id : ToolProcesses()) {
    if (std::ranges::find(before, id) == before.end()) process_ = id;
  }
}

void Tool::Prepare(const simulator::Building& building, const simulator::DeviceInfo& device,
                   std::size_t lmoIndex) {
  object_.Put("NetworkName", building.NetworkName());
  object_.Put("NetworkIpAddress", building.IpAddress());
  object_.Put("NetworkIpPort", building.Port());
  object_.Put("NetworkInterfaceName", "VIRTUAL1");
  object_.Put("Remote", true);
  object_.Put("OvxServerVersion", building.ServerVersion());
  object_.Put("FolderName", device.location);
  object_.Put("DeviceName", device.name);
  object_.Put("LmoIndex", std::to_string(lmoIndex));
  object_.Put("DevelopmentProgramId", device.programId);
  deviceName_ = device.name;
}

Tool::Clock::duration Tool::Send(std::int32_t command, std::int32_t objectClass, const std::string& key) {
  // The tool's own process has no right to put its window in front; this one, where the user has just
  // clicked, can give it.
  CoAllowSetForegroundWindow(win32::ComObjectOf(object_).Get(), nullptr);
  const auto start = Clock::now();
  object_.Call("SendCommand", command, objectClass, key);
  const auto end = Clock::now();
  comingUp_ = end - start_;
  for (HWND window : FindForms("fMain")) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == process_) window_ = window;
  }
  if (!object_.Get("Visible").AsBool()) object_.Put("Visible", true);
  return end - start;
}

void Tool::Put(const std::string& property, const automation::Value& value) {
  object_.Put(property, value);
  if (base::EqualsNoCase(property, "Visible")) hiddenByHost_ = !value.AsBool();
}

bool Tool::Closed() const {
  if (!window_ || hiddenByHost_) return false;
  return !IsWindow(window_) || !IsWindowVisible(window_);
}

}  // namespace simhost
