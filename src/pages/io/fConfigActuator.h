// The actuator configuration dialog: the signal that drives the actuator behind one hardware output. Opened
// by the outputs page.
#pragma once

#include "pages/io/config_dialog.h"

namespace pages {

class fConfigActuator final : public ConfigDialog {
 public:
  explicit fConfigActuator(const shell::PageContext& context)
      : ConfigDialog("fConfigActuator", "Actuator Configuration", Writes::kAlways, kControls, context) {}

  std::string OutputSignal;  // "DIGITAL", "PWM" or "ANALOG_0_10V"

 private:
  static constexpr EditingControl kControls[] = {
      {"ctlConfigActuator1", "MVConfigActuator.ctlConfigActuator", 240, 120},
  };

  std::string ControlArgument() const override { return OutputSignal; }
};

}  // namespace pages
