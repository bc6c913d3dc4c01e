#include "advice/fAccept.h"

#include "base/text.h"

namespace advice {

fAccept::fAccept(const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : Question("fAccept", platform, settings, strings) {
  resizable = false;
  txtReason.SetColumns(60);
  txtReason.onChange = [this] { cmdOK.SetEnabled(!base::Trim(txtReason.Text()).empty()); };
  SetLayout(ui::Stack({
      ui::GrowX(ui::Item(lblAdvice)),
      ui::GrowX(ui::Item(lblWho)),
      ui::GrowX(ui::Line({ui::Item(lblReason), ui::GrowX(ui::Item(txtReason))})),
      Buttons(),
  }));
}

void fAccept::InitStrings() {
  SetTitle(Text("Accept advice"));
  // In a label a single sign would underline the letter after it.
  lblWho.SetText(Text("Accepted by %s1%, for this unit, until a value concerned changes.",
                      {base::ReplaceAll(settings_.userName, "&", "&&")}));
  SetTexts({{&lblReason, "&Reason:"}, {&cmdOK, "&Accept"}, {&cmdCancel, "Cancel"}});
}

std::optional<std::string> fAccept::Ask(const std::string& advice) {
  lblAdvice.SetText(advice);
  txtReason.SetText({});
  cmdOK.SetEnabled(false);
  if (!Run(txtReason)) return std::nullopt;
  return std::string(base::Trim(txtReason.Text()));
}

}  // namespace advice
