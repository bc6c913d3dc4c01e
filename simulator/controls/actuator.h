// The editor "MVConfigActuator.ctlConfigActuator": the signal that drives an output's actuator and the
// settings of that signal.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "simulator/controls/editor.h"
#include "simulator/controls/section.h"

namespace controls {

class Actuator : public Editor {
 public:
  Actuator();

 private:
  /// `signal` is "DIGITAL", "PWM" or "ANALOG_0_10V": what the dialog begins with, a change when another one
  /// is stored. Empty: the stored one.
  void Open(const automation::Object& device, int number, const std::string& signal) override;
  std::vector<Binding*> Shown() override;

  Section& Chosen();
  void ShowChosen() { area_.Show(Chosen()); }

  ui::Label lblSignal_{GetWindow(), "lblSignal"};
  ui::ListBox lstSignal_{GetWindow(), "lstSignal"};
  ui::Label lblSense_{GetWindow(), "lblSense"};
  ui::ListBox lstSense_{GetWindow(), "lstSense"};
  ui::PageArea area_{GetWindow(), "areSettings"};
  std::vector<std::unique_ptr<Section>> sections_;  // one for each signal
  BoundChoice signal_{lstSignal_};
  BoundChoice sense_{lstSense_};
};

}  // namespace controls
