#include "configuration/fDifferences.h"

#include <algorithm>

#include "base/text.h"
#include "logger/message_logger.h"

namespace configuration {
namespace {

using Kind = Difference::Kind;
using Tick = ui::ListView::Tick;

/// What is said of a line that nothing can be taken of, and how often there are such.
struct Saying {
  Kind kind;
  const char* remark;
  const char* count;
};
constexpr Saying kSayings[] = {
    {Kind::kEqual, "", "%s1% equal"},
    {Kind::kDiffers, "", "%s1% differ"},
    {Kind::kCannotBeWritten, "this field cannot hold the value", "%s1% cannot be written"},
    {Kind::kOnlyHere, "not in the file", "%s1% only here"},
    {Kind::kOnlyThere, "not here", "%s1% only there"},
};

const Saying& SayingOf(Kind kind) { return *std::ranges::find(kSayings, kind, &Saying::kind); }

}  // namespace

fDifferences::fDifferences(const shell::Platform& platform, const shell::Settings& settings,
                           const shell::Strings& strings, std::span<const shell::PageEntry> table)
    : Dialog("fDifferences", platform, settings, strings), table_(table) {
  cancelButton = &cmdClose;
  lvwLines.SetTicks(true);
  lvwLines.onTick = [this](std::size_t row) { TurnTick(row); };
  lvwLines.onOpen = [this] { Fold(); };
  chkAll.onClick = [this] { ShowRows(); };
  cmdTickAll.onClick = [this] { TickAll(true); };
  cmdTickNone.onClick = [this] { TickAll(false); };
  cmdFold.onClick = [this] { Fold(); };
  cmdTake.onClick = [this] { TakeOver(); };
  cmdClose.onClick = [this] { Close(); };
  SetLayout(ui::Stack({
      ui::GrowX(ui::Line({ui::GrowX(ui::Item(lblCount)), ui::Item(chkAll)})),
      ui::Grow(ui::Item(lvwLines)),
      ui::GrowX(ui::Line({ui::Item(cmdTickAll), ui::Item(cmdTickNone), ui::Item(cmdFold),
                          ui::GrowX(ui::Empty()), ui::Item(cmdTake), ui::Item(cmdClose)})),
  }));
}

void fDifferences::InitStrings() {
  SetTexts({{&chkAll, "&Show what is equal, too"},
            {&cmdTickAll, "Tick &all"},
            {&cmdTickNone, "Tick &none"},
            {&cmdFold, "&Fold"},
            {&cmdTake, "&Take over"},
            {&cmdClose, "&Close"}});
  cmdTake.SetTip(Text("The ticked values come into the pages as changes, to be applied there"));
}

void fDifferences::ShowLines(const std::string& title, const std::string& there,
                             std::vector<Difference> lines, bool mayTake) {
  SetTitle(title);
  lvwLines.SetColumns({Text("Field"), Text("Device"), there, Text("Unit"), Text("Remark")});
  mayTake_ = mayTake;
  lines_.clear();
  folded_.clear();
  for (Difference& difference : lines) {
    Line line{std::move(difference)};
    line.ticked = MayTick(line) && !line.difference.ofOneUnit;
    line.remark = Text(SayingOf(line.difference.kind).remark);
    lines_.push_back(std::move(line));
  }
  chkAll.SetChecked(false);
  ShowRows();
  if (!rows_.empty()) lvwLines.SetSelection({0});
  lvwLines.FitColumns();
  Run(lvwLines);
}

bool fDifferences::MayTick(const Line& line) const {
  return mayTake_ && line.difference.kind == Kind::kDiffers;
}

bool fDifferences::Shown(const Line& line) const {
  return chkAll.Checked() || line.handled || line.difference.kind != Kind::kEqual;
}

void fDifferences::ShowRows() {
  rows_.clear();
  std::vector<ui::ListView::Row> rows;
  std::vector<std::string> pages;
  for (const Line& line : lines_) {
    if (std::ranges::find(pages, line.difference.page) == pages.end()) pages.push_back(line.difference.page);
  }
  for (const std::string& page : pages) AddPage(page, rows);
  cmdFold.SetEnabled(!rows.empty());
  lvwLines.SetRows(std::move(rows));
  ShowTicks();
}

void fDifferences::AddPage(const std::string& page, std::vector<ui::ListView::Row>& rows) {
  const bool folded = std::ranges::find(folded_, page) != folded_.end();
  const auto ofPage = [&](const Line& line) { return line.difference.page == page && Shown(line); };
  const auto count = std::ranges::count_if(lines_, ofPage);
  if (count == 0) return;
  rows_.push_back({page});
  const std::string name = PageName(table_, page, strings_);
  rows.push_back({page, {(folded ? "+ " : "- ") + name + " (" + std::to_string(count) + ")"}});
  if (folded) return;
  for (Line& line : lines_) {
    if (!ofPage(line)) continue;
    rows_.push_back({page, &line});
    rows.push_back(RowFor(line));
  }
}

ui::ListView::Row fDifferences::RowFor(const Line& line) const {
  const Difference& difference = line.difference;
  return {difference.page + "." + difference.control,
          {"      " + difference.name, difference.here, difference.there, difference.unit, line.remark},
          line.refused ? logger::kError : 0};
}

Tick fDifferences::TickOf(const std::string& page) const {
  Tick tick = Tick::kNone;
  for (const Line& line : lines_) {
    if (line.difference.page != page || !MayTick(line)) continue;
    if (!line.ticked) return Tick::kOff;
    tick = Tick::kOn;
  }
  return tick;
}

void fDifferences::ShowTicks() {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Line* line = rows_[i].line;
    const Tick ofLine = !line || !MayTick(*line) ? Tick::kNone : line->ticked ? Tick::kOn : Tick::kOff;
    lvwLines.SetTick(i, line ? ofLine : TickOf(rows_[i].page));
  }
  lblCount.SetText(CountText());
  cmdTake.SetEnabled(std::ranges::any_of(lines_, &Line::ticked));
  const bool any = std::ranges::any_of(lines_, [this](const Line& line) { return MayTick(line); });
  cmdTickAll.SetEnabled(any);
  cmdTickNone.SetEnabled(any);
}

