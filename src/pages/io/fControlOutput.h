// Hardware outputs: the control function of each of the seven outputs, whether its hardware can drive it, and
// a manual override. The rules between functions stand in assignment_rules; a refused choice is put back and
// changes nothing.
#pragma once

#include <memory>

#include "base/record.h"
#include "host/output_functions.h"
#include "pages/io/assignment_rules.h"
#include "pages/io/fConfigActuator.h"
#include "pages/io/hardware_settings.h"
#include "pages/page_base.h"

namespace pages {

class fControlOutput final : public PageBase {
 public:
  fControlOutput(const shell::PageContext& context, const shell::PagePlace& place);

  std::vector<shell::Adjustment> Adjustments() override;
  void ReadSettings() override { settings_.Read(); }
  void SettingsOutdated() override { settings_.Outdated(); }
  std::vector<fields::Field> ListFields(const fields::Translate& translate) override;

 private:
  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void Saved() override;
  void DropEdits() override;
  void BuildLayout();
  void ConnectHandlers(std::size_t i);

  std::string OutputName(std::size_t i) const;
  /// The user has done something about the output.
  void Touch(std::size_t i);
  host::Property& Property(std::size_t i, int number);
  void BindFormats();
  void FillOutput(std::size_t i);
  void ShowFunction(std::size_t i, const std::string& function);
  void ChooseFunction(std::size_t i);
  void SetFunction(std::size_t i, const std::string& function);
  /// A property that never is empty, in upper case.
  std::string ReadName(std::size_t i, int number);
  /// Read where the function asks for a kind of signal, empty otherwise.
  std::string SignalFor(std::size_t i, std::string_view function);
  /// Whether the output's hardware, of this signal type, can drive its function.
  void CheckHardware(std::size_t i, std::string_view signal);
  void ShowOverride(std::size_t i, std::string_view value, bool on);
  /// Shows the override that was there in the way of another function: ON is 100 %, and any value but 0 is
  /// ON.
  void ConvertOverride(std::size_t i, host::SignalClass former);
  void EnableOverride(std::size_t i);
  std::vector<std::string> OverrideFields(std::size_t i) const;
  void WriteOutput(std::size_t i);
  void Configure(std::size_t i);
  std::vector<HardwareSettings::Owner> SettingsOwners();
  void StandForStored(fields::Field& field, std::size_t i);
  /// The lines that say which half of an open/close pair is missing, joined by line breaks; empty when all
  /// are complete.
  std::string OpenCloseStageValidation();

  OutputFunctions functions_;  // what each output holds now, in upper case
  // Outputs that the user did something about since they were read; all others are written back as they are.
  std::array<bool, kOutputCount> touched_{};
  // "Use local hardware" as it is stored, and as it was shown after the last fill.
  std::array<bool, kOutputCount> storedLocal_{}, filledLocal_{};

  ui::Frame fraOutputs{*this, "fraOutputs"};
  ui::LabelArray<5> lblColumn{*this, "lblColumn"};
  ui::LabelArray<kOutputCount> lblOutput{*this, "lblOutput"};
  ui::ControlArray<ui::ListBox, kOutputCount> cboOutput{*this, "cboOutput"};
  ui::ControlArray<ui::CheckBox, kOutputCount> chkOutput{*this, "chkOutput"};
  ui::ControlArray<ui::CheckBox, kOutputCount> chkOver{*this, "chkOver"};
  ui::ControlArray<ui::ListBox, kOutputCount> cboONOFF{*this, "cboONOFF"};
  ui::TextBoxArray<kOutputCount> txtValue{*this, "txtValue"};
  ui::LabelArray<kOutputCount> lblVUnit{*this, "lblVUnit"};
  ui::ControlArray<ui::Button, kOutputCount> cmdConfigure{*this, "cmdConfigure"};
  std::unique_ptr<fConfigActuator> dialog_;
  HardwareSettings settings_;
};

}  // namespace pages
