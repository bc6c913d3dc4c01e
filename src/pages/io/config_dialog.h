// What the sensor and actuator dialogs have in common: the maker's editing controls, created by program id
// when the dialog opens, and the buttons OK, Apply, Cancel and Help. The controls do the editing; the dialog
// tells them what to edit and when to write, all of them in one transaction.
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
  /// A control was told to write, whatever came of it: what the page shows may not hold any more.
  bool MayHaveWritten() const { return mayHaveWritten_; }

  /// Creates the controls and waits until the dialog is closed. Throws automation::Error naming a control
  /// that is not registered; the dialog is then not shown.
  void Open();

 protected:
  /// Whether the controls are told to write also when none of them says that it was changed.
  enum class Writes { kAlways, kWhenChanged };

  ConfigDialog(std::string name, std::string caption, Writes writes, std::span<const EditingControl> controls,
               const shell::PageContext& context);

  /// What the controls get beside device and number: the choice list or the output's signal.
  virtual std::string ControlArgument() const = 0;
  const shell::PageContext& Context() const { return context_; }

 private:
  void InitStrings();
  void Ok();
  bool IsDue();
  /// Lets all controls write in one transaction, if it is due. No when one of them failed or the host did;
  /// that has been told, and nothing of it is kept.
  bool Write();
  bool WriteAll();
  void End();
  /// Runs `work` and answers yes; an error in it is logged, and the answer is no.
  bool Guarded(const char* routine, const std::function<void()>& work);

  const shell::PageContext& context_;
  std::string caption_;
  Writes writes_;
  bool mayHaveWritten_ = false;
  std::span<const EditingControl> descriptions_;
  std::vector<std::unique_ptr<ui::ControlSite>> sites_;
  std::vector<automation::Object> editors_;

  ui::Button cmdOK{*this, "cmdOK"};
  ui::Button cmdApply{*this, "cmdApply"};
  ui::Button cmdCancel{*this, "cmdCancel"};
  ui::Button cmdHelp{*this, "cmdHelp"};
};

}  // namespace pages
