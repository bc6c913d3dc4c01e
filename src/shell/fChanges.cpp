#include "shell/fChanges.h"

#include <algorithm>

#include "logger/message_logger.h"

namespace shell {

std::string CountText(const Changes& changes, const PageSet& pages, const Strings& strings) {
  std::size_t count = 0, onPages = 0, refused = 0;
  for (std::size_t i = 0; i < pages.Count(); ++i) {
    const std::size_t here = changes.Count(i);
    count += here;
    onPages += here > 0 ? 1 : 0;
    refused += changes.Refused(i);
  }
  if (count == 0) return strings.GetStrings("No changes");
  const std::string_view text = count == 1     ? "1 change on 1 page"
                                : onPages == 1 ? "%s1% changes on 1 page"
                                               : "%s1% changes on %s2% pages";
  std::string told = strings.GetStrings(text, {std::to_string(count), std::to_string(onPages)});
  if (refused > 0) told += ", " + strings.GetStrings("%s1% refused", {std::to_string(refused)});
  return told;
}

fChanges::fChanges(const Platform& platform, const Settings& settings, const Strings& strings,
                   const PageSet& pages, const Changes& changes)
    : ToolWindow("fChanges", platform, settings, strings), pages_(pages), changes_(changes) {
  lvwChanges.SetMultiSelect(true);
  lvwChanges.onSelection = [this] { EnableButtons(); };
  lvwChanges.onOpen = [this] { GoTo(); };
  cmdGoTo.onClick = [this] { GoTo(); };
  cmdTakeBack.onClick = [this] { TakeBack(); };
  cmdApply.onClick = [this] { Apply(); };
  cmdClose.onClick = [this] { Close(); };
  cancelButton = &cmdClose;
  SetLayout(ui::Stack({
      ui::Grow(ui::Item(lvwChanges)),
      ui::GrowX(ui::Line({ui::Item(cmdGoTo), ui::Item(cmdTakeBack), ui::Item(lblCount),
                          ui::GrowX(ui::Empty()), ui::Item(cmdApply), ui::Item(cmdClose)})),
  }));
}

void fChanges::InitStrings() {
  lvwChanges.SetColumns(
      {Text("Page"), Text("Field"), Text("Device"), Text("New"), Text("Unit"), Text("Remark")});
  SetTexts({{&cmdGoTo, "&Go to"}, {&cmdTakeBack, "&Take back"}, {&cmdApply, "&Apply"}});
  lblCount.SetRoom(Text("%s1% changes on %s2% pages", {"88", "88"}));
  SetReviewing(reviewing_);
  Follow();
}

void fChanges::SetReviewing(bool reviewing) {
  reviewing_ = reviewing;
  SetTitle(Text(reviewing ? "Changes to be applied" : "Changes"));
  cmdClose.SetText(Text(reviewing ? "Cancel" : "&Close"));
  cmdGoTo.SetVisible(!reviewing);
  cmdTakeBack.SetVisible(!reviewing);
  defaultButton = reviewing ? &cmdApply : &cmdGoTo;
}

void fChanges::Open() {
  RealizeWide();
  Show();
  ShowRows();
  lvwChanges.FitColumns();
  BringToFront();
  lvwChanges.Focus();
}

void fChanges::ShowMe() {
  SetReviewing(false);
  Open();
}

bool fChanges::Review(std::vector<Warning> warnings) {
  SetReviewing(true);
  warnings_ = std::move(warnings);
  accepted_ = false;
  Open();
  platform_.loop.RunUntil([this] { return !Visible(); });
  SetReviewing(false);
  warnings_.clear();
  return accepted_;
}

void fChanges::SetLocked(bool locked) {
  locked_ = locked;
  EnableButtons();
}

void fChanges::Follow() {
  if (Visible()) ShowRows();
}

void fChanges::ShowRows() {
  list_ = changes_.List();
  std::vector<ui::ListView::Row> rows;
  for (const auto& [page, field, text] : warnings_)
    rows.push_back({std::to_string(rows.size()), {page, field, "", "", "", text}, logger::kExclamation});
  for (const Change& change : list_) {
    const std::string page = Text(pages_.Table()[change.page].listCaption);
    const bool refused = change.kind == Change::Kind::kRefused;
    const std::string remark = refused ? Text("Refused:") + " " + change.reason : change.reason;
    rows.push_back({std::to_string(rows.size()),
                    {page, change.name, change.device, change.present, change.unit, remark},
                    refused ? logger::kError : 0});
  }
  const auto& shown = lvwChanges.Rows();
  const auto sameLine = [](const auto& a, const auto& b) {
    return a.cells[0] == b.cells[0] && a.cells[1] == b.cells[1] && a.icon == b.icon;
  };
  if (std::ranges::equal(shown, rows, sameLine)) {  // the selection stays
    for (std::size_t i = 0; i < rows.size(); ++i) {
      for (std::size_t c = 2; c < rows[i].cells.size(); ++c) lvwChanges.SetCell(i, c, rows[i].cells[c]);
    }
  } else {
    lvwChanges.SetRows(std::move(rows));
    if (!list_.empty()) lvwChanges.SetSelection({0});
    lvwChanges.FitColumns();
  }
  lblCount.SetText(CountText(changes_, pages_, strings_));
  EnableButtons();
}

void fChanges::EnableButtons() {
  const auto selected = Selected();
  cmdGoTo.SetEnabled(selected.size() == 1);
  cmdTakeBack.SetEnabled(!locked_ && std::ranges::any_of(selected, [](const Change* c) { return c->field; }));
  cmdApply.SetEnabled(!locked_ && !list_.empty());
}

std::vector<const Change*> fChanges::Selected() const {
  std::vector<const Change*> selected;
  for (const std::size_t place : lvwChanges.Selection()) {
    const std::size_t change = place - warnings_.size();  // far beyond the list for a warning
    if (change < list_.size()) selected.push_back(&list_[change]);
  }
  return selected;
}

void fChanges::GoTo() {
  const auto selected = Selected();
  if (selected.size() == 1 && !reviewing_ && onGoTo) onGoTo(*selected.front());
}

void fChanges::TakeBack() {
  std::vector<const fields::Field*> fields;
  for (const Change* change : Selected()) {
    if (change->field) fields.push_back(change->field);
  }
  if (onTakeBack) onTakeBack(std::move(fields));
}

void fChanges::Apply() {
  if (!reviewing_) {
    if (onApply) onApply();
    return;
  }
  accepted_ = true;
  Close();
}

}  // namespace shell
