#include "pages/io/fControlOutput.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/text.h"

namespace pages {
namespace {

using host::kUnassigned, host::SignalClass, host::GetOutputSignalClass;

// Configuration properties of an output.
enum PropertyNumber { kSignal = 2, kFunction = 3, kOverride = 4, kLocalHardware = 5, kLocalHardwareFlag = 6 };

struct Format {
  int number;
  std::string_view type;
};
constexpr Format kFormats[] = {{kFunction, "UCPTroofTopOutputType"}, {kOverride, "SNVT_switch"}};

constexpr const char* kColumns[] = {"Control output", "Usage", "Use local hardware", "Permit override",
                                    "Override value"};
constexpr std::string_view kLocalHardwareTip =
    "Set by itself when the values are read: whether the hardware of the output can drive its function";
enum OnOff { kOn = 0, kOff = 1 };

constexpr std::string_view kSetByItself = "Set by itself: whether the hardware can drive the function";
constexpr std::string_view kNotKept = "Is not kept without the permission";

constexpr std::string_view kNoOverrideState = "-1";
constexpr std::string_view kNoValue = "0.0";  // shown so in every notation

}  // namespace

fControlOutput::fControlOutput(const shell::PageContext& context, const shell::PagePlace& place)
    : PageBase(context, place, "Hardware Output"),
      settings_(Name(), SettingsOwners(), {kFunction, kOverride, kLocalHardware, kLocalHardwareFlag},
                [this] { MarkChanged(); }) {
  for (std::size_t i = 0; i < kOutputCount; ++i) ConnectHandlers(i);
  SetSource(kFormats[0].type, cboOutput);
  BuildLayout();
}

void fControlOutput::ConnectHandlers(std::size_t i) {
  cboOutput[i].onClick = [this, i] { Guarded("ChooseFunction", [this, i] { ChooseFunction(i); }); };
  chkOutput[i].onClick = [this, i] {
    Touch(i);
    cmdConfigure[i].SetEnabled(chkOutput[i].Checked());
  };
  chkOver[i].onClick = [this, i] {
    Touch(i);
    EnableOverride(i);
  };
  cboONOFF[i].SetTranslated(true);
  Watch(txtValue[i]);
  txtValue[i].onChange = cboONOFF[i].onClick = [this, i] { Touch(i); };
  cmdConfigure[i].onClick = [this, i] { Guarded("Configure", [this, i] { Configure(i); }); };
}

void fControlOutput::BuildLayout() {
  using ui::Empty, ui::Item;
  std::vector<ui::Node> cells;
  for (std::size_t c = 0; c < lblColumn.Size(); ++c) cells.push_back(Item(lblColumn[c]));
  cells.push_back(Empty());
  for (std::size_t i = 0; i < kOutputCount; ++i) {
    const auto value = ui::Overlay({Item(cboONOFF[i]), ui::Line({Item(txtValue[i]), Item(lblVUnit[i])})});
    cells.insert(cells.end(), {Item(lblOutput[i]), Item(cboOutput[i]), Item(chkOutput[i]), Item(chkOver[i]),
                               value, Item(cmdConfigure[i])});
  }
  SetLayout(ui::Stack({ui::Box(fraOutputs, ui::Grid(6, std::move(cells)))}));
}

void fControlOutput::InitStrings() {
  fraOutputs.SetText(Translate("Outputs"));
  for (std::size_t c = 0; c < lblColumn.Size(); ++c) lblColumn[c].SetText(Translate(kColumns[c]));
  for (std::size_t i = 0; i < kOutputCount; ++i) {
    lblOutput[i].SetText(OutputName(i));
    lblVUnit[i].SetText("%");
    cmdConfigure[i].SetText(Translate("Configure..."));
    chkOutput[i].SetTip(Translate(kLocalHardwareTip));
    const int selected = cboONOFF[i].Selected();
    cboONOFF[i].SetItems({Translate("ON"), Translate("OFF")});
    cboONOFF[i].Select(selected);
  }
}

std::string fControlOutput::OutputName(std::size_t i) const {
  return Translate("Output %s1%", {std::to_string(i + 1)});
}

std::vector<HardwareSettings::Owner> fControlOutput::SettingsOwners() {
  std::vector<HardwareSettings::Owner> owners;
  for (std::size_t i = 0; i < kOutputCount; ++i) {
    owners.push_back({[this, i] { return OutputName(i); },
                      &Context().device.OutputProperties[i + 1],
                      &Context().device.OutputVariables[i + 1],
                      {},
                      &cmdConfigure[i]});
  }
  return owners;
}

std::vector<fields::Field> fControlOutput::ListFields(const fields::Translate& translate) {
  std::vector<fields::Field> fields = PageBase::ListFields(translate);
  for (fields::Field& field : fields) {
    for (std::size_t i = 0; i < kOutputCount; ++i) {
      if (field.control == &chkOutput[i]) StandForStored(field, i);
    }
  }
  std::ranges::move(settings_.Fields(translate), std::back_inserter(fields));
  return fields;
}

// The box shows by itself whether the hardware can drive the function, which need not be what is stored.
void fControlOutput::StandForStored(fields::Field& field, std::size_t i) {
  field.stored = [this, i] { return std::string(FlagText(storedLocal_[i])); };
  field.take = [this, i, take = std::move(field.take)](std::string_view content) {
    std::string reason = take(content);
    if (reason.empty() && content != FlagText(storedLocal_[i])) Touch(i);
    return reason;
  };
}

void fControlOutput::Saved() {
  for (std::size_t i = 0; i < kOutputCount; ++i) {
    if (std::exchange(touched_[i], false)) storedLocal_[i] = filledLocal_[i] = chkOutput[i].Checked();
  }
  settings_.Saved();
}

void fControlOutput::DropEdits() {
  touched_ = {};
  settings_.DropEdits();
}

void fControlOutput::Touch(std::size_t i) {
  touched_[i] = true;
  MarkChanged();
}

host::Property& fControlOutput::Property(std::size_t i, int number) {
  return Context().device.OutputProperties[i + 1][number];
}

void fControlOutput::BindFormats() {
  for (std::size_t i = 0; i < kOutputCount; ++i) {
    for (const auto& [number, type] : kFormats) {
      NamingProperty(OutputName(i), [&] { Property(i, number).Bind(type); });
    }
  }
}

void fControlOutput::Fill() {
  BindFormats();
  for (std::size_t i = 0; i < kOutputCount; ++i) NamingProperty(OutputName(i), [&] { FillOutput(i); });
  WhenRead([this] {
    settings_.DropEdits();
    Context().pages.CheckOutputDependencies();
  });
}

void fControlOutput::FillOutput(std::size_t i) {
  const std::string function = base::Upper(Property(i, kFunction).Read());
  const base::Record over(Property(i, kOverride).Read(), "SNVT_switch");
  const std::string value(over.Field(0));
  const bool permitted = over.Field(1) != kNoOverrideState;
  // Off is a value of zero, in any notation, and any value in the state 0.
  const bool on = value.find_first_of("123456789") != std::string::npos && over.Field(1) != "0";
  const bool local = ReadName(i, kLocalHardware) == "TRUE";
  const std::string signal = SignalFor(i, function);
  WhenRead([=, this] {
    touched_[i] = false;
    storedLocal_[i] = local;
    ShowFunction(i, function);
    SetFunction(i, function);
    chkOver[i].SetChecked(permitted);
    ShowOverride(i, value, on);
    chkOutput[i].SetChecked(local);
    cmdConfigure[i].SetEnabled(local && !function.empty() && function != kUnassigned);
    CheckHardware(i, signal);
    filledLocal_[i] = chkOutput[i].Checked();
  });
}

void fControlOutput::ShowFunction(std::size_t i, const std::string& function) {
  std::vector<std::string> items(host::kOutputFunctions.begin(), host::kOutputFunctions.end());
  // A function that this tool does not know is shown as it is and written back unchanged.
  if (!function.empty() && std::ranges::find(items, function) == items.end()) items.push_back(function);
  cboOutput[i].SetItems(std::move(items));
  cboOutput[i].SelectText(function);
}

void fControlOutput::SetFunction(std::size_t i, const std::string& function) {
  functions_[i] = function;
  Context().selections.SetSelectedOutputType(i, function);
}

void fControlOutput::ChooseFunction(std::size_t i) {
  const std::string next = base::Upper(cboOutput[i].SelectedText());
  if (next == functions_[i]) return;
  cboOutput[i].SelectText(functions_[i]);  // so it stays when a rule, or the host, refuses
  if (const auto refusal = CheckAssignment({functions_, i, functions_[i], next}))
    return Warn(refusal->InWords(Context().strings));
  const std::string signal = SignalFor(i, next);
  const SignalClass former = GetOutputSignalClass(functions_[i]);
  cboOutput[i].SelectText(next);
  SetFunction(i, next);
  Touch(i);
  if (next == kUnassigned) chkOver[i].SetChecked(false);
  ConvertOverride(i, former);
  CheckHardware(i, signal);
  Context().pages.CheckOutputDependencies();
}

std::string fControlOutput::ReadName(std::size_t i, int number) {
  return NamingProperty(OutputName(i), [&] { return ReadWord(Property(i, number)); });
}

std::string fControlOutput::SignalFor(std::size_t i, std::string_view function) {
  return GetOutputSignalClass(function) == SignalClass::kNone ? std::string() : ReadName(i, kSignal);
}

void fControlOutput::CheckHardware(std::size_t i, std::string_view signal) {
  const SignalClass signalClass = GetOutputSignalClass(functions_[i]);
  if (signalClass == SignalClass::kNone) return;  // left as it is
  Context().selections.SetSignalType(i, signal);
  const bool canDrive = host::CanDrive(signal, signalClass);
  chkOutput[i].SetChecked(canDrive);
  cmdConfigure[i].SetEnabled(canDrive);
}

void fControlOutput::ShowOverride(std::size_t i, std::string_view value, bool on) {
  const SignalClass signalClass = GetOutputSignalClass(functions_[i]);
  const bool onOff = signalClass == SignalClass::kOnOff;
  cboONOFF[i].SetVisible(onOff);
  txtValue[i].SetVisible(!onOff);
  lblVUnit[i].SetVisible(!onOff);
  cboONOFF[i].Select(on ? kOn : kOff);
  txtValue[i].SetText(signalClass == SignalClass::kNone ? kNoValue : value);
  EnableOverride(i);
}

void fControlOutput::ConvertOverride(std::size_t i, SignalClass former) {
  const base::Numbers& numbers = Context().settings.numbers;
  std::string value = txtValue[i].Text();
  bool on = former == SignalClass::kOnOff && cboONOFF[i].Selected() == kOn;
  if (former == SignalClass::kModulating) {
    on = base::ParseEither(numbers, value).value_or(0) != 0;
  } else {
    value = numbers.Text(on ? 100 : 0, 1);
  }
  ShowOverride(i, value, on);
}

void fControlOutput::EnableOverride(std::size_t i) {
  const bool assigned = GetOutputSignalClass(functions_[i]) != SignalClass::kNone;
  chkOver[i].SetEnabled(assigned);
  // Without the permission the value would not be kept, so it cannot be typed either.
  EnableAll(assigned && chkOver[i].Checked(), cboONOFF[i], txtValue[i], lblVUnit[i]);
}

std::vector<std::string> fControlOutput::OverrideFields(std::size_t i) const {
  const SignalClass signalClass = GetOutputSignalClass(functions_[i]);
  if (!chkOver[i].Checked() || signalClass == SignalClass::kNone)
    return {"0.0", std::string(kNoOverrideState)};
  if (signalClass == SignalClass::kModulating) return {std::string(base::Trim(txtValue[i].Text())), "1"};
  if (cboONOFF[i].Selected() == kOn) return {"100.0", "1"};
  return {"0.0", "0"};
}

std::string fControlOutput::OpenCloseStageValidation() {
  std::vector<std::string> lines;
  for (const auto& [output, line] : UnpairedFunctions(functions_)) {
    lines.push_back(Translate(line));
    Context().messages.RefuseControl(cboOutput[output], lines.back());
  }
  return base::Join(lines, "\r\n");
}

// What the user did nothing about is written back as it was read; all else is written as it is shown.
std::vector<shell::Adjustment> fControlOutput::Adjustments() {
  std::vector<shell::Adjustment> adjustments;
  const auto shown = [this](bool on) { return Translate(on ? "ON" : "OFF"); };
  for (std::size_t i = 0; i < kOutputCount; ++i) {
    if (!touched_[i]) continue;
    const bool local = chkOutput[i].Checked();
    // Where it is another than after the fill it is an edit like any other.
    if (local != storedLocal_[i] && local == filledLocal_[i])
      adjustments.push_back({&chkOutput[i], shown(storedLocal_[i]), shown(local), Translate(kSetByItself),
                             std::string(FlagText(local))});
    if (chkOver[i].Checked() && GetOutputSignalClass(functions_[i]) != SignalClass::kNone) continue;
    const bool onOff = cboONOFF[i].Visible();
    if (onOff && cboONOFF[i].Selected() == kOn)
      adjustments.push_back(
          {&cboONOFF[i], shown(true), shown(false), Translate(kNotKept), std::to_string(kOff)});
    const auto value = base::ParseEither(Context().settings.numbers, txtValue[i].Text());
    if (!onOff && value != 0.0)
      adjustments.push_back({&txtValue[i], txtValue[i].Text(), std::string(kNoValue), Translate(kNotKept),
                             std::string(kNoValue)});
  }
  return adjustments;
}

bool fControlOutput::Write() {
  const std::string missing = OpenCloseStageValidation();
  if (!missing.empty()) {
    RefuseWrite(missing);
    return false;
  }
  if (!IsChanged()) return true;
  BindFormats();
  for (std::size_t i = 0; i < kOutputCount; ++i) NamingProperty(OutputName(i), [&] { WriteOutput(i); });
  settings_.Write();
  return true;
}

void fControlOutput::WriteOutput(std::size_t i) {
  const auto write = [this, i](int number, bool changed, const std::vector<std::string>& fields,
                               const std::vector<std::string>& controls) {
    host::Property& property = Property(i, number);
    if (changed) return property.Write(OutputName(i), host::kHostPrecision, fields, controls);
    property.Change(OutputName(i), host::kHostPrecision, [](host::Edit&) {});
  };
  const std::string& function = functions_[i];
  const bool touched = touched_[i];
  const bool local = chkOutput[i].Checked();
  write(kFunction, touched && !function.empty(), {function}, {Source(cboOutput[i])});
  write(kLocalHardware, touched, {local ? "TRUE" : "FALSE"}, {Source(chkOutput[i])});
  write(kLocalHardwareFlag, touched, {std::string(FlagText(local))}, {Source(chkOutput[i])});
  // What the override of an unknown function means is unknown too: it stays as it is.
  const SignalClass signalClass = GetOutputSignalClass(function);
  const ui::Control& value =
      signalClass == SignalClass::kOnOff ? static_cast<const ui::Control&>(cboONOFF[i]) : txtValue[i];
  write(kOverride, touched && (function == kUnassigned || signalClass != SignalClass::kNone),
        OverrideFields(i), {Source(value), Source(chkOver[i])});
}

void fControlOutput::Configure(std::size_t i) {
  if (!dialog_) dialog_ = std::make_unique<fConfigActuator>(Context());
  dialog_->Index = static_cast<int>(i) + 1;
  dialog_->OutputSignal = ReadName(i, kSignal);
  dialog_->Open();
  if (!dialog_->MayHaveWritten()) return;
  settings_.Outdated();
  const bool local = chkOutput[i].Checked();
  CheckHardware(i, SignalFor(i, functions_[i]));
  if (chkOutput[i].Checked() != local) Touch(i);
}

}  // namespace pages
