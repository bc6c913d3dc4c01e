// What the small windows of this room have in common: shown over the main window, they wait for an answer.
// Shown only inside a command, so nothing else is taken meanwhile.
#pragma once

#include <string>

#include "shell/platform.h"
#include "shell/settings.h"
#include "ui/form.h"

namespace configuration {

class Dialog : public ui::Window {
 public:
  ~Dialog() override {
    if (platform_.toolkit) platform_.toolkit->Discard(*this);
  }

 protected:
  Dialog(std::string name, const shell::Platform& platform, const shell::Settings& settings)
      : Window(std::move(name)), platform_(platform) {
    iconFile = settings.iconFile;
  }

  /// Shows the window and waits until it is closed or hidden; answers whether it was accepted.
  bool Run(ui::Control& first) {
    accepted_ = false;
    if (platform_.toolkit && !GetWindowPeer()) platform_.toolkit->Realize(*this);
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

  const shell::Platform& platform_;

 private:
  bool accepted_ = false;
};

}  // namespace configuration
