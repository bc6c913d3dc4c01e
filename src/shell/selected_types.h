// The functions that are chosen at this moment for the hardware inputs and outputs, also before they are
// saved, and the hardware behind them. The inputs and outputs pages keep it current; other pages ask it,
// so that they follow a choice at once. Owned by the main window.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "host/device_tree.h"

namespace shell {

class SelectedTypes {
 public:
  // Indexes count from 0; one beyond the last throws base::Error. Names are in upper case.
  void SetSelectedOutputType(std::size_t index, std::string_view function);
  const std::string& GetSelectedOutputType(std::size_t index) const;
  /// Index of the output that has the function, or -1.
  int GetOutputTypeSelectedIndex(std::string_view function) const;

  void SetSelectedInputType(std::size_t index, std::string_view function);
  const std::string& GetSelectedInputType(std::size_t index) const;
  /// Index of the input that has the function, or -1.
  int GetInputTypeSelectedIndex(std::string_view function) const;

  /// The sensor type behind an input, as the inputs page last read it.
  void SetSensorType(std::size_t index, std::string_view sensor);
  const std::string& GetSensorType(std::size_t index) const;
  /// The signal type of an output's hardware, as the outputs page last read it; empty before.
  void SetSignalType(std::size_t index, std::string_view signal);
  const std::string& GetSignalType(std::size_t index) const;

 private:
  std::array<std::string, host::DeviceObjects::kOutputs> outputs_;
  std::array<std::string, host::DeviceObjects::kInputs> inputs_;
  std::array<std::string, host::DeviceObjects::kInputs> sensors_;
  std::array<std::string, host::DeviceObjects::kOutputs> signals_;
};

}  // namespace shell
