// The main window's saves and refreshes: the location, OK and Apply, transactions of single pages, and the
// question before unsaved changes are lost.
#include <algorithm>

#include "automation/error.h"
#include "base/text.h"
#include "host/contract.h"
#include "shell/main_window.h"
#include "shell/save_report.h"

namespace shell {

void fMain::ReadLocation() {
  const std::string read = NamingProperty(host::kLocationFormat, [this] {
    host::Property& property = device_.NodeProperties[host::kLocationProperty];
    property.Bind(host::kLocationFormat);
    return property.Read();
  });
  if (!locationChanged_ && txtLocation.Text() == storedLocation_) txtLocation.SetText(read);
  storedLocation_ = read;
}

void fMain::RefreshLocationString() {
  ReadLocation();
  formerLocation_.reset();
  txtLocation.SetText(storedLocation_);
  locationChanged_ = false;
}

void fMain::LoadLocation() {
  RefreshLocationString();
  if (!txtLocation.Text().empty()) return;
  const std::string location = device_.Device.Text(host::kLocation);
  txtLocation.SetText(location);
  try {
    NamingProperty(host::kLocationFormat,
                   [&] { device_.NodeProperties[host::kLocationProperty].WriteText(location); });
    storedLocation_ = location;
  } catch (const automation::Error& error) {
    // A text that the device does not take (too long, say) must not keep the installer out.
    Log(DescribeError(error), "Load", logger::kExclamation);
  }
}

fields::Field fMain::LocationField() {
  fields::Field field = fields::FieldOf(txtLocation, TranslateBy(strings_));
  field.kind = fields::Kind::kEntry;  // a name, even one made of digits
  field.ofOneUnit = true;
  field.caption = [this] {
    fields::Caption caption;
    caption.row = lblLocation.Text();
    return caption;
  };
  field.source = host::kLocationFormat;
  field.held = [this] { return storedLocation_; };
  return field;
}

bool fMain::WriteLocation(std::string_view routine) {
  if (!locationChanged_) return true;
  try {
    NamingProperty(host::kLocationFormat,
                   [this] { device_.NodeProperties[host::kLocationProperty].WriteText(txtLocation.Text()); });
    if (!formerLocation_) formerLocation_ = storedLocation_;
    storedLocation_ = txtLocation.Text();
    locationChanged_ = false;
  } catch (const std::exception& error) {
    Log(DescribeError(error), routine, logger::kError);
    Log(Text("The configuration settings were not applied"), routine, logger::kError);
  }
  return !locationChanged_;
}

SaveResult fMain::Save(std::string_view routine) {
  refusals_.clear();
  changes_.ForgetRefused();
  const auto begins = [](const auto& companion) { return companion->SaveBegins(); };
  if (!std::ranges::all_of(companions_, begins)) {
    Log(Text("The configuration settings were not applied"), routine, logger::kError);
    return SaveResult::kCancelled;
  }
  lastSave_.Begin(changes_.Kept(), device_.IsImperial);
  const SaveResult ended = pages_.SaveAllPages(context_, ProgressObject, [this] {
    return std::ranges::all_of(companions_, [](const auto& companion) { return companion->MayCommit(); });
  });
  const auto [result, reason, differences] = ReportSave(context_, ended, routine, "Main");
  if (result == SaveResult::kCommitted) {
    if (ended != result) pages_.EndWriteValue();
    formerLocation_.reset();
    TellSave(differences);
    return result;
  }
  const std::string_view fault =
      result == SaveResult::kUnknown
          ? "It is not known whether the configuration settings were applied. "
            "Refresh to see what the device holds; that drops the values typed here."
          : "The configuration settings were not applied";
  Log(Text(fault) + "\r\n" + reason, routine, logger::kError);
  if (result == SaveResult::kCancelled) MarkRefused();
  return result;
}

bool fMain::CommitEdit() {
  if (pages_.Count() > 0 && !pages_.Page(shownPage_).CommitFocus()) return false;
  return CommitFocus();
}

void fMain::Ok() {
  if (!CommitEdit() || !Reviewed() || !WriteLocation("OK")) return;
  if (pages_.AnyPageChanged()) {
    if (Save("OK") != SaveResult::kCommitted) return;
    Log(Text("The configuration setting were applied successfully"), "OK", logger::kInformation);
  }
  Hide();
  EndPlugIn();
}

void fMain::Apply() {
  if (!CommitEdit() || !Reviewed() || !WriteLocation("Apply")) return;
  if (!pages_.AnyPageChanged()) return formerLocation_.reset();
  if (Save("Apply") != SaveResult::kCommitted) return;
  Refresh("Apply");
  Log(Text("The configuration settings were applied successfully"), "Apply", logger::kInformation);
}

bool fMain::Refresh(std::string_view routine, PageSet::Showing showing) {
  std::vector<std::string> unread;
  changes_.Together([&] { unread = pages_.RefreshAllPages(context_, ProgressObject, showing); });
  if (unread.empty()) return true;
  const std::string reason =
      showing == PageSet::Showing::kAllOrNothing
          ? Text("The values of the device could not be read again. The pages show what they did before.")
          : strings_.FormatStrings("Could not be read again and show what they did before: %s1%",
                                   {base::Join(unread, ", ")});
  Log(reason, routine, logger::kError);
  return false;
}

SaveResult fMain::InTransaction(std::string_view routine, std::string_view location,
                                const std::function<bool()>& work) {
  SaveResult result = SaveResult::kCancelled;
  const auto transact = [&] { result = Transact(routine, location, work); };
  if (!std::exchange(dialogWaits_, false)) {
    Command(routine, transact);
    return result;
  }
  transact();  // part of the command that shows the dialog
  dialogWaits_ = true;
  return result;
}

SaveResult fMain::Transact(std::string_view routine, std::string_view location,
                           const std::function<bool()>& work) {
  const ui::WaitPointer pointer(platform_.loop);
  const SaveResult result = RunTransaction(context_, routine, location, work);
  // Without an entry there is nothing to judge a lost answer by.
  return journal_.Entries().empty() ? result : ReportSave(context_, result, routine, location).result;
}

bool fMain::Unsaved() {
  if (ending_ || Refused()) return false;
  return pages_.AnyPageChanged() || locationChanged_;
}

std::string fMain::WhyNotEnd() {
  for (const auto& companion : companions_) companion->SessionMayEnd();
  if (activity_.Busy()) {
    return Text("The configuration tool is busy. Please try again when it has finished.");
  }
  return Unsaved() ? Text("All unsaved changes will be lost.") : std::string();
}

bool fMain::MayClose() {
  if (Refused()) return true;
  if (activity_.Busy()) return false;
  if (!Unsaved()) return true;
  bool mayClose = false;
  Command("Cancel", [&] {
    mayClose = platform_.prompts.Ask({Text("All unsaved changes will be lost.") + "\r\n" +
                                          Text("Are you sure you want to close the configuration tool?"),
                                      settings_.title, ui::Buttons::kYesNoCancel, ui::Icon::kQuestion}) ==
               ui::Answer::kYes;
  });
  return mayClose;
}

}  // namespace shell
