#include "shell/fFind.h"

#include <algorithm>

#include "base/text.h"

namespace shell {
namespace {

constexpr const char* kColumns[] = {"Page", "Field", "Value"};
constexpr std::size_t kFewLines = 50;  // whose texts are measured anew at each key

}  // namespace

fFind::fFind(const Platform& platform, const Settings& settings, const Strings& strings, const PageSet& pages,
             const Changes& changes)
    : Window("fFind"), platform_(platform), strings_(strings), pages_(pages), changes_(changes) {
  iconFile = settings.iconFile;
  txtFind.SetColumns(40);
  txtFind.onChange = [this] { ShowFound(); };
  lvwFound.onOpen = [this] { GoTo(); };
  cmdGoTo.onClick = [this] { GoTo(); };
  cmdClose.onClick = [this] { Close(); };
  defaultButton = &cmdGoTo;
  cancelButton = &cmdClose;
  SetLayout(ui::Stack({
      ui::GrowX(ui::Line({ui::Item(lblFind), ui::GrowX(ui::Item(txtFind))})),
      ui::Grow(ui::Item(lvwFound)),
      ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdGoTo), ui::Item(cmdClose)})),
  }));
}

fFind::~fFind() {
  if (platform_.toolkit) platform_.toolkit->Discard(*this);
}

void fFind::InitStrings() {
  SetTitle(strings_.GetStrings("Find a field"));
  lblFind.SetText(strings_.GetStrings("Find:"));
  std::vector<std::string> columns;
  for (const char* column : kColumns) columns.push_back(strings_.GetStrings(column));
  lvwFound.SetColumns(std::move(columns));
  cmdGoTo.SetText(strings_.GetStrings("&Go to"));
  cmdClose.SetText(strings_.GetStrings("&Close"));
  generation_ = -1;
  Follow();
}

void fFind::ShowMe() {
  if (platform_.toolkit && !GetWindowPeer()) platform_.toolkit->Realize(*this);
  Show();
  ShowFound();
  lvwFound.FitColumns();
  BringToFront();
  txtFind.Focus();
}

void fFind::Follow() {
  if (Visible()) ShowFound();
}

void fFind::ReadFields() {
  if (generation_ == changes_.Generation()) return;
  generation_ = changes_.Generation();
  lines_.clear();
  for (const fields::Field* field : changes_.Fields()) {
    const auto entry = std::ranges::find(pages_.Table(), field->page, &PageEntry::pageClass);
    const std::string page(base::Trim(strings_.GetStrings(entry->listCaption)));
    const fields::Caption caption = field->caption();
    const std::string path = PathOf(caption);
    const std::string words =
        base::Join({page, caption.frame, path, caption.unit, field->source, field->name}, " ");
    lines_.push_back({field, page, path, base::Fold(words)});
  }
}

void fFind::ShowFound() {
  ReadFields();
  std::vector<std::string> words;
  for (const std::string& word : base::Split(base::Fold(txtFind.Text()), " ")) {
    if (!word.empty()) words.push_back(word);
  }
  found_.clear();
  std::vector<ui::ListView::Row> rows;
  for (const Line& line : lines_) {
    const auto holds = [&line](const std::string& word) {
      return line.words.find(word) != std::string::npos;
    };
    if (!line.field->applies() || !std::ranges::all_of(words, holds)) continue;
    found_.push_back(line.field);
    rows.push_back(
        {std::to_string(rows.size()), {line.page, line.path, line.field->shown(line.field->content())}, 0});
  }
  lvwFound.SetRows(std::move(rows));
  if (!found_.empty()) lvwFound.SetSelection({0});
  if (found_.size() <= kFewLines) lvwFound.FitColumns();
  cmdGoTo.SetEnabled(!found_.empty());
}

void fFind::GoTo() {
  if (lvwFound.Selection().empty() || !onGoTo) return;
  const fields::Field& field = *found_[lvwFound.Selection().front()];
  Close();
  onGoTo(field);
}

}  // namespace shell
