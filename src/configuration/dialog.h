// What the small windows of this room have in common: shown over the main window, they wait for an answer.
// Shown only inside a command, so nothing else is taken meanwhile.
#pragma once

#include "shell/tool_window.h"

namespace configuration {

class Dialog : public shell::ToolWindow {
 protected:
  using ToolWindow::ToolWindow;

  /// Shows the window and waits until it is closed or hidden; answers whether it was accepted.
  bool Run(ui::Control& first) {
    accepted_ = false;
    Realize();
    Show();
    BringToFront();
    first.Focus();
    platform_.loop.RunUntil([this] { return !Visible(); });
    return accepted_;
  }
  void Accept() {
    accepted_ = true;
    Close();
  }

 private:
  bool accepted_ = false;
};

/// A dialog that ends by OK or Cancel.
class Question : public Dialog {
 protected:
  Question(std::string name, const shell::Platform& platform, const shell::Settings& settings,
           const shell::Strings& strings)
      : Dialog(std::move(name), platform, settings, strings) {
    defaultButton = &cmdOK;
    cancelButton = &cmdCancel;
    cmdOK.onClick = [this] { Accept(); };
    cmdCancel.onClick = [this] { Close(); };
  }

  /// The last line of the layout.
  ui::Node Buttons() {
    return ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdOK), ui::Item(cmdCancel)}));
  }

  ui::Button cmdOK{*this, "cmdOK"};
  ui::Button cmdCancel{*this, "cmdCancel"};
};

}  // namespace configuration
