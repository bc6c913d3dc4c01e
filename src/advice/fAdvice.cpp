#include "advice/fAdvice.h"

#include <algorithm>

#include "advice/field_contents.h"
#include "base/text.h"
#include "logger/message_logger.h"

namespace advice {
namespace {

constexpr const char* kColumns[] = {"Page", "Field", "Advice", "What to do"};
constexpr std::string_view kMainWindow = "fMain";  // has the location

}  // namespace

fAdvice::fAdvice(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : Window("fAdvice"), main_(main), platform_(platform), settings_(settings), strings_(strings) {
  iconFile = settings.iconFile;
  lvwAdvice.onSelection = [this] { ShowReason(); };
  lvwAdvice.onOpen = [this] { GoTo(); };
  cmdGoTo.onClick = [this] { GoTo(); };
  cmdClose.onClick = [this] { Close(); };
  defaultButton = &cmdGoTo;
  cancelButton = &cmdClose;
  SetLayout(ui::Stack({
      ui::Grow(ui::Item(lvwAdvice)),
      ui::GrowX(ui::Item(lblWhy)),
      ui::GrowX(ui::Item(lblSource)),
      ui::GrowX(ui::Line({ui::GrowX(ui::Item(lblCount)), ui::Item(cmdGoTo), ui::Item(cmdClose)})),
  }));
}

fAdvice::~fAdvice() {
  if (platform_.toolkit) platform_.toolkit->Discard(*this);
}

std::vector<ui::MenuItem> fAdvice::ViewMenu() {
  return {main_.WithKey(strings_.GetStrings("A&dvice"), "F9", [this] { ShowMe(); })};
}

void fAdvice::InitStrings() {
  SetTitle(strings_.GetStrings("Advice"));
  std::vector<std::string> columns;
  for (const char* column : kColumns) columns.push_back(strings_.GetStrings(column));
  lvwAdvice.SetColumns(std::move(columns));
  cmdGoTo.SetText(strings_.GetStrings("&Go to"));
  cmdClose.SetText(strings_.GetStrings("&Close"));
  Follow();
}

void fAdvice::ShowMe() {
  if (platform_.toolkit && !GetWindowPeer()) platform_.toolkit->Realize(*this);
  Show();
  ShowRows();
  lvwAdvice.FitColumns();
  BringToFront();
  lvwAdvice.Focus();
}

void fAdvice::Follow() {
  if (Visible()) ShowRows();
}

std::optional<std::string> fAdvice::ContentOf(std::string_view page, std::string_view control) const {
  const ui::Control* box = page == kMainWindow ? main_.Find(control) : nullptr;
  return box ? std::optional(box->Text()) : std::nullopt;
}

std::vector<Advice> fAdvice::Found() const {
  const FieldContents pages(main_.Pending().Fields(), main_.Selections());
  return Evaluate({[&](std::string_view page, std::string_view control) {
                     return page == kMainWindow ? ContentOf(page, control) : pages(page, control);
                   },
                   main_.Device().IsImperial, settings_.numbers});
}

std::string fAdvice::PathOf(const Concerned& concerned) const {
  const fields::Field* field = main_.Pending().Find(concerned.page, concerned.control);
  return field ? fields::PathOf(field->caption()) : std::string();
}

void fAdvice::ShowRows() {
  list_ = Found();
  std::vector<ui::ListView::Row> rows;
  std::size_t faults = 0;
  for (const Advice& advice : list_) {
    const Concerned& first = advice.fields.front();
    const auto table = main_.Pages().Table();
    const auto entry = std::ranges::find(table, first.page, &shell::PageEntry::pageClass);
    const bool fault = advice.rule->severity == Severity::kFault;
    faults += fault ? 1 : 0;
    rows.push_back({std::to_string(rows.size()),
                    {entry == table.end() ? strings_.GetStrings("Main window")
                                          : std::string(base::Trim(strings_.GetStrings(entry->listCaption))),
                     PathOf(first), TextOf(advice, strings_), strings_.GetStrings(advice.rule->todo)},
                    fault ? logger::kExclamation : logger::kInformation});
  }
  const auto sameLine = [](const auto& a, const auto& b) { return a.cells == b.cells && a.icon == b.icon; };
  if (!std::ranges::equal(lvwAdvice.Rows(), rows, sameLine)) {
    lvwAdvice.SetRows(std::move(rows));
    if (!list_.empty()) lvwAdvice.SetSelection({0});
    lvwAdvice.FitColumns();
  }
  lblCount.SetText(
      shell::ReplacePlaceholders(strings_.GetStrings("%s1% faults, %s2% hints"),
                                 {std::to_string(faults), std::to_string(list_.size() - faults)}));
  ShowReason();
}

const Advice* fAdvice::Selected() const {
  if (lvwAdvice.Selection().empty() || lvwAdvice.Selection().front() >= list_.size()) return nullptr;
  return &list_[lvwAdvice.Selection().front()];
}

void fAdvice::ShowReason() {
  const Advice* advice = Selected();
  lblWhy.SetText(advice ? strings_.GetStrings("Why:") + " " + strings_.GetStrings(advice->rule->why) : "");
  lblSource.SetText(advice ? strings_.GetStrings("Source:") + " " + strings_.GetStrings(advice->rule->source)
                           : "");
  cmdGoTo.SetEnabled(advice != nullptr);
}

void fAdvice::GoTo() {
  const Advice* advice = Selected();
  if (!advice) return;
  const Concerned& first = advice->fields.front();
  const fields::Field* field = main_.Pending().Find(first.page, first.control);
  if (field && field->cursor) return main_.GoTo(*field->cursor);
  if (ui::Control* control = first.page == kMainWindow ? main_.Find(first.control) : nullptr) {
    main_.BringToFront();
    control->Focus();
  }
}

}  // namespace advice
