// The small window with a label and a bar that the main window shows while it loads, saves or refreshes the
// pages. It gives the message loop a turn after every step, so the main window keeps painting during long
// host operations.
#pragma once

#include <string>
#include <string_view>

#include "shell/strings.h"
#include "ui/event_loop.h"
#include "ui/form.h"

namespace shell {

class fLoading : public ui::Window {
 public:
  fLoading(ui::Toolkit* toolkit, ui::EventLoop& loop, const Strings& strings);
  ~fLoading() override;

  void InitStrings();
  /// Prepares the window with an empty bar of `count` steps and shows it, unless the work ends within a
  /// moment.
  void ShowFLoading(std::string_view title, std::string_view label, int count);
  void HideFLoading();
  /// Shows the step label, a blank and `text`, and moves the bar one step on unless it is full.
  void AdvanceProgressBar(std::string_view text);
  /// True once the user has closed the window. Nobody consults it yet: a transaction is not left half done.
  bool IsCanceled() const { return canceled_; }

 private:
  ui::Toolkit* toolkit_;
  ui::EventLoop& loop_;
  const Strings& strings_;
  std::string label_;
  bool canceled_ = false;
  ui::Timer tmrShow;

  ui::Label lblMessage{*this, "lblMessage"};
  ui::ProgressBar ProgressBar1{*this, "ProgressBar1"};
};

}  // namespace shell
