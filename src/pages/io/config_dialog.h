// What the sensor and actuator dialogs have in common: the maker's editing controls, created by program id
// when the dialog opens, and the buttons OK, Apply, Cancel and Help. The controls do the editing; the dialog
// tells them what to edit and when to write.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "shell/page.h"

namespace pages {

/// One editing control of a dialog; sizes in dialog units.
struct EditingControl {
  const char* name;
  const char* programId;
  int width;
  int height;
};

class ConfigDialog : public ui::Window {
 public:
  ~ConfigDialog() override;

  /// Number of the hardware input or output, counted from 1.
  int Index = 0;
  /// True after "Cancel".
  bool NoChange = false;

  /// Creates the controls and waits until the dialog is closed. Throws automation::Error naming a control
  /// that is not registered; the dialog is then not shown.
  void Open();

 protected:
  ConfigDialog(std::string name, std::string caption, std::string failureText,
               std::span<const EditingControl> controls, const shell::PageContext& context);

  /// What the controls get beside device and number: the choice list or the output's signal.
  virtual std::string ControlArgument() const = 0;
  const shell::PageContext& Context() const { return context_; }

 private:
  void InitStrings();
  void Ok();
  /// Writes when a control was changed; no when a write failed, which has been told.
  bool Write();
  void End();
  void Guarded(const char* routine, const std::function<void()>& work);

  const shell::PageContext& context_;
  std::string caption_;
  std::string failureText_;
  std::span<const EditingControl> descriptions_;
  std::vector<std::unique_ptr<ui::ControlSite>> sites_;
  std::vector<automation::Object> editors_;

  ui::Button cmdOK{*this, "cmdOK"};
  ui::Button cmdApply{*this, "cmdApply"};
  ui::Button cmdCancel{*this, "cmdCancel"};
  ui::Button cmdHelp{*this, "cmdHelp"};
};

}  // namespace pages
