// The language page: chooses the language of all plug-ins of the host. It stands in a window of its own,
// opened from the main window's menu, and is no entry of the page table. The choice is kept by the language
// component; other plug-ins follow when they are started again, which the user is told first.
#pragma once

#include <string>
#include <vector>

#include "shell/page.h"

namespace shell {

class fLanguage final : public ISubForm {
 public:
  explicit fLanguage(const PageContext& context);
  ~fLanguage() override;

  /// Shows the page and waits until it is closed. Answers whether another language is in use now; the caller
  /// then has every window set its texts again. Failures are told here.
  bool Open();
  ui::Window& Window() { return dialog_; }

  void ReInitializeStrings() override;
  /// Lists the component's languages and selects the one in use. Throws automation::Error.
  bool ReadValue() override;
  void ShowValue() override;
  /// Asks, then sets the chosen language. No when the user thought better of it, or the component refused.
  bool WriteValue() override;
  void RefreshPage() override { FillValue(); }
  bool IsChanged() override { return cboLanguage.Selected() >= 0 && cboLanguage.SelectedText() != current_; }
  void EndWriteValue() override {}

 private:
  struct Dialog : ui::Window {
    Dialog() : Window("fLanguageDialog") {}
    ui::PageArea area{*this, "area"};
    ui::Button cmdHelp{*this, "cmdHelp"};
    ui::Button cmdOK{*this, "cmdOK"};
    ui::Button cmdCancel{*this, "cmdCancel"};
  };

  bool Confirmed() const;
  void Tell(const std::exception& error) const;

  const PageContext& context_;
  std::vector<std::string> languages_;
  std::string current_;
  ui::Label lblLanguage{*this, "lblLanguage"};
  ui::ListBox cboLanguage{*this, "cboLanguage"};
  Dialog dialog_;
};

}  // namespace shell
