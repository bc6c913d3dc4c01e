// What hardware outputs are given to do, and whether they can.
#include "advice/places.h"
#include "advice/rules.h"
#include "host/output_functions.h"

namespace advice {
namespace {

using enum Severity;
using host::SignalClass;

constexpr std::string_view kOn = "0", kOff = "1";  // of the override's list
constexpr double kFullyOpen = 100;                 // percent

/// One output as its page shows it.
struct Output {
  const Unit& unit;
  std::size_t i;

  Value Number() const { return Text(std::to_string(i + 1)); }
  Value Function() const { return Text(unit.OutputFunction(i)); }
  SignalClass Class() const { return host::GetOutputSignalClass(unit.OutputFunction(i)); }
  Place FunctionPlace() const { return OutputFunctionAt(i); }
  Place Permission() const { return {kOutputs, At("chkOver", i)}; }
  Place LocalHardware() const { return {kOutputs, At("chkOutput", i)}; }
  Place Signal() const { return {kOutputs, At("UCPThardwareSignalType", i)}; }
  Place Override() const {
    if (Class() == SignalClass::kOnOff) return {kOutputs, At("cboONOFF", i)};
    return {kOutputs, At("txtValue", i), Quantity::kPlain, "%"};
  }
  bool Permitted() const { return unit.Is(Permission(), kChecked); }
  Value Overridden() const {
    if (Class() == SignalClass::kModulating) return unit.Shown(Override());
    return Word(unit.Is(Override(), kOn) ? "ON" : "OFF");
  }
  bool CannotBeDriven() const {
    return Class() != SignalClass::kNone && unit.Known(Signal()) &&
           !host::CanDrive(unit.Shown(Signal()).shown, Class());
  }
};

template <class Work>
void EachOutput(const Unit& unit, Work work) {
  for (std::size_t i = 0; i < host::DeviceObjects::kOutputs; ++i) work(Output{unit, i});
}

void InManual(const Unit& unit, Report& found) {
  EachOutput(unit, [&found](const Output& output) {
    if (output.Permitted() && output.Class() != SignalClass::kNone)
      found({output.Permission(), output.Override(), output.FunctionPlace()},
            {output.Number(), output.Function(), output.Overridden()});
  });
}

void NoPosition(const Unit& unit, Report& found) {
  EachOutput(unit, [&](const Output& output) {
    if (!output.Permitted() || output.Class() != SignalClass::kModulating) return;
    const double position = unit.Number(output.Override());
    if (position < 0 || position > kFullyOpen)
      found({output.Override(), output.FunctionPlace()},
            {output.Number(), output.Function(), unit.Shown(output.Override())});
  });
}

void OverrideOfNothing(const Unit& unit, Report& found) {
  EachOutput(unit, [&found](const Output& output) {
    if (output.Permitted() && output.unit.OutputFunction(output.i) == host::kUnassigned)
      found({output.FunctionPlace(), output.Permission()}, {output.Number()});
  });
}

void CannotDrive(const Unit& unit, Report& found) {
  EachOutput(unit, [&](const Output& output) {
    if (output.CannotBeDriven())
      found({output.FunctionPlace(), output.Signal()},
            {output.Number(), output.Function(), unit.Shown(output.Signal())});
  });
}

void NotLocal(const Unit& unit, Report& found) {
  EachOutput(unit, [&](const Output& output) {
    if (output.Class() != SignalClass::kNone && unit.Is(output.LocalHardware(), kUnchecked) &&
        !output.CannotBeDriven())
      found({output.LocalHardware(), output.FunctionPlace()}, {output.Number(), output.Function()});
  });
}

void NothingAssigned(const Unit& unit, Report& found) {
  std::vector<Place> places;
  EachOutput(unit, [&places](const Output& output) {
    if (output.unit.OutputFunction(output.i) == host::kUnassigned) places.push_back(output.FunctionPlace());
  });
  if (places.size() == host::DeviceObjects::kOutputs) found(places, {});
}

constexpr const char* kMoveFunction =
    "Move the function to an output that can drive it; accept this where the actuator listens to the "
    "network.";

constexpr Check kRules[] = {
    {{"output-in-manual", kFault, "Output %s1% (%s2%) is in manual: %s3%.",
      "The control cannot move an output that is overridden, and nobody sees it from outside.",
      "Take the permission of the override away before the unit is handed over.", kPractice},
     InManual},
    {{"override-no-position", kFault, "Output %s1% (%s2%): an override of %s3% is no position.",
      "A position lies between 0 and 100 %.", "Correct the override value, or take its permission away.",
      kPractice},
     NoPosition},
    {{"override-of-nothing", kHint, "Output %s1% permits an override without having a function.",
      "What the output does then is left to the device.",
      "Give the output its function, or take the permission away.", kPractice},
     OverrideOfNothing},
    {{"hardware-cannot-drive", kFault, "Output %s1% (%s2%): its hardware (%s3%) cannot drive this function.",
      "On/off functions need a digital output, modulating ones an analog output or PWM: nothing moves at the "
      "terminal.",
      kMoveFunction, kPractice},
     CannotDrive},
    {{"no-local-hardware", kHint, "Output %s1% (%s2%) does not use its local hardware.",
      "Nothing moves at the terminal of the output; only its network variable tells the command.",
      kMoveFunction, kPractice},
     NotLocal},
    {{"nothing-assigned", kHint, "No output has a function.",
      "A unit without output functions controls nothing.", "Assign the functions of the outputs.", kPractice},
     NothingAssigned},
};

}  // namespace

std::span<const Check> OutputRules() { return kRules; }

}  // namespace advice
