// The main window's part in what is pending: counts and marks, going to a field, taking back, the review
// before a save, what a save did, and the lock.
#include <algorithm>
#include <iterator>
#include <utility>

#include "base/text.h"
#include "host/verdict.h"
#include "shell/main_window.h"

namespace shell {
namespace {

constexpr const char* kReviewChoice = "ReviewBeforeApplying";
constexpr const char* kEditing[] = {"&Undo", "Cu&t", "&Copy", "&Paste", "Select &all"};

}  // namespace

void fMain::FollowPages(std::size_t index, ISubForm& page) {
  changes_.Attach(index, page);
  page.onContextMenu = [this, index](ui::Control& control) { return MenuOf(index, control); };
}

void fMain::ShowPending() {
  for (std::size_t i = 0; i < std::min(pages_.Count(), lvwConfig.Rows().size()); ++i) {
    const std::size_t count = changes_.Count(i);
    const PageEntry& entry = pages_.Table()[i];
    std::string caption = Text(entry.listCaption);
    if (count > 0) caption = PageName(entry, strings_) + " (" + std::to_string(count) + ")";
    lvwConfig.SetCell(i, 0, caption + (changes_.Refused(i) > 0 ? " !" : ""));
  }
  cmdChanges.SetText(CountText(changes_, pages_, strings_));
  cmdTakeBack.SetVisible(changes_.Count(shownPage_) > 0 && !locked_);
  changesWindow_.Follow();
  findWindow_.Follow();
  for (const auto& companion : companions_) companion->Follow();
}

ui::ContextMenu fMain::MenuOf(std::size_t page, ui::Control& control) {
  const fields::Field* field = changes_.Find(pages_.Page(page).Name(), control.Name());
  if (!field || locked_ || !changes_.IsEdited(*field)) return {};
  ui::ContextMenu menu;
  menu.items.push_back({Text("&Back to the device's value"),
                        [this, page = field->page, name = field->name] {
                          if (const fields::Field* still = changes_.Find(page, name)) TakeBack({still});
                        },
                        {}});
  for (const char* caption : kEditing) menu.editing.push_back(Text(caption));
  return menu;
}

void fMain::GoTo(ui::Control& control) {
  Command("GoTo", [&] {
    for (std::size_t i = 0; i < pages_.Count(); ++i) {
      if (&pages_.Page(i) != &control.GetForm()) continue;
      flags_.pageSelected = true;
      if (i != shownPage_) ShowPage(i);
      BringToFront();
      if (!locked_) control.Focus();
    }
  });
}

// What was not taken, and why; empty when nothing is left.
std::string fMain::WhyNotTaken(const std::vector<fields::Wanted>& left) const {
  if (left.empty()) return {};
  std::string told = Text("Not everything could be taken back:");
  for (const fields::Wanted& one : left) {
    const fields::Field* field = changes_.Find(one.page, one.field);
    told += "\r\n" + (field ? PathOf(field->caption()) : one.field) + ": " + one.reason;
  }
  return told;
}

void fMain::TellNotTaken(const std::string& told) {
  if (!told.empty()) platform_.prompts.Ask({told, settings_.title, ui::Buttons::kOk, ui::Icon::kExclamation});
}

void fMain::TakeBack(const std::vector<const fields::Field*>& fields) {
  if (locked_) return;
  Command("TakeBack", [&] {
    std::vector<fields::Wanted> wanted;
    for (const fields::Field* field : fields)
      wanted.push_back({field->page, field->name, changes_.DeviceContent(*field)});
    const auto left = changes_.TakeAll(wanted, pagePrompts_);
    changes_.DropUnedited();
    TellNotTaken(WhyNotTaken(left));
  });
}

void fMain::TakeBackPage() {
  std::vector<const fields::Field*> fields;
  for (const Change& change : changes_.List()) {
    if (change.field && change.page == shownPage_) fields.push_back(change.field);
  }
  TakeBack(fields);
}

bool fMain::Reviewed() {
  // What was typed back leaves its page changed and nothing to be seen.
  if (!review_ || !pages_.AnyPageChanged() || changes_.List().empty()) return true;
  std::vector<Warning> warnings;
  for (const auto& companion : companions_)
    std::ranges::move(companion->Warnings(), std::back_inserter(warnings));
  return changesWindow_.Review(std::move(warnings)) && !ending_;
}

void fMain::TellSave(const std::vector<host::Difference>& differences) {
  const bool changed = lastSave_.Committed(journal_, differences);
  changes_.Committed();
  if (!changed) return;
  std::vector<std::string> onPages;
  for (const LastSave::Value& value : lastSave_.Values()) {
    if (std::ranges::find(onPages, value.page) == onPages.end()) onPages.push_back(value.page);
  }
  const std::size_t count = lastSave_.Values().size();
  const std::string_view text = count == 1            ? "1 value was written on 1 page"
                                : onPages.size() == 1 ? "%s1% values were written on 1 page"
                                                      : "%s1% values were written on %s2% pages";
  Log(strings_.GetStrings(text, {std::to_string(count), std::to_string(onPages.size())}), "Save",
      logger::kInformation);
  logger_.AddDetails(DescribeSave(lastSave_, changes_, pages_, strings_));
}

void fMain::RefuseControl(const ui::Control& control, std::string_view reason) {
  refusals_.emplace_back(control.GetForm().Name() + "." + control.Name(), reason);
}

void fMain::MarkRefused() {
  for (const host::Written& entry : journal_.Entries()) {
    if (entry.refused.empty()) continue;
    for (const host::ChangedField& field : host::RefusedFields(entry))
      refusals_.emplace_back(field.control, entry.refused);
  }
  for (const auto& [control, reason] : std::exchange(refusals_, {})) changes_.Refuse(control, reason);
  const auto list = changes_.List();
  const auto first = std::ranges::find(list, Change::Kind::kRefused, &Change::kind);
  if (first == list.end() || !first->field->cursor) return;
  ui::Control& cursor = *first->field->cursor;
  if (first->page != shownPage_) ShowPage(first->page);
  cursor.Focus();
}

std::string fMain::WhyNotTakeBack() {
  if (lastSave_.Empty()) return Text("Nothing was saved since this window was opened.");
  if (lastSave_.Imperial() != device_.IsImperial)
    return Text("The last save was made in the other measurement units. Change them back first.");
  transactions_.EndLeft();
  std::vector<std::string> names;
  for (const host::ChangedField& changed : host::ChangedSince(settings_.numbers, lastSave_.Entries())) {
    const ControlName name(changed.control);
    const fields::Field* field = changes_.Find(name.page, name.control);
    names.push_back(field ? PathOf(field->caption()) : changed.written);
  }
  if (names.empty()) return {};
  return Text("The device has been changed by somebody else since the last save:") + "\r\n" +
         base::Join(names, "\r\n");
}

void fMain::TakeBackLastSave() {
  if (locked_) return;
  Command("TakeBackLastSave", [this] {
    std::string told = WhyNotTakeBack();
    if (told.empty()) {
      flags_.pageSelected = true;
      std::vector<fields::Wanted> wanted, unseen;
      for (const LastSave::Value& value : lastSave_.Values()) {
        const bool seen = changes_.Find(value.page, value.field);
        (seen ? wanted : unseen)
            .push_back({value.page, seen ? value.field : value.name, value.before,
                        seen ? "" : Text("no field shows this value")});
      }
      auto left = changes_.TakeAll(wanted, pagePrompts_);
      changes_.DropUnedited();
      left.insert(left.end(), unseen.begin(), unseen.end());
      told = WhyNotTaken(left);
      changesWindow_.ShowMe();
    }
    TellNotTaken(told);
  });
}

std::string fMain::WindowTitle() const { return locked_ ? title_ + " - " + Text("Locked") : title_; }

void fMain::SetLocked(bool locked) {
  Command("Locked", [this, locked] {
    if (locked && !CommitEdit()) return;
    locked_ = locked;
    Picture1.SetEnabled(!locked);
    txtLocation.SetReadOnly(locked);
    cmdOK.SetEnabled(!locked);
    cmdApply.SetEnabled(!locked);
    changesWindow_.SetLocked(locked);
    SetTitle(WindowTitle());
    BuildMenu();
    ShowPending();
    if (locked) lvwConfig.Focus();
  });
}

void fMain::ChooseReview(bool review) {
  review_ = review;
  KeepChoice(platform_.registry, settings_, kReviewChoice, review ? "1" : "0");
  BuildMenu();
}

ui::MenuItem fMain::WithKey(const std::string& caption, const std::string& key,
                            std::function<void()> onClick) const {
  const std::string shown = base::ReplaceAll(key, "Ctrl", Text("Ctrl"));
  return {caption + "\t" + shown, std::move(onClick), {}, key};
}

void fMain::BuildMenu() {
  review_ = ReadChoice(platform_.registry, settings_, kReviewChoice) == "1";
  ui::MenuItem review = {Text("Re&view before applying"), [this] { ChooseReview(!review_); }, {}};
  review.checked = review_;
  ui::MenuItem lock = WithKey(Text("L&ocked"), "Ctrl+L", [this] { SetLocked(!locked_); });
  lock.checked = locked_;
  std::vector<ui::MenuItem> file = {
      WithKey(Text("&Apply"), "Ctrl+S", [this] { cmdApply.Click(); }),
      {Text("&Take back the last save..."), [this] { TakeBackLastSave(); }, {}}};
  for (const auto& companion : companions_)
    std::ranges::move(companion->FileMenu(), std::back_inserter(file));
  file.push_back({Text("&Close"), [this] { Close(); }, {}});
  std::vector<ui::MenuItem> view = {
      WithKey(Text("&Refresh"), "F5", [this] { cmdRefresh.Click(); }),
      {Text("&Message Logger"), [this] { cmdErrorLog.Click(); }, {}},
      WithKey(Text("&Changes"), "F8", [this] { cmdChanges.Click(); }),
      WithKey(Text("&Find a field..."), "Ctrl+F", [this] { findWindow_.ShowMe(); })};
  for (const auto& companion : companions_)
    std::ranges::move(companion->ViewMenu(), std::back_inserter(view));
  view.push_back(std::move(review));
  view.push_back(std::move(lock));
  view.push_back({Text("&Language") + "...", [this] { ChooseLanguage(); }, {}});
  menu = {
      {Text("&File"), {}, std::move(file)},
      {Text("&View"), {}, std::move(view)},
      {Text("&Help"), {}, {WithKey(Text("&Contents"), "F1", [this] { cmdHelp.Click(); })}},
  };
}

}  // namespace shell
