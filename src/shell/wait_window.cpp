#include "shell/wait_window.h"

namespace shell {

WaitWindow::WaitWindow(ui::Toolkit* toolkit, Activity& activity)
    : Window("WaitWindow"), toolkit_(toolkit), activity_(activity) {
  resizable = false;
  duringDialogs = true;  // work of a timer may call the host below a message box
  defaultButton = &cmdWait;
  InitStrings(Strings([] { return automation::Object(); }));  // English
  cmdWait.onClick = [this] { Close(); };
  onClosed = [this] { next_ = 2 * elapsed_; };
  cmdCancel.onClick = [this] {
    givenUp_ = true;
    lblMessage.SetText(canceled_);
    lblQuestion.SetVisible(false);
    cmdWait.SetEnabled(false);
    cmdCancel.SetEnabled(false);
  };
  SetLayout(ui::Stack({
      ui::GrowX(ui::Item(lblMessage)),
      ui::GrowX(ui::Item(lblQuestion)),
      ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdWait), ui::Item(cmdCancel)}),
  }));
}

WaitWindow::~WaitWindow() {
  if (toolkit_) toolkit_->Discard(*this);
}

void WaitWindow::InitStrings(const Strings& strings) {
  SetTitle(strings.GetStrings("The host does not answer"));
  silent_ = strings.GetStrings("The host has not answered \"%s1%\" for %s2% seconds.");
  lblQuestion.SetText(
      strings.GetStrings("Wait for it, or cancel what was asked for? What you have typed stays."));
  canceled_ = strings.GetStrings("Canceled; waiting for the host's program to answer or end.");
  cmdWait.SetText(strings.GetStrings("&Wait"));
  cmdCancel.SetText(strings.GetStrings("Cancel"));
}

bool WaitWindow::Overdue(std::string_view member, std::chrono::milliseconds elapsed) {
  if (!givenUp_ && elapsed >= next_) Ask(member, elapsed);
  if (GetWindowPeer()) GetWindowPeer()->HandleInput();
  return givenUp_;
}

void WaitWindow::Ask(std::string_view member, std::chrono::milliseconds elapsed) {
  elapsed_ = elapsed;
  if (!waiting_) waiting_.emplace(activity_);
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(elapsed).count();
  lblMessage.SetText(ReplacePlaceholders(silent_, {std::string(member), std::to_string(seconds)}));
  if (Visible()) return;
  if (toolkit_ && !GetWindowPeer()) toolkit_->Realize(*this);
  lblQuestion.SetVisible(true);
  cmdWait.SetEnabled(true);
  cmdCancel.SetEnabled(true);
  Show();
  BringToFront();
}

void WaitWindow::Over() {
  Hide();
  waiting_.reset();
  givenUp_ = false;
  next_ = {};
}

}  // namespace shell
