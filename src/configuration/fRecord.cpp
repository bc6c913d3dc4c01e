#include "configuration/fRecord.h"

namespace configuration {
namespace {

constexpr const char* kInstaller = "RecordInstaller";
constexpr const char* kAddress = "RecordAddress";
constexpr int kWidth = 50;  // average characters

}  // namespace

fRecord::fRecord(const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : Question("fRecord", platform, settings, strings) {
  using ui::Item;
  resizable = false;
  for (ui::TextBox* box : {&txtInstaller, &txtAddress, &txtNote}) box->SetColumns(kWidth);
  chkTable.SetChecked(true);
  SetLayout(ui::Stack({
      ui::Grid(2, {Item(lblInstaller), Item(txtInstaller), Item(lblAddress), Item(txtAddress), Item(lblNote),
                   Item(txtNote)}),
      Item(chkTable),
      Buttons(),
  }));
}

void fRecord::InitStrings() {
  SetTitle(Text("As-left record"));
  SetTexts({{&lblInstaller, "&Installer:"},
            {&lblAddress, "&Address of the site:"},
            {&lblNote, "&Note:"},
            {&chkTable, "Also as a &table for spreadsheets (CSV)"},
            {&cmdOK, "&Save..."},
            {&cmdCancel, "Cancel"}});
}

bool fRecord::Ask() {
  txtInstaller.SetText(ReadChoice(platform_.registry, settings_, kInstaller));
  txtAddress.SetText(ReadChoice(platform_.registry, settings_, kAddress));
  txtNote.SetText({});
  if (!Run(txtInstaller)) return false;
  KeepChoice(platform_.registry, settings_, kInstaller, txtInstaller.Text());
  KeepChoice(platform_.registry, settings_, kAddress, txtAddress.Text());
  return true;
}

}  // namespace configuration
