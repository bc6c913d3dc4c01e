// Hardware inputs: the function of each of the six inputs, the sensor behind it, and the offer to load the
// defaults that belong to a function. A refused choice is put back and changes nothing.
#pragma once

#include <memory>

#include "pages/io/fConfigSensor.h"
#include "pages/io/hardware_settings.h"
#include "pages/page_base.h"

namespace pages {

class fHardwareInput final : public PageBase {
 public:
  fHardwareInput(const shell::PageContext& context, const shell::PagePlace& place);

  void ReadSettings() override { settings_.Read(); }
  void SettingsOutdated() override { settings_.Outdated(); }
  std::vector<fields::Field> ListFields(const fields::Translate& translate) override;

 private:
  static constexpr std::size_t kInputs = host::DeviceObjects::kInputs;

  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void Saved() override { settings_.Saved(); }
  void DropEdits() override { settings_.DropEdits(); }
  void BuildLayout();

  std::string InputName(std::size_t i) const;
  /// The translation of `text` with names of functions or sensors, which are shown as the device has them.
  std::string WithNames(std::string_view text, const std::vector<std::string>& names) const;
  host::Property& Property(std::size_t i, int number);
  void BindFormats();
  void ShowFunction(std::size_t i, const std::string& function);
  void ChooseFunction(std::size_t i);
  /// Takes the function: the sensor dialog's choices, "Configure..." and the other pages follow.
  void SetFunction(std::size_t i, const std::string& function);
  /// Asks whether to load the defaults of a function that has some; "Cancel" takes the choice itself back.
  ui::Answer OfferDefaults(const std::string& function);
  void ApplyDefaultValues(std::size_t i, const std::string& function);
  std::string ReadSensorType(std::size_t i);
  /// Takes the sensor type and shows it.
  void ShowSensorType(std::size_t i, const std::string& sensor);
  void ShowSensor(std::size_t i);
  void Configure(std::size_t i);
  std::vector<HardwareSettings::Owner> SettingsOwners();

  std::array<std::string, kInputs> functions_;  // what each input holds now, in upper case

  ui::Frame fraInputs{*this, "fraInputs"};
  ui::LabelArray<3> lblColumn{*this, "lblColumn"};
  ui::LabelArray<kInputs> lblInput{*this, "lblInput"};
  ui::ControlArray<ui::ListBox, kInputs> cboInput{*this, "cboInput"};
  ui::LabelArray<kInputs> lblSensor{*this, "lblSensor"};
  ui::ControlArray<ui::Button, kInputs> cmdConfigure{*this, "cmdConfigure"};
  std::unique_ptr<fConfigSensor> dialog_;
  HardwareSettings settings_;
};

}  // namespace pages
