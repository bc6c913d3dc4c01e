#include "pages/io/fHardwareInput.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"
#include "host/input_functions.h"
#include "logger/message_logger.h"

namespace pages {
namespace {

using host::InputFunction, host::FindInputFunction, host::DefaultsOf, host::kUnused;

// Configuration properties of an input.
enum PropertyNumber { kSensorType = 2, kFunction = 3 };
constexpr std::string_view kFunctionFormat = "UCPTroofTopInputType";

std::string VariableName(std::size_t i) { return "nvoHwInput" + std::to_string(i + 1); }

constexpr const char* kColumns[] = {"Sensor Input", "Usage", "Sensor"};

}  // namespace

fHardwareInput::fHardwareInput(const shell::PageContext& context, const shell::PagePlace& place)
    : PageBase(context, place, "Hardware Input"),
      settings_(Name(), SettingsOwners(), {kFunction}, [this] { MarkChanged(); }) {
  for (std::size_t i = 0; i < kInputs; ++i) {
    cboInput[i].onClick = [this, i] { Guarded("ChooseFunction", [this, i] { ChooseFunction(i); }); };
    cmdConfigure[i].onClick = [this, i] { Guarded("Configure", [this, i] { Configure(i); }); };
    ShowFunction(i, {});  // long before the device has told its own
  }
  SetSource(kFunctionFormat, cboInput);
  BuildLayout();
}

void fHardwareInput::BuildLayout() {
  using ui::Empty, ui::Item;
  std::vector<ui::Node> cells;
  for (std::size_t c = 0; c < lblColumn.Size(); ++c) cells.push_back(Item(lblColumn[c]));
  cells.push_back(Empty());
  for (std::size_t i = 0; i < kInputs; ++i) {
    cells.insert(cells.end(),
                 {Item(lblInput[i]), Item(cboInput[i]), Item(lblSensor[i]), Item(cmdConfigure[i])});
  }
  SetLayout(ui::Stack({ui::Box(fraInputs, ui::Grid(4, std::move(cells)))}));
}

void fHardwareInput::InitStrings() {
  fraInputs.SetText(Translate("Inputs"));
  for (std::size_t c = 0; c < lblColumn.Size(); ++c) lblColumn[c].SetText(Translate(kColumns[c]));
  for (std::size_t i = 0; i < kInputs; ++i) {
    lblInput[i].SetText(InputName(i));
    cmdConfigure[i].SetText(Translate("Configure..."));
    ShowSensor(i);
  }
}

std::vector<HardwareSettings::Owner> fHardwareInput::SettingsOwners() {
  host::DeviceObjects& device = Context().device;
  std::vector<HardwareSettings::Owner> owners;
  for (std::size_t i = 0; i < kInputs; ++i) {
    owners.push_back({[this, i] { return InputName(i); }, &device.InputProperties[i + 1],
                      &device.InputVariables[i + 1], VariableName(i), &cmdConfigure[i]});
  }
  return owners;
}

std::vector<fields::Field> fHardwareInput::ListFields(const fields::Translate& translate) {
  std::vector<fields::Field> fields = PageBase::ListFields(translate);
  std::ranges::move(settings_.Fields(translate), std::back_inserter(fields));
  return fields;
}

std::string fHardwareInput::WithNames(std::string_view text, const std::vector<std::string>& names) const {
  return shell::ReplacePlaceholders(Translate(text), names);
}

std::string fHardwareInput::InputName(std::size_t i) const {
  return Translate("Input %s1%", {std::to_string(i + 1)});
}

host::Property& fHardwareInput::Property(std::size_t i, int number) {
  return Context().device.InputProperties[i + 1][number];
}

void fHardwareInput::BindFormats() {
  for (std::size_t i = 0; i < kInputs; ++i) {
    NamingProperty(InputName(i), [&] { Property(i, kFunction).Bind(kFunctionFormat); });
  }
}

void fHardwareInput::Fill() {
  BindFormats();
  for (std::size_t i = 0; i < kInputs; ++i) {
    NamingProperty(InputName(i), [this, i] {
      const std::string function = base::Upper(Property(i, kFunction).Read());
      WhenRead([this, i, function, sensor = ReadSensorType(i)] {
        ShowFunction(i, function);
        SetFunction(i, function);
        ShowSensorType(i, sensor);
      });
    });
  }
  WhenRead([this] {
    settings_.DropEdits();
    Context().pages.CheckOutputDependencies();
  });
}

void fHardwareInput::ShowFunction(std::size_t i, const std::string& function) {
  std::vector<std::string> items;
  for (const InputFunction& known : host::InputFunctions()) items.emplace_back(known.name);
  // A function that this tool does not know is shown as it is and written back unchanged.
  if (!function.empty() && !FindInputFunction(function)) items.push_back(function);
  cboInput[i].SetItems(std::move(items));
  cboInput[i].SelectText(function);
}

void fHardwareInput::SetFunction(std::size_t i, const std::string& function) {
  functions_[i] = function;
  Context().selections.SetSelectedInputType(i, function);
  cmdConfigure[i].SetEnabled(function != kUnused);
}

std::string fHardwareInput::ReadSensorType(std::size_t i) {
  return NamingProperty(InputName(i), [&] { return ReadWord(Property(i, kSensorType)); });
}

void fHardwareInput::ShowSensorType(std::size_t i, const std::string& sensor) {
  Context().selections.SetSensorType(i, sensor);
  ShowSensor(i);
}

void fHardwareInput::ShowSensor(std::size_t i) {
  const InputFunction* function = FindInputFunction(functions_[i]);
  const std::string& sensor = Context().selections.GetSensorType(i);
  if (!function || function->name == kUnused) return lblSensor[i].SetText("");
  // Another sensor than the usual one is allowed; the installer should only see it.
  const std::string usual(function->usualSensor);
  const bool asUsual = usual.empty() || usual == sensor;
  lblSensor[i].SetText(asUsual ? sensor : WithNames("%s1% (usually %s2%)", {sensor, usual}));
}

void fHardwareInput::ChooseFunction(std::size_t i) {
  const std::string next = base::Upper(cboInput[i].SelectedText());
  if (next == functions_[i]) return;
  cboInput[i].SelectText(functions_[i]);  // so it stays when it is refused, or the host fails
  if (next != kUnused && std::ranges::find(functions_, next) != functions_.end())
    return Warn(Translate("This input is already selected, please select another one."));
  const std::string sensor = ReadSensorType(i);
  cboInput[i].SelectText(next);
  const ui::Answer defaults = OfferDefaults(next);
  if (defaults == ui::Answer::kCancel) {
    cboInput[i].SelectText(functions_[i]);
    return;
  }
  SetFunction(i, next);
  MarkChanged();
  ShowSensorType(i, sensor);
  Context().pages.CheckOutputDependencies();
  if (defaults != ui::Answer::kYes) return;
  ApplyDefaultValues(i, next);
  ShowSensorType(i, ReadSensorType(i));
}

ui::Answer fHardwareInput::OfferDefaults(const std::string& function) {
  if (!DefaultsOf(function, Context().settings.numbers)) return ui::Answer::kNo;
  return Context().platform.prompts.Ask(
      {WithNames("Do you want to set %s1% configuration properties to the default values ?", {function}) +
           "\r\n" + Translate("If yes, this process takes a few secondes."),
       "QVR KV-TARN Configuration", ui::Buttons::kYesNoCancel, ui::Icon::kQuestion});
}

void fHardwareInput::ApplyDefaultValues(std::size_t i, const std::string& function) {
  constexpr std::string_view kRoutine = "ApplyDefaultValues";
  settings_.Outdated();
  const shell::SaveResult result = Context().work.InTransaction(kRoutine, Location(), [&] {
    const auto defaults = DefaultsOf(function, Context().settings.numbers);
    for (const auto& [number, format, text] : defaults->properties) {
      NamingProperty(format, [&, number = number, format = format] {
        Property(i, number).Bind(format);
        Property(i, number).Write(format, host::kHostPrecision, base::Split(text, " "));
      });
    }
    Context().device.InputVariables[i + 1][VariableName(i)].ChangeType(defaults->variableType);
    return true;
  });
  const bool applied = result == shell::SaveResult::kCommitted;
  const std::string_view text =
      applied ? "The default '%s1%' configuration settings were applied successfully"
      : result == shell::SaveResult::kCancelled
          ? "The default '%s1%' configuration settings were not applied"
          : "It is not known whether the default '%s1%' configuration settings were applied.";
  Context().messages.AddMessage(WithNames(text, {function}), kRoutine, Location(),
                                applied ? logger::kInformation : logger::kError);
}

bool fHardwareInput::Write() {
  if (!IsChanged()) return true;
  BindFormats();
  for (std::size_t i = 0; i < kInputs; ++i) {
    if (functions_[i].empty()) continue;
    NamingProperty(InputName(i), [this, i] {
      Property(i, kFunction)
          .Write(kFunctionFormat, host::kHostPrecision, {functions_[i]}, {Source(cboInput[i])});
    });
  }
  settings_.Write();
  return true;
}

void fHardwareInput::Configure(std::size_t i) {
  if (functions_[i].empty()) return Warn(Translate("You must make a selection before configuration"));
  const InputFunction* function = FindInputFunction(functions_[i]);
  if (!dialog_) dialog_ = std::make_unique<fConfigSensor>(Context());
  dialog_->Index = static_cast<int>(i) + 1;
  dialog_->Choice = function ? function->choices : std::string_view();
  dialog_->InputChoice = functions_[i];
  dialog_->Open();
  if (dialog_->NoChange) {
    Context().messages.AddMessage(Translate("Configuring sensor input was canceled."), "Configure",
                                  "Sensor Input", logger::kInformation);
  }
  if (!dialog_->MayHaveWritten()) return;
  settings_.Outdated();
  ShowSensorType(i, ReadSensorType(i));
  Context().pages.CheckOutputDependencies();
}

}  // namespace pages
