// The editor "MVConfigSensor.ctlSensorHardware": which sensor is connected to an input, out of those that its
// choice list allows, and the settings of that sensor.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "simulator/controls/editor.h"
#include "simulator/controls/section.h"

namespace controls {

class SensorHardware : public Editor {
 public:
  SensorHardware();

 private:
  /// `choice` holds the numbers of the sensor choices (2 linear, 3 translation table, 4 digital, 5
  /// multi-level, 6 thermistor, 7 setpoint offset), separated by commas; a disconnected input is always
  /// possible.
  void Open(const automation::Object& device, int number, const std::string& choice) override;
  std::vector<Binding*> Shown() override;

  Section& Chosen();
  void ShowChosen() { area_.Show(Chosen()); }

  ui::Label lblType_{GetWindow(), "lblSensorType"};
  ui::ListBox lstType_{GetWindow(), "lstSensorType"};
  ui::PageArea area_{GetWindow(), "areSettings"};
  std::vector<std::unique_ptr<Section>> sections_;  // one for each sensor type
  BoundChoice type_{lstType_};
};

}  // namespace controls
