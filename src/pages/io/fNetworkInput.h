// Network inputs: how long the controller waits for an update of each input variable, whether the variable
// keeps its value, and its type where the device allows several. A new type is written with all other values
// in one save; until then it lives here and only the pages that depend on it follow.
#pragma once

#include <memory>
#include <vector>

#include "pages/io/fChangeType.h"
#include "pages/io/network_page.h"

namespace pages {

class fNetworkInput final : public NetworkPage {
 public:
  fNetworkInput(const shell::PageContext& context, const shell::PagePlace& place);

  /// The types of the variables too, by the labels that show them.
  std::vector<fields::Field> ListFields(const fields::Translate& translate) override;

 private:
  static constexpr std::size_t kVariableCount = 23;
  static constexpr std::size_t kFlagCount = 48;  // one "Persistent" per variable; the others are not shown
  static constexpr std::size_t kGroupCount = 4;

  void InitStrings() override;
  void Fill() override;
  bool Write() override;
  void Saved() override;
  void BuildLayout();
  ui::Node GroupBox(std::size_t group);

  std::vector<Field> Fields();
  host::Property& Flags();
  void ReadTypes();
  void ShowType(std::size_t i) { lblType[i].SetText(host::BareType(TypeOf(i))); }
  /// The type that the variable has, or is going to have when the page is saved.
  const std::string& TypeOf(std::size_t i) const;
  std::vector<std::string> AllowedTypes(std::size_t i);
  void ChangeTypes();
  void TakeType(std::size_t i, const std::string& type);
  fields::Field TypeField(std::size_t i);
  /// Takes the type by its name, as the dialog does. Answers why not, or nothing.
  std::string ChooseType(std::size_t i, const std::string& type);
  void UpdateOptionsPage();

  std::array<std::string, kVariableCount> types_;   // in the device
  std::array<std::string, kVariableCount> chosen_;  // to be written; empty: stays as it is
  std::size_t row_ = 0;                             // where the keyboard was last

  ui::ControlArray<ui::Frame, kGroupCount> fraGroup{*this, "fraGroup"};
  ui::LabelArray<kGroupCount> lblHeartbeat{*this, "lblHeartbeat"};
  ui::LabelArray<kGroupCount> lblTypes{*this, "lblTypes"};
  ui::LabelArray<kVariableCount> lblNvi{*this, "lblNvi"};
  ui::TextBoxArray<kVariableCount> txtnvi{*this, "txtnvi"};
  ui::LabelArray<kVariableCount> lblSec{*this, "lblSec"};
  ui::ControlArray<ui::CheckBox, kFlagCount> chkInput{*this, "chkInput"};
  ui::LabelArray<kVariableCount> lblType{*this, "lblType"};
  ui::Label lblEmergCmd{*this, "lblEmergCmd"};
  ui::TextBox txtEmergCmd{*this, "txtEmergCmd"};
  ui::Label lblEmergSec{*this, "lblEmergSec"};
  ui::Button cmdChangeType{*this, "cmdChangeType"};
  std::unique_ptr<fChangeType> dialog_;
};

}  // namespace pages