void fDifferences::TurnTick(std::size_t row) {
  const bool ticked = lvwLines.Rows()[row].tick == Tick::kOn;
  for (Line& line : lines_) {
    const bool meant = rows_[row].line ? rows_[row].line == &line : rows_[row].page == line.difference.page;
    if (meant && MayTick(line)) line.ticked = ticked;
  }
  ShowTicks();
}

void fDifferences::TickAll(bool ticked) {
  for (Line& line : lines_) line.ticked = ticked && MayTick(line);
  ShowTicks();
}

void fDifferences::Fold() {
  if (lvwLines.Selection().empty()) return;
  const std::string page = rows_[lvwLines.Selection().front()].page;
  if (std::erase(folded_, page) == 0) folded_.push_back(page);
  ShowRows();
  const auto row = std::ranges::find(rows_, page, &RowOf::page);
  if (row != rows_.end()) lvwLines.Choose(static_cast<std::size_t>(row - rows_.begin()));
}

void fDifferences::TakeOver() {
  std::vector<Difference> wanted;
  for (const Line& line : lines_) {
    if (line.ticked) wanted.push_back(line.difference);
  }
  const std::vector<Refused> refused = onTakeOver(wanted);
  for (Line& line : lines_) {
    if (!std::exchange(line.ticked, false)) continue;
    const Difference& difference = line.difference;
    const auto found = std::ranges::find_if(refused, [&](const Refused& one) {
      return one.page == difference.page && one.control == difference.control;
    });
    line.handled = true;
    line.refused = found != refused.end();
    line.remark = line.refused ? Text("Refused:") + " " + found->reason : Text("taken over");
    if (!line.refused) line.difference.kind = Kind::kEqual;
  }
  ShowRows();
  if (!rows_.empty()) lvwLines.SetSelection({0});
  lvwLines.FitColumns();
}

std::string fDifferences::CountText() const {
  std::vector<std::string> parts;
  const auto add = [&](const char* text, const auto& counts, bool always) {
    const auto count = std::ranges::count_if(lines_, counts);
    if (count > 0 || always) parts.push_back(Text(text, {std::to_string(count)}));
  };
  const auto taken = [](const Line& line) { return line.handled && !line.refused; };
  for (const Saying& saying : kSayings) {
    add(
        saying.count, [&](const Line& line) { return line.difference.kind == saying.kind && !taken(line); },
        saying.kind == Kind::kDiffers);
  }
  add("%s1% taken over", taken, false);
  add(
      "%s1% ticked", [](const Line& line) { return line.ticked; }, mayTake_);
  return base::Join(parts, ", ");
}

}  // namespace configuration
