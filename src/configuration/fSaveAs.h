// Asks what a file is to hold: the values of the device or those with the pending edits, and a note.
#pragma once

#include "configuration/dialog.h"

namespace configuration {

class fSaveAs final : public Question {
 public:
  fSaveAs(const shell::Platform& platform, const shell::Settings& settings, const shell::Strings& strings);

  void InitStrings();
  /// No when the person cancelled. Without edits nothing is asked of them.
  bool Ask(bool edits);
  bool WithEdits() const { return optValues[1].Selected(); }
  const std::string& Note() const { return txtNote.Text(); }

 private:
  ui::Frame fraValues{*this, "fraValues"};
  ui::OptionGroup<2> optValues{*this, "optValues"};
  ui::Label lblNote{*this, "lblNote"};
  ui::TextBox txtNote{*this, "txtNote"};
};

}  // namespace configuration
