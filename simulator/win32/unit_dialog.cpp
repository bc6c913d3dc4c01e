#include "simulator/win32/unit_dialog.h"

namespace simhost {
namespace {

constexpr int kColumns = 40;

}  // namespace

UnitDialog::UnitDialog() : ui::Window("fUnit") {
  SetTitle("New unit");
  lblName.SetText("&Name:");
  lblLocation.SetText("&Location:");
  txtName.SetColumns(kColumns);
  txtLocation.SetColumns(kColumns);
  cmdOK.SetText("OK");
  cmdCancel.SetText("Cancel");
  SetLayout(ui::Stack(
      {ui::Grid(2, {ui::Item(lblName), ui::Item(txtName), ui::Item(lblLocation), ui::Item(txtLocation)}),
       ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdOK), ui::Item(cmdCancel)}))}));
  resizable = false;
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
  cmdOK.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
}

void UnitDialog::Open() {
  txtName.SetText("");
  txtLocation.SetText("");
  Show();
  txtName.Focus();
}

void UnitDialog::Accept() {
  if (onAccept(txtName.Text(), txtLocation.Text())) {
    Close();
  } else {
    txtName.Focus();
  }
}

}  // namespace simhost
