#include "shell/progress_window.h"

namespace shell {
namespace {

// Work that ends sooner needs no window, which would only flash up.
constexpr auto kShowAfter = std::chrono::milliseconds(500);

}  // namespace

fLoading::fLoading(ui::Toolkit* toolkit, ui::EventLoop& loop, const Strings& strings)
    : Window("fLoading"), toolkit_(toolkit), loop_(loop), strings_(strings), tmrShow(loop, kShowAfter) {
  resizable = false;
  onQueryClose = [this] {
    canceled_ = true;
    return false;
  };
  tmrShow.onTick = [this] {
    tmrShow.Stop();
    if (toolkit_ && !GetWindowPeer()) toolkit_->Realize(*this);
    Show();
  };
  SetLayout(ui::Stack({ui::GrowX(ui::Item(lblMessage)), ui::GrowX(ui::Item(ProgressBar1))}));
  InitStrings();
}

fLoading::~fLoading() {
  if (toolkit_) toolkit_->Discard(*this);
}

void fLoading::InitStrings() { SetTitle(strings_.GetStrings("Loading...")); }

void fLoading::ShowFLoading(std::string_view title, std::string_view label, int count) {
  label_ = label;
  canceled_ = false;
  ProgressBar1.SetRange(count);
  SetTitle(title);
  lblMessage.SetText(label);
  if (!Visible() && !tmrShow.Running()) tmrShow.Start();
  loop_.Turn();
}

void fLoading::HideFLoading() {
  tmrShow.Stop();
  Hide();
}

void fLoading::AdvanceProgressBar(std::string_view text) {
  lblMessage.SetText(label_ + " " + std::string(text));
  const int next = ProgressBar1.Value() + 1;
  if (ProgressBar1.Maximum() >= next) ProgressBar1.SetValue(next);
  loop_.Turn();
}

}  // namespace shell
