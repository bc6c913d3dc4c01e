// The running host: the building, the COM classes that show it to the tool, and the tools it has started.
// Everything on the host's thread. The host window and the scripts act through it.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/win32/com/com_server.h"
#include "simulator/building.h"
#include "simulator/win32/options.h"
#include "simulator/win32/tool.h"

namespace simhost {

class Host {
 public:
  /// Opens the building. Throws base::Error naming the file that is wrong.
  explicit Host(const Options& options);

  /// The classes that this program registers and serves.
  std::vector<win32::ServerClass> Classes();

  /// Begins to serve; `onLastRelease` runs when no object of the building is held any more.
  void Serve(std::function<void()> onLastRelease);

  simulator::Building& GetBuilding() { return *building_; }

  /// Objects that are held, and locks.
  int Outstanding() const { return server_ ? server_->Outstanding() : 0; }

  /// Ends the process as if it had been killed, inside whatever call is under way.
  [[noreturn]] void Die();

  /// Opens the building anew, with initial values when the options say so. Objects given out before stay with
  /// the old one, so no tool should run.
  void Reopen();

  /// The device of that name. Throws base::Error.
  simulator::DeviceInfo Device(std::string_view name) const;

  /// Begins to serve and registers its own classes, as far as that was not done. Throws base::Error.
  void BeFound();
  /// As BeFound; then registers what is missing of the tool and starts one, which becomes the current one.
  /// Throws base::Error, automation::Error.
  Tool& StartTool();
  /// Tells the current tool all it must know to configure the device.
  void PrepareTool(const simulator::DeviceInfo& device);
  /// All in one: starts a tool and lets it come up on the device. A tool that refuses is released again, and
  /// so is one that only brought the window of an earlier tool to the front: then the answer is no.
  bool Configure(std::string_view deviceName);

  /// The tool that was started last. Throws base::Error when none is held.
  Tool& CurrentTool();
  void ReleaseTool();
  void ReleaseAllTools() { tools_.clear(); }
  /// Releases the tools whose windows have been closed; yes when there was one.
  bool ReleaseClosedTools();
  bool HasToolFor(std::string_view deviceName) const;

 private:
  Options options_;
  std::unique_ptr<simulator::Building> building_;
  std::unique_ptr<win32::ComServer> server_;
  std::vector<std::unique_ptr<Tool>> tools_;
};

}  // namespace simhost
