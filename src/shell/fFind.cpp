#include "shell/fFind.h"

#include <algorithm>

#include "base/text.h"

namespace shell {
namespace {

constexpr std::size_t kFewLines = 50;  // whose texts are measured anew at each key

}  // namespace

fFind::fFind(const Platform& platform, const Settings& settings, const Strings& strings, const PageSet& pages,
             const Changes& changes)
    : ToolWindow("fFind", platform, settings, strings), pages_(pages), changes_(changes) {
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

void fFind::InitStrings() {
  SetTitle(Text("Find a field"));
  lvwFound.SetColumns({Text("Page"), Text("Field"), Text("Value")});
  SetTexts({{&lblFind, "Find:"}, {&cmdGoTo, "&Go to"}, {&cmdClose, "&Close"}});
  generation_ = -1;
  Follow();
}

void fFind::ShowMe() {
  Realize();
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
    const std::string page = PageName(pages_.Table(), field->page, strings_);
    const fields::Caption caption = field->caption();
    const std::string path = PathOf(caption);
    const std::string words =
        base::Join({page, caption.frame, path, caption.unit, field->source, field->name}, " ");
    lines_.push_back({field, page, path, base::Fold(words)});
  }
}

void fFind::ShowFound() {
  ReadFields();
  const std::vector<std::string> words = base::Split(base::Fold(txtFind.Text()), " ");
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
