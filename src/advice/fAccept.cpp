#include "advice/fAccept.h"

#include "base/text.h"

namespace advice {

fAccept::fAccept(const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : Dialog("fAccept", platform, settings), settings_(settings), strings_(strings) {
  resizable = false;
  txtReason.SetColumns(60);
  txtReason.onChange = [this] { cmdOK.SetEnabled(!base::Trim(txtReason.Text()).empty()); };
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
  cmdOK.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
  SetLayout(ui::Stack({
      ui::GrowX(ui::Item(lblAdvice)),
      ui::GrowX(ui::Item(lblWho)),
      ui::GrowX(ui::Line({ui::Item(lblReason), ui::GrowX(ui::Item(txtReason))})),
      ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdOK), ui::Item(cmdCancel)})),
  }));
}

void fAccept::InitStrings() {
  SetTitle(strings_.GetStrings("Accept advice"));
  lblWho.SetText(shell::ReplacePlaceholders(strings_.GetStrings("Accepted by %s1%, for this unit, until a "
                                                                "value concerned changes."),
                                            {settings_.userName}));
  lblReason.SetText(strings_.GetStrings("&Reason:"));
  cmdOK.SetText(strings_.GetStrings("&Accept"));
  cmdCancel.SetText(strings_.GetStrings("Cancel"));
}

std::optional<std::string> fAccept::Ask(const std::string& advice) {
  lblAdvice.SetText(advice);
  txtReason.SetText({});
  cmdOK.SetEnabled(false);
  if (!Run(txtReason)) return std::nullopt;
  return std::string(base::Trim(txtReason.Text()));
}

}  // namespace advice
