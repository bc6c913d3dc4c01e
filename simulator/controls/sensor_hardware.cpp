#include "simulator/controls/sensor_hardware.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "simulator/controls/input_functions.h"

namespace controls {
namespace {

constexpr int kInputs = 6;
constexpr int kTypeProperty = 2;
constexpr int kFunctionProperty = 3;

struct SensorType {
  std::string choice;
  Choice type;
  SectionPlan plan;
};

// The last one is always possible and has no number.
const std::vector<SensorType>& Types() {
  static const std::vector<SensorType> types = {
      {"2",
       {"LINEAR", "Linear"},
       {"ctlSensorLinear",
        "Linear scaling",
        4,
        "UCPTsensorScale",
        {"Low", "High"},
        {{"Signal", "V"}, {"Value", ""}}}},
      {"3",
       {"TRANS_TABLE", "Translation table"},
       {"ctlSensorTable",
        "Translation table",
        5,
        "UCPTtranslationTable",
        {"1", "2", "3", "4", "5", "6", "7", "8"},
        {{"Signal", "V"}, {"Value", ""}},
        2}},
      {"6",
       {"STD_THERMISTOR", "Standard thermistor"},
       {"ctlSensorThermistor",
        "Standard thermistor",
        6,
        "UCPTthermistorOffset#SI",
        {"Offset added to the measured temperature"},
        {{"", "°C"}}}},
      {"4",
       {"DIGITAL", "Digital contact"},
       {"ctlSensorContact",
        "Digital contact",
        7,
        "UCPTcontactSense",
        {"Contact at rest"},
        {},
        1,
        {{"NORMALLY_OPEN", "Normally open"}, {"NORMALLY_CLOSED", "Normally closed"}}}},
      {"5",
       {"MULTI_LEVEL", "Multi-level switch"},
       {"ctlSensorLevels",
        "Multi-level switch",
        8,
        "UCPTmultiLevelTable",
        {"Level 2 from", "Level 3 from", "Level 4 from", "Level 5 from"},
        {{"", "V"}}}},
      {"7",
       {"SETPOINT_OFFSET", "Setpoint offset"},
       {"ctlSensorOffset",
        "Setpoint offset",
        9,
        "UCPTsetpointOffsetRange#SI",
        {"Lowest offset", "Highest offset"},
        {{"", "°C"}}}},
      {"",
       {"DISCONNECTED", "Disconnected"},
       {"ctlSensorNone", "Disconnected", 0, "", {}, {}, 1, {}, "Nothing is connected to this input."}},
  };
  return types;
}

std::vector<Choice> ChoicesOf(const std::string& list, const std::string& present) {
  std::vector<std::string> numbers;
  for (const std::string& piece : base::Split(list, ",")) numbers.emplace_back(base::Trim(piece));
  for (const std::string& number : numbers) {
    if (!number.empty() && std::ranges::find(Types(), number, &SensorType::choice) == Types().end()) {
      throw base::Error("There is no sensor choice \"" + number + "\"; the choices are 2 to 7.");
    }
  }
  std::vector<Choice> choices;
  for (const SensorType& entry : Types()) {
    const bool allowed = std::ranges::find(numbers, entry.choice) != numbers.end();
    if (allowed || entry.choice.empty() || entry.type.name == present) choices.push_back(entry.type);
  }
  return choices;
}

}  // namespace

SensorHardware::SensorHardware() : Editor("ctlSensorHardware") {
  lblType_.SetText("Sensor type");
  lstType_.onClick = [this] { ShowChosen(); };
  for (const SensorType& entry : Types()) {
    sections_.push_back(std::make_unique<Section>(entry.plan));
    area_.Embed(*sections_.back());
  }
  GetWindow().SetLayout(
      ui::Stack({ui::Grid(2, {ui::Item(lblType_), ui::Item(lstType_)}), ui::Grow(ui::Item(area_))}));
  area_.Show(*sections_.back());
}

void SensorHardware::Open(const automation::Object& device, int number, const std::string& choice) {
  const auto input = NumberedObject(device, "HardwareInput", number, kInputs, "hardware input");
  const automation::Object type = PropertyOf(input, kTypeProperty);
  const std::string function = ReadProperty(PropertyOf(input, kFunctionProperty), "UCPTroofTopInputType");
  type_.SetChoices(ChoicesOf(choice, ReadProperty(type, "UCPTsensorType")));
  type_.Attach(type, "Value", "UCPTsensorType");
  const std::string unit = UnitOf(FunctionsFor(function, choice));
  for (const auto& section : sections_) {
    section->SetUnit(unit);
    section->Attach(input);
  }
  ShowChosen();
}

// The settings before the type, so that a type is never stored whose settings were refused.
std::vector<Binding*> SensorHardware::Shown() {
  std::vector<Binding*> shown;
  if (Binding* settings = Chosen().Settings()) shown.push_back(settings);
  shown.push_back(&type_);
  return shown;
}

Section& SensorHardware::Chosen() {
  const std::string name = type_.Selected();
  for (std::size_t i = 0; i < Types().size(); ++i) {
    if (Types()[i].type.name == name) return *sections_[i];
  }
  return *sections_.back();
}

}  // namespace controls
