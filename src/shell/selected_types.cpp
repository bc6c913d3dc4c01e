#include "shell/selected_types.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"

namespace shell {
namespace {

template <class Types>
auto& At(Types& types, std::size_t index) {
  if (index < types.size()) return types[index];
  throw base::Error("There is no input or output with index " + std::to_string(index) + ".");
}

template <class Types>
int PlaceOf(const Types& types, std::string_view function) {
  const auto found = std::ranges::find(types, function);
  return found == types.end() ? -1 : static_cast<int>(found - types.begin());
}

}  // namespace

void SelectedTypes::SetSelectedOutputType(std::size_t index, std::string_view function) {
  At(outputs_, index) = base::Upper(function);
}

const std::string& SelectedTypes::GetSelectedOutputType(std::size_t index) const {
  return At(outputs_, index);
}

int SelectedTypes::GetOutputTypeSelectedIndex(std::string_view function) const {
  return PlaceOf(outputs_, function);
}

void SelectedTypes::SetSelectedInputType(std::size_t index, std::string_view function) {
  At(inputs_, index) = base::Upper(function);
}

const std::string& SelectedTypes::GetSelectedInputType(std::size_t index) const { return At(inputs_, index); }

int SelectedTypes::GetInputTypeSelectedIndex(std::string_view function) const {
  return PlaceOf(inputs_, function);
}

void SelectedTypes::SetSensorType(std::size_t index, std::string_view sensor) {
  At(sensors_, index) = sensor;
}

const std::string& SelectedTypes::GetSensorType(std::size_t index) const { return At(sensors_, index); }

void SelectedTypes::SetSignalType(std::size_t index, std::string_view signal) {
  At(signals_, index) = signal;
}

const std::string& SelectedTypes::GetSignalType(std::size_t index) const { return At(signals_, index); }

}  // namespace shell
