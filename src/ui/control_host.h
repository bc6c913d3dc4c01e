// Creates controls of another maker (ActiveX controls) by their program id inside a window of the tool. A
// port: implemented by the Windows edge with the system's own control container.
#pragma once

#include <functional>
#include <string>

#include "automation/object.h"
#include "ui/control.h"

namespace ui {

class ControlHost {
 public:
  virtual ~ControlHost() = default;
  /// Creates the control in the native window of `site`, which belongs to a realised window, and gives its
  /// automation object. `onFailed` hears the control's event Failed(text). Throws automation::Error naming
  /// the program id when the control is not registered or refuses.
  virtual automation::Object Create(ControlSite& site, const std::string& programId,
                                    std::function<void(const std::string&)> onFailed) = 0;
  /// Throws automation::Error naming the program id when no control of it is registered on the machine.
  virtual void Check(const std::string& programId) = 0;
  /// Destroys the control again; harmless when there is none. Discarding the window does the same.
  virtual void Destroy(ControlSite& site) = 0;
};

}  // namespace ui
