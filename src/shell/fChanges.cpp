#include "shell/fChanges.h"

#include <algorithm>

#include "base/text.h"
#include "logger/message_logger.h"
#include "shell/window_place.h"

namespace shell {
namespace {

constexpr const char* kColumns[] = {"Page", "Field", "Device", "New", "Unit", "Remark"};

}  // namespace

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
  std::string told =
      ReplacePlaceholders(strings.GetStrings(text), {std::to_string(count), std::to_string(onPages)});
  if (refused > 0)
    told += ", " + ReplacePlaceholders(strings.GetStrings("%s1% refused"), {std::to_string(refused)});
  return told;
}

fChanges::fChanges(const Platform& platform, const Settings& settings, const Strings& strings,
                   const PageSet& pages, Changes& changes)
    : Window("fChanges"), platform_(platform), strings_(strings), pages_(pages), changes_(changes) {
  iconFile = settings.iconFile;
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

fChanges::~fChanges() {
  if (platform_.toolkit) platform_.toolkit->Discard(*this);
}

void fChanges::InitStrings() {
  std::vector<std::string> columns;
  for (const char* column : kColumns) columns.push_back(strings_.GetStrings(column));
  lvwChanges.SetColumns(std::move(columns));
  cmdGoTo.SetText(strings_.GetStrings("&Go to"));
  cmdTakeBack.SetText(strings_.GetStrings("&Take back"));
  cmdApply.SetText(strings_.GetStrings("&Apply"));
  lblCount.SetRoom(ReplacePlaceholders(strings_.GetStrings("%s1% changes on %s2% pages"), {"88", "88"}));
  SetReviewing(reviewing_);
  Follow();
}

void fChanges::SetReviewing(bool reviewing) {
  reviewing_ = reviewing;
  SetTitle(strings_.GetStrings(reviewing ? "Changes to be applied" : "Changes"));
  cmdClose.SetText(strings_.GetStrings(reviewing ? "Cancel" : "&Close"));
  cmdGoTo.SetVisible(!reviewing);
  cmdTakeBack.SetVisible(!reviewing);
  defaultButton = reviewing ? &cmdApply : &cmdGoTo;
}

void fChanges::Realize() {
  if (platform_.toolkit && !GetWindowPeer()) {
    platform_.toolkit->Realize(*this);
    Widen(*this);
  }
  Show();
  ShowRows();
  lvwChanges.FitColumns();
  BringToFront();
  lvwChanges.Focus();
}

void fChanges::ShowMe() {
  SetReviewing(false);
  Realize();
}

bool fChanges::Review(std::vector<Warning> warnings) {
  SetReviewing(true);
  warnings_ = std::move(warnings);
  accepted_ = false;
  Realize();
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
    const std::string page = strings_.GetStrings(pages_.Table()[change.page].listCaption);
    std::string remark = change.reason;
    if (change.kind == Change::Kind::kRefused)
      remark = base::Join({strings_.GetStrings("Refused:"), change.reason}, " ");
    const int icon = change.kind == Change::Kind::kRefused ? logger::kError : 0;
    rows.push_back({std::to_string(rows.size()),
                    {page, change.name, change.device, change.present, change.unit, remark},
                    icon});
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
