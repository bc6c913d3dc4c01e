#include "configuration/fRecord.h"

namespace configuration {
namespace {

constexpr const char* kInstaller = "RecordInstaller";
constexpr const char* kAddress = "RecordAddress";
constexpr int kWidth = 50;  // average characters

}  // namespace

fRecord::fRecord(const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : Dialog("fRecord", platform, settings), settings_(settings), strings_(strings) {
  using ui::Item;
  resizable = false;
  for (ui::TextBox* box : {&txtInstaller, &txtAddress, &txtNote}) box->SetColumns(kWidth);
  chkTable.SetChecked(true);
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
  cmdOK.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
  SetLayout(ui::Stack({
      ui::Grid(2, {Item(lblInstaller), Item(txtInstaller), Item(lblAddress), Item(txtAddress), Item(lblNote),
                   Item(txtNote)}),
      Item(chkTable),
      ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), Item(cmdOK), Item(cmdCancel)})),
  }));
}

void fRecord::InitStrings() {
  SetTitle(strings_.GetStrings("As-left record"));
  lblInstaller.SetText(strings_.GetStrings("&Installer:"));
  lblAddress.SetText(strings_.GetStrings("&Address of the site:"));
  lblNote.SetText(strings_.GetStrings("&Note:"));
  chkTable.SetText(strings_.GetStrings("Also as a &table for spreadsheets (CSV)"));
  cmdOK.SetText(strings_.GetStrings("&Save..."));
  cmdCancel.SetText(strings_.GetStrings("Cancel"));
}

bool fRecord::Ask() {
  const auto kept = [this](const char* name) {
    return base::ReadRegistryString(platform_.registry, base::RegistryRoot::kCurrentUser,
                                    settings_.settingsKey, name);
  };
  txtInstaller.SetText(kept(kInstaller));
  txtAddress.SetText(kept(kAddress));
  txtNote.SetText({});
  if (!Run(txtInstaller)) return false;
  for (const auto& [name, box] : {std::pair{kInstaller, &txtInstaller}, std::pair{kAddress, &txtAddress}}) {
    base::WriteRegistryString(platform_.registry, base::RegistryRoot::kCurrentUser, settings_.settingsKey,
                              name, box->Text());
  }
  return true;
}

}  // namespace configuration
