// The editor "MVConfigSensor.ctlSensorNV": the type of the network variable through which an input's value is
// published, out of those that suit the input's function and that the variable allows.
#pragma once

#include <string>
#include <vector>

#include "simulator/controls/editor.h"

namespace controls {

class SensorVariable : public Editor {
 public:
  SensorVariable();

 private:
  void Open(const automation::Object& device, int number, const std::string& choice) override;
  std::vector<Binding*> Shown() override { return {&type_}; }
  void ShowMeaning();

  ui::Frame fraVariable_{GetWindow(), "fraVariable"};
  ui::Label lblName_{GetWindow(), "lblName"};
  ui::Label lblVariable_{GetWindow(), "lblVariable"};
  ui::Label lblType_{GetWindow(), "lblType"};
  ui::ListBox lstType_{GetWindow(), "lstType"};
  ui::Label lblMeaning_{GetWindow(), "lblMeaning"};
  BoundChoice type_{lstType_};
};

}  // namespace controls
