// The dialog in which the types of network variables are chosen: on the left the variables that allow more
// than one type, on the right what the selected one allows. It changes nothing in the device; the page that
// opened it takes the choices. Opened by the network inputs page.
#pragma once

#include <string>
#include <vector>

#include "shell/page.h"

namespace pages {

/// A variable whose type can be changed.
struct ChangeableVariable {
  std::string name;
  std::string present;               // its type in the device
  std::string type;                  // the type chosen
  std::vector<std::string> allowed;  // as the host names them, perhaps with scope prefixes
};

class fChangeType final : public ui::Window {
 public:
  explicit fChangeType(const shell::PageContext& context);
  ~fChangeType() override;

  /// Shows the variables (at least one) with `first` selected and waits until the dialog is closed. Answers
  /// them with the types chosen, or as they were after "Cancel".
  std::vector<ChangeableVariable> Open(std::vector<ChangeableVariable> variables, std::size_t first);

 private:
  void InitStrings();
  void ShowVariable(std::size_t place);

  const shell::PageContext& context_;
  std::vector<ChangeableVariable> variables_;
  std::size_t shown_ = 0;
  bool accepted_ = false;

  ui::ListView lvwVariable{*this, "lvwVariable"};
  ui::ListView lvwType{*this, "lvwType"};
  ui::Label lblPresent{*this, "lblPresent"};
  ui::Label lblNote{*this, "lblNote"};
  ui::Button cmdOK{*this, "cmdOK"};
  ui::Button cmdCancel{*this, "cmdCancel"};
};

}  // namespace pages
