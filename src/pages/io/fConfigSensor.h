// The sensor configuration dialog: sensor type and network-variable type behind one hardware input. Opened by
// the inputs page.
#pragma once

#include "pages/io/config_dialog.h"

namespace pages {

class fConfigSensor final : public ConfigDialog {
 public:
  explicit fConfigSensor(const shell::PageContext& context)
      : ConfigDialog("fConfigSensor", "Sensor Configuration", Writes::kWhenChanged, kControls, context) {}

  std::string Choice;       // the sensor-choice numbers of the input's function, separated by commas
  std::string InputChoice;  // the input's function

 private:
  static constexpr EditingControl kControls[] = {
      {"ctlSensorNV1", "MVConfigSensor.ctlSensorNV", 260, 46},
      {"ctlSensorHardware1", "MVConfigSensor.ctlSensorHardware", 260, 150},
  };

  std::string ControlArgument() const override { return Choice; }
};

}  // namespace pages
