// The small window that asks what to do about a call that the host does not answer: wait on, or give it up.
// It works while the call holds up everything else. Without it an installer would see a window that hangs,
// with no way out that keeps what was typed. Owned by the program, since calls are made before the main
// window is there.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "shell/activity.h"
#include "shell/strings.h"
#include "ui/form.h"

namespace shell {

class WaitWindow : public ui::Window {
 public:
  WaitWindow(ui::Toolkit* toolkit, Activity& activity);
  ~WaitWindow() override;

  /// Asks the host for translations, so not while it is silent.
  void InitStrings(const Strings& strings);

  /// Called again and again while the call of `member` has been pending for `elapsed` (5 s or more). Answers
  /// whether the user gave it up. Who waits on is asked again after twice the time.
  bool Overdue(std::string_view member, std::chrono::milliseconds elapsed);
  /// The call has ended.
  void Over();

 private:
  void Ask(std::string_view member, std::chrono::milliseconds elapsed);

  ui::Toolkit* toolkit_;
  Activity& activity_;
  std::optional<Activity::Scope> waiting_;  // from the first question about a call to the call's end
  std::string silent_;
  std::string canceled_;
  std::chrono::milliseconds elapsed_{0};
  std::chrono::milliseconds next_{0};  // what a call must have been pending for to be asked about
  bool givenUp_ = false;

  ui::Label lblMessage{*this, "lblMessage"};
  ui::Label lblQuestion{*this, "lblQuestion"};
  ui::Button cmdWait{*this, "cmdWait"};
  ui::Button cmdCancel{*this, "cmdCancel"};
};

}  // namespace shell
