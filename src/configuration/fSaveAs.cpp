#include "configuration/fSaveAs.h"

namespace configuration {

fSaveAs::fSaveAs(const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : Question("fSaveAs", platform, settings, strings) {
  resizable = false;
  txtNote.SetColumns(50);
  SetLayout(ui::Stack({
      ui::GrowX(ui::Box(fraValues, ui::Stack({ui::Item(optValues[0]), ui::Item(optValues[1])}))),
      ui::GrowX(ui::Line({ui::Item(lblNote), ui::GrowX(ui::Item(txtNote))})),
      Buttons(),
  }));
}

void fSaveAs::InitStrings() {
  SetTitle(Text("Save configuration"));
  SetTexts({{&fraValues, "Values"},
            {&optValues[0], "&What the device holds"},
            {&optValues[1], "What the &pages show, with the changes that are not applied yet"},
            {&lblNote, "&Note:"},
            {&cmdOK, "&Save..."},
            {&cmdCancel, "Cancel"}});
}

bool fSaveAs::Ask(bool edits) {
  optValues[0].Select();
  optValues[1].SetEnabled(edits);
  txtNote.SetText({});
  return Run(edits ? static_cast<ui::Control&>(optValues[0]) : txtNote);
}

}  // namespace configuration
