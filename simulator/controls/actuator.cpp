#include "simulator/controls/actuator.h"

#include <algorithm>
#include <utility>

#include "base/error.h"

namespace controls {
namespace {

constexpr int kOutputs = 7;
constexpr int kSignalProperty = 2;
constexpr int kSenseProperty = 9;

struct Signal {
  Choice signal;
  SectionPlan plan;
};

const std::vector<Signal>& Signals() {
  static const std::vector<Signal> signals = {
      {{"DIGITAL", "Digital"},
       {"ctlActuatorDigital", "Digital", 0, "", {}, {}, 1, {}, "The output is switched on and off."}},
      {{"PWM", "Pulse width (PWM)"},
       {"ctlActuatorPwm", "Pulse width", 8, "UCPTpwmPeriod", {"Period"}, {{"", "s"}}}},
      {{"ANALOG_0_10V", "Analog 0 to 10 V"},
       {"ctlActuatorAnalog",
        "Analog signal",
        7,
        "UCPTactuatorRange",
        {"Signal at 0 %", "Signal at 100 %"},
        {{"", "V"}}}},
  };
  return signals;
}

}  // namespace

Actuator::Actuator() : Editor("ctlConfigActuator") {
  lblSignal_.SetText("Signal");
  lblSense_.SetText("Action");
  lstSignal_.onClick = [this] { ShowChosen(); };
  std::vector<Choice> signals;
  for (const Signal& entry : Signals()) {
    signals.push_back(entry.signal);
    sections_.push_back(std::make_unique<Section>(entry.plan));
    area_.Embed(*sections_.back());
  }
  signal_.SetChoices(std::move(signals));
  sense_.SetChoices({{"DIRECT", "Direct"}, {"REVERSE", "Reversed"}});
  // Lists of one width, which is the wider one's and not the window's.
  ui::Node lists = ui::Grid(2, {ui::Item(lblSignal_), ui::GrowX(ui::Item(lstSignal_)), ui::Item(lblSense_),
                                ui::GrowX(ui::Item(lstSense_))});
  GetWindow().SetLayout(ui::Stack({ui::Line({ui::Stack({std::move(lists)})}), ui::Grow(ui::Item(area_))}));
  area_.Show(*sections_.front());
}

void Actuator::Open(const automation::Object& device, int number, const std::string& signal) {
  const auto isSignal = [&signal](const Signal& entry) { return entry.signal.name == signal; };
  if (!signal.empty() && std::ranges::none_of(Signals(), isSignal)) {
    throw base::Error("There is no signal \"" + signal +
                      "\"; the signals are DIGITAL, PWM and ANALOG_0_10V.");
  }
  const auto output = NumberedObject(device, "HardwareOutput", number, kOutputs, "hardware output");
  signal_.Attach(PropertyOf(output, kSignalProperty), "Value", "UCPThardwareSignalType");
  sense_.Attach(PropertyOf(output, kSenseProperty), "Value", "UCPToutputSense");
  for (const auto& section : sections_) section->Attach(output);
  signal_.Select(signal);
  ShowChosen();
}

// The settings before the signal, so that a signal is never stored whose settings were refused.
std::vector<Binding*> Actuator::Shown() {
  std::vector<Binding*> shown;
  if (Binding* settings = Chosen().Settings()) shown.push_back(settings);
  shown.push_back(&sense_);
  shown.push_back(&signal_);
  return shown;
}

Section& Actuator::Chosen() {
  const std::string name = signal_.Selected();
  for (std::size_t i = 0; i < Signals().size(); ++i) {
    if (Signals()[i].signal.name == name) return *sections_[i];
  }
  return *sections_.front();
}

}  // namespace controls
