#include "pages/io/config_dialog.h"

#include <utility>

#include "host/contract.h"
#include "logger/message_logger.h"

namespace pages {

ConfigDialog::ConfigDialog(std::string name, std::string caption, Writes writes,
                           std::span<const EditingControl> controls, const shell::PageContext& context)
    : Window(std::move(name)),
      context_(context),
      caption_(std::move(caption)),
      writes_(writes),
      descriptions_(controls) {
  std::vector<ui::Node> rows;
  for (const EditingControl& control : descriptions_) {
    sites_.push_back(std::make_unique<ui::ControlSite>(*this, control.name, control.width, control.height));
    rows.push_back(ui::Grow(ui::Item(*sites_.back())));
  }
  rows.push_back(ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdHelp), ui::Item(cmdOK),
                                     ui::Item(cmdCancel), ui::Item(cmdApply)})));
  SetLayout(ui::Stack(std::move(rows)));
  cmdOK.onClick = [this] { Guarded("OK", [this] { Ok(); }); };
  cmdApply.onClick = [this] { Guarded("Apply", [this] { Write(); }); };
  cmdHelp.onClick = [this] { shell::ShowHelp(context_.platform, context_.settings, context_.strings, 0); };
  cmdCancel.onClick = [this] { Close(); };
  onQueryClose = [this] { return NoChange = true; };  // by the button or the window's own
  onClosed = [this] { End(); };
  resizable = false;
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
}

ConfigDialog::~ConfigDialog() {
  End();
  if (context_.platform.toolkit) context_.platform.toolkit->Discard(*this);
}

void ConfigDialog::InitStrings() {
  shell::Strings& strings = context_.strings;
  strings.ReloadStrings();
  SetTitle(strings.GetStrings(caption_));
  cmdOK.SetText(strings.GetStrings("&OK"));
  cmdApply.SetText(strings.GetStrings("Apply"));
  cmdCancel.SetText(strings.GetStrings("Cancel"));
  cmdHelp.SetText(strings.GetStrings("Help"));
}

bool ConfigDialog::Guarded(const char* routine, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    context_.messages.AddMessage(shell::DescribeError(error), routine, caption_, logger::kError);
    return false;
  }
}

void ConfigDialog::Open() {
  InitStrings();
  NoChange = false;
  mayHaveWritten_ = false;
  if (context_.platform.toolkit && !GetWindowPeer()) context_.platform.toolkit->Realize(*this);
  try {
    for (std::size_t i = 0; i < sites_.size(); ++i) {
      editors_.push_back(context_.platform.controls.Create(
          *sites_[i], descriptions_[i].programId, [this](const std::string& text) {
            context_.messages.AddMessage(text, "WriteValue", caption_, logger::kError);
          }));
      editors_.back().Call(host::kInitialize, context_.device.Device, Index, ControlArgument());
    }
  } catch (...) {
    End();
    throw;
  }
  context_.work.RunModal(*this);
}

bool ConfigDialog::IsDue() {
  if (writes_ == Writes::kAlways) return true;
  bool due = false;
  for (const automation::Object& editor : editors_) {
    bool changed = true;  // a control that cannot say it is told to write; its answer to that counts
    Guarded("IsChanged", [&] { changed = editor.Get(host::kIsChanged).AsBool(); });
    due = due || changed;
  }
  return due;
}

bool ConfigDialog::Write() {
  SetAcceptsInput(false);  // nothing may come between
  const bool written = !IsDue() || context_.work.InTransaction("WriteValue", caption_, [this] {
    return WriteAll();
  }) == shell::SaveResult::kCommitted;
  SetAcceptsInput(true);
  if (!written) {
    context_.platform.prompts.Ask(
        {context_.strings.GetStrings("An error as occured while writing the value in the database"),
         context_.settings.title, ui::Buttons::kOk, ui::Icon::kInformation});
  }
  return written;
}

bool ConfigDialog::WriteAll() {
  bool all = true;
  for (const automation::Object& editor : editors_) {
    bool written = false;
    mayHaveWritten_ = true;
    Guarded("WriteValue", [&] { written = editor.Call(host::kWriteValue).AsBool(); });
    all = all && written;
  }
  return all;
}

void ConfigDialog::Ok() {
  if (!Write()) return;  // the entries stay for correction
  Hide();
  End();
}

void ConfigDialog::End() {
  for (const automation::Object& editor : std::exchange(editors_, {})) {
    Guarded("Finish", [&editor] { editor.Call(host::kFinish); });
  }
  for (const auto& site : sites_) context_.platform.controls.Destroy(*site);
}

}  // namespace pages
