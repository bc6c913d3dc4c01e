// The configuration tool as its host holds it: the automation object in the tool's process. Made, used and
// released on the host's thread. Its errors are automation::Error with the tool's own text and source.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "automation/object.h"
#include "simulator/building.h"

namespace simhost {

class Tool {
 public:
  /// Starts the tool when it is not running.
  Tool();

  /// Tells the tool which building and which device it is for. `lmoIndex` is the place of the functional
  /// block, from 0.
  void Prepare(const simulator::Building& building, const simulator::DeviceInfo& device,
               std::size_t lmoIndex);

  /// The host's order to come up. Returns when the tool has loaded everything, or brought the window that it
  /// has open on the device already in another process to the front. Answers how long that took.
  std::chrono::steady_clock::duration Send(std::int32_t command, std::int32_t objectClass,
                                           const std::string& key);

  /// From the start of the tool's process to the end of its last Send.
  std::chrono::steady_clock::duration ComingUp() const { return comingUp_; }

  void Put(const std::string& property, const automation::Value& value);
  automation::Value Get(const std::string& property) const { return object_.Get(property); }

  /// The device that Prepare named; empty before.
  const std::string& DeviceName() const { return deviceName_; }

  /// True when Send brought up a window of this tool.
  bool HasWindow() const { return window_ != nullptr; }

  /// True when the window that Send brought up has been closed since. A window that the host itself hid
  /// counts as open.
  bool Closed() const;

 private:
  using Clock = std::chrono::steady_clock;

  Clock::time_point start_ = Clock::now();
  Clock::duration comingUp_{};
  automation::Object object_;
  DWORD process_ = 0;
  std::string deviceName_;
  HWND window_ = nullptr;
  bool hiddenByHost_ = false;
};

}  // namespace simhost
