// The functions that are chosen at this moment for the hardware inputs and outputs, also before they are
// saved, and the hardware behind them. The inputs and outputs pages keep it current; other pages ask it,
// so that they follow a choice at once. Owned by the main window.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "base/text.h"
#include "host/device_tree.h"

namespace shell {

class SelectedTypes {
  template <class Types>
  static auto& At(Types& types, std::size_t index) {
    if (index < types.size()) return types[index];
    throw base::Error("There is no input or output with index " + std::to_string(index) + ".");
  }
  template <class Types>
  static int PlaceOf(const Types& types, std::string_view function) {
    const auto found = std::ranges::find(types, function);
    return found == types.end() ? -1 : static_cast<int>(found - types.begin());
  }

 public:
  // Indexes count from 0; one beyond the last throws base::Error. Names are in upper case.
  void SetSelectedOutputType(std::size_t index, std::string_view function) {
    At(outputs_, index) = base::Upper(function);
  }
  const std::string& GetSelectedOutputType(std::size_t index) const { return At(outputs_, index); }
  /// Index of the output that has the function, or -1.
  int GetOutputTypeSelectedIndex(std::string_view function) const { return PlaceOf(outputs_, function); }

  void SetSelectedInputType(std::size_t index, std::string_view function) {
    At(inputs_, index) = base::Upper(function);
  }
  const std::string& GetSelectedInputType(std::size_t index) const { return At(inputs_, index); }
  /// Index of the input that has the function, or -1.
  int GetInputTypeSelectedIndex(std::string_view function) const { return PlaceOf(inputs_, function); }

  /// The sensor type behind an input, as the inputs page last read it.
  void SetSensorType(std::size_t index, std::string_view sensor) { At(sensors_, index) = sensor; }
  const std::string& GetSensorType(std::size_t index) const { return At(sensors_, index); }
  /// Of all inputs; those that nobody knows are empty.
  std::vector<std::string> SensorTypes() const { return {sensors_.begin(), sensors_.end()}; }
  /// The signal type of an output's hardware, as the outputs page last read it; empty before.
  void SetSignalType(std::size_t index, std::string_view signal) { At(signals_, index) = signal; }
  const std::string& GetSignalType(std::size_t index) const { return At(signals_, index); }

 private:
  std::array<std::string, host::DeviceObjects::kOutputs> outputs_;
  std::array<std::string, host::DeviceObjects::kInputs> inputs_;
  std::array<std::string, host::DeviceObjects::kInputs> sensors_;
  std::array<std::string, host::DeviceObjects::kOutputs> signals_;
};

}  // namespace shell
