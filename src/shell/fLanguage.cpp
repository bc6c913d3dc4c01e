#include "shell/fLanguage.h"

#include "logger/message_logger.h"

namespace shell {
namespace {

constexpr int kHelpTopic = 3;

}  // namespace

fLanguage::fLanguage(const PageContext& context) : ISubForm({"fLanguage", 0, kHelpTopic}), context_(context) {
  SetLayout(ui::Grid(2, {ui::Item(lblLanguage), ui::GrowX(ui::Item(cboLanguage))}));
  dialog_.area.Embed(*this);
  dialog_.area.Show(*this);
  dialog_.SetLayout(ui::Stack({
      ui::Grow(ui::Item(dialog_.area)),
      ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(dialog_.cmdHelp), ui::Item(dialog_.cmdOK),
                          ui::Item(dialog_.cmdCancel)})),
  }));
  dialog_.resizable = false;
  dialog_.defaultButton = &dialog_.cmdOK;
  dialog_.cancelButton = &dialog_.cmdCancel;
  dialog_.cmdOK.onClick = [this] {
    if (!IsChanged() || WriteValue()) dialog_.Close();
  };
  dialog_.cmdCancel.onClick = [this] { dialog_.Close(); };
  dialog_.cmdHelp.onClick = [this] {
    ShowHelp(context_.platform, context_.settings, context_.strings, HelpIndex());
  };
}

fLanguage::~fLanguage() {
  if (context_.platform.toolkit) context_.platform.toolkit->Discard(dialog_);
}

bool fLanguage::Open() {
  try {
    ReInitializeStrings();
    FillValue();
  } catch (const std::exception& error) {
    Tell(error);
    return false;
  }
  const std::string before = current_;
  context_.work.RunModal(dialog_);
  return current_ != before;
}

void fLanguage::ReInitializeStrings() {
  Strings& strings = context_.strings;
  strings.ReloadStrings();
  dialog_.SetTitle(strings.GetStrings("Setting Language"));
  lblLanguage.SetText(strings.GetStrings("Language for Plug-Ins"));
  dialog_.cmdOK.SetText(strings.GetStrings("&OK"));
  dialog_.cmdCancel.SetText(strings.GetStrings("Cancel"));
  dialog_.cmdHelp.SetText(strings.GetStrings("Help"));
}

bool fLanguage::ReadValue() {
  languages_ = context_.strings.Languages();
  current_ = context_.strings.Language();
  return true;
}

void fLanguage::ShowValue() {
  cboLanguage.SetItems(languages_);
  cboLanguage.SelectText(current_);
}

bool fLanguage::Confirmed() const {
  const auto text = [this](std::string_view english) { return context_.strings.GetStrings(english); };
  const std::string question =
      text("Warning!!") + "\n\n" + text("We detected the Language for Plug-Ins in your computer-->") +
      current_ + "\n" + text("You've selected Language-->") + cboLanguage.SelectedText() + "\n" +
      text("Please close all LNS applications and reopen them!") + "\n" +
      text(
          "If this is not done, the display might not be appropriate or only certain applications will take "
          "effect.") +
      "\n\n" + text("Do you want to continue?");
  return context_.platform.prompts.Ask({question, text("Setting Language"), ui::Buttons::kOkCancel,
                                        ui::Icon::kExclamation}) == ui::Answer::kOk;
}

bool fLanguage::WriteValue() {
  if (!Confirmed()) return false;
  try {
    context_.strings.SetLanguage(cboLanguage.SelectedText());
    current_ = cboLanguage.SelectedText();
    return true;
  } catch (const std::exception& error) {
    Tell(error);
    return false;
  }
}

void fLanguage::Tell(const std::exception& error) const {
  context_.messages.AddMessage(DescribeError(error), "Setting Language", "Language", logger::kError);
  context_.platform.prompts.Ask({DescribeError(error), context_.strings.GetStrings("Setting Language"),
                                 ui::Buttons::kOk, ui::Icon::kError});
}

}  // namespace shell
