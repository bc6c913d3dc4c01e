// Asks what the as-left record says beside the values: who leaves the unit, the address of the site, a note.
// Installer and address are kept for the next unit.
#pragma once

#include "configuration/dialog.h"
#include "configuration/record.h"

namespace configuration {

class fRecord final : public Question {
 public:
  fRecord(const shell::Platform& platform, const shell::Settings& settings, const shell::Strings& strings);

  void InitStrings();
  /// No when the person cancelled.
  bool Ask();
  RecordRequest Request() const { return {txtInstaller.Text(), txtAddress.Text(), txtNote.Text()}; }
  bool WithTable() const { return chkTable.Checked(); }

 private:
  ui::Label lblInstaller{*this, "lblInstaller"};
  ui::TextBox txtInstaller{*this, "txtInstaller"};
  ui::Label lblAddress{*this, "lblAddress"};
  ui::TextBox txtAddress{*this, "txtAddress"};
  ui::Label lblNote{*this, "lblNote"};
  ui::TextBox txtNote{*this, "txtNote"};
  ui::CheckBox chkTable{*this, "chkTable"};
};

}  // namespace configuration
