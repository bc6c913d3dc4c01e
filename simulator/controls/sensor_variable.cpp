#include "simulator/controls/sensor_variable.h"

#include <algorithm>

#include "base/text.h"
#include "simulator/controls/input_functions.h"

namespace controls {
namespace {

constexpr int kInputs = 6;
constexpr int kFunctionProperty = 3;

// All that are allowed where nothing is known of the function.
std::vector<Choice> ChoicesOf(const std::vector<const InputFunction*>& functions,
                              const std::string& allowed) {
  std::vector<std::string> suitable;
  for (const InputFunction* function : functions) {
    for (const std::string& type : base::Split(function->types, " ")) suitable.push_back(type);
  }
  std::vector<Choice> choices;
  for (const std::string& type : base::Split(allowed, " ")) {
    const bool suits = suitable.empty() || std::ranges::find(suitable, type) != suitable.end();
    if (suits && !type.empty()) choices.push_back({type, type});
  }
  return choices;
}

}  // namespace

SensorVariable::SensorVariable() : Editor("ctlSensorNV") {
  fraVariable_.SetText("Published value");
  lblName_.SetText("Network variable");
  lblType_.SetText("Type");
  lstType_.onClick = [this] { ShowMeaning(); };
  GetWindow().SetLayout(
      ui::Box(fraVariable_,
              ui::Stack({ui::Grid(3, {ui::Item(lblName_), ui::Span(2, ui::Item(lblVariable_)),
                                      ui::Item(lblType_), ui::Item(lstType_), ui::Item(lblMeaning_)})})));
}

void SensorVariable::Open(const automation::Object& device, int number, const std::string& choice) {
  const auto input = NumberedObject(device, "HardwareInput", number, kInputs, "hardware input");
  const std::string function = ReadProperty(PropertyOf(input, kFunctionProperty), "UCPTroofTopInputType");
  const std::string name = "nvoHwInput" + std::to_string(number);
  const automation::Object variable = input.Child("NetworkVariables").Child("Item", name);
  type_.SetChoices(ChoicesOf(FunctionsFor(function, choice), variable.Text("AllowedTypes")));
  lblVariable_.SetText(name);
  type_.Attach(variable, "MvFormatType");
  ShowMeaning();
}

void SensorVariable::ShowMeaning() { lblMeaning_.SetText(Meaning(type_.Selected())); }

}  // namespace controls
