// Asks for the name and the location of a new unit. It stays open until the unit is made or the person gives
// up, so what was typed is never lost to a refusal. Owned and opened by the host's window.
#pragma once

#include <functional>
#include <string>

#include "ui/form.h"

namespace simhost {

class UnitDialog : public ui::Window {
 public:
  UnitDialog();

  /// The person wants such a unit; yes when there is one now, which closes the dialog.
  std::function<bool(const std::string& name, const std::string& location)> onAccept;

  /// Both boxes empty, the caret in the first.
  void Open();

 private:
  void Accept();

  ui::Label lblName{*this, "lblName"};
  ui::TextBox txtName{*this, "txtName"};
  ui::Label lblLocation{*this, "lblLocation"};
  ui::TextBox txtLocation{*this, "txtLocation"};
  ui::Button cmdOK{*this, "cmdOK"};
  ui::Button cmdCancel{*this, "cmdCancel"};
};

}  // namespace simhost
