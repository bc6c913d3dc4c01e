#include "configuration/fSaveAs.h"

namespace configuration {

fSaveAs::fSaveAs(const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : Dialog("fSaveAs", platform, settings), strings_(strings) {
  resizable = false;
  txtNote.SetColumns(50);
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
  cmdOK.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
  SetLayout(ui::Stack({
      ui::GrowX(ui::Box(fraValues, ui::Stack({ui::Item(optValues[0]), ui::Item(optValues[1])}))),
      ui::GrowX(ui::Line({ui::Item(lblNote), ui::GrowX(ui::Item(txtNote))})),
      ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdOK), ui::Item(cmdCancel)})),
  }));
}

void fSaveAs::InitStrings() {
  SetTitle(strings_.GetStrings("Save configuration"));
  fraValues.SetText(strings_.GetStrings("Values"));
  optValues[0].SetText(strings_.GetStrings("&What the device holds"));
  optValues[1].SetText(
      strings_.GetStrings("What the &pages show, with the changes that are not applied yet"));
  lblNote.SetText(strings_.GetStrings("&Note:"));
  cmdOK.SetText(strings_.GetStrings("&Save..."));
  cmdCancel.SetText(strings_.GetStrings("Cancel"));
}

bool fSaveAs::Ask(bool edits) {
  optValues[0].Select();
  optValues[1].SetEnabled(edits);
  txtNote.SetText({});
  return Run(edits ? static_cast<ui::Control&>(optValues[0]) : txtNote);
}

}  // namespace configuration
