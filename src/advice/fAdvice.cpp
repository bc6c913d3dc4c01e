#include "advice/fAdvice.h"

#include <algorithm>
#include <ctime>

#include "base/text.h"
#include "configuration/backups.h"
#include "logger/message_logger.h"
#include "shell/words.h"

namespace advice {
namespace {

constexpr std::string_view kLocation = "Advice";  // in the log
constexpr std::size_t kDateLength = 10;           // of "2026-11-22T14:05:00Z"

bool IsFault(const Advice& advice) { return advice.rule->severity == Severity::kFault; }

}  // namespace

fAdvice::fAdvice(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
                 const shell::Strings& strings)
    : ToolWindow("fAdvice", platform, settings, strings),
      main_(main),
      notes_(settings, main.Opened, configuration::kNotes),
      accept_(platform, settings, strings),
      location_(main.LocationField()) {
  lvwAdvice.onSelection = [this] { ShowReason(); };
  lvwAdvice.onOpen = [this] { GoTo(); };
  cmdGoTo.onClick = [this] { GoTo(); };
  cmdAccept.onClick = [this] { AcceptSelected(); };
  cmdClose.onClick = [this] { Close(); };
  main.AdviceButton().onClick = [this] { ShowMe(); };
  defaultButton = &cmdGoTo;
  cancelButton = &cmdClose;
  SetLayout(ui::Stack({
      ui::Grow(ui::Item(lvwAdvice)),
      ui::GrowX(ui::Item(lblWhy)),
      ui::GrowX(ui::Item(lblTodo)),
      ui::GrowX(ui::Item(lblSource)),
      ui::GrowX(ui::Item(lblAccepted)),
      ui::GrowX(ui::Line(
          {ui::GrowX(ui::Item(lblCount)), ui::Item(cmdGoTo), ui::Item(cmdAccept), ui::Item(cmdClose)})),
  }));
}

std::vector<ui::MenuItem> fAdvice::ViewMenu() {
  return {main_.WithKey(Text("A&dvice"), "F9", [this] { ShowMe(); })};
}

void fAdvice::InitStrings() {
  SetTitle(Text("Advice"));
  lvwAdvice.SetColumns({Text("Advice"), Text("Severity"), Text("Page"), Text("Field")});
  SetTexts({{&cmdGoTo, "&Go to"}, {&cmdAccept, "&Accept..."}, {&cmdClose, "&Close"}});
  cmdAccept.SetTip(Text("It is right as it is: asks for the reason"));
  accept_.InitStrings();
  main_.AdviceButton().SetTip(Text("Shows what the tool advises"));
  main_.AdviceButton().SetRoom(Text("%s1% faults", {"88"}) + ", " + Text("%s1% hints", {"88"}));
  Follow();
}

void fAdvice::Hide() {
  accept_.Hide();
  Window::Hide();
}

void fAdvice::Loaded() {
  accepted_.clear();
  try {
    const configuration::Sections kept = notes_.Read();
    const auto lines = kept.find(configuration::kAccepted);
    if (lines != kept.end()) std::ranges::transform(lines->second, std::back_inserter(accepted_), FromLine);
  } catch (const std::exception& error) {
    main_.AddMessage(shell::InWords(strings_, error), "Loaded", kLocation, logger::kExclamation);
  }
  Follow();
}

void fAdvice::ShowMe() {
  // What no control shows concerns some rules too.
  main_.Command("Advice", [this] { main_.Pending().ReadSettings(); });
  RealizeWide();
  Show();
  ShowRows();
  lvwAdvice.FitColumns();
  BringToFront();
  lvwAdvice.Focus();
}

void fAdvice::Refreshed() {
  if (Visible()) main_.Pending().ReadSettings();
}

void fAdvice::Follow() {
  Judge();
  main_.AdviceButton().SetText(CountText());
  if (Visible()) ShowRows();
}

void fAdvice::Judge() {
  if (generation_ != main_.Pending().Generation()) {
    generation_ = main_.Pending().Generation();
    std::vector<const fields::Field*> fields = main_.Pending().Fields();
    if (!fields.empty()) fields.push_back(&location_);
    contents_ = std::make_unique<FieldContents>(fields, main_.Selections());
  }
  list_.clear();
  for (Advice& advice : Evaluate({std::cref(*contents_), main_.Device().IsImperial, settings_.numbers})) {
    const Accepted* accepted = AcceptanceOf(advice, accepted_);
    list_.push_back({std::move(advice), accepted ? std::optional(*accepted) : std::nullopt});
  }
  std::ranges::stable_partition(list_, [](const Found& found) { return !found.accepted; });
}

std::vector<shell::Warning> fAdvice::Warnings() {
  std::vector<shell::Warning> warnings;
  for (const auto& [advice, accepted] : list_) {
    const Concerned& first = advice.fields.front();
    if (IsFault(advice) && !accepted)
      warnings.push_back({PageOf(first), PathOf(first), TextOf(advice, strings_)});
  }
  return warnings;
}

std::vector<configuration::AdviceLine> fAdvice::AdviceOn(const configuration::Snapshot& snapshot) const {
  const auto contents = [&](std::string_view page, std::string_view control) -> std::optional<std::string> {
    const configuration::Value* value = snapshot.Find(page, control);
    if (!value) return std::nullopt;
    return configuration::Local(settings_.numbers, value->kind, value->content, value->shown);
  };
  std::vector<configuration::AdviceLine> lines;
  for (const Advice& advice : Evaluate({contents, snapshot.head.imperial, settings_.numbers})) {
    configuration::AdviceLine line{
        .fault = IsFault(advice), .text = TextOf(advice, strings_), .why = Text(advice.rule->why)};
    if (const Accepted* accepted = AcceptanceOf(advice, accepted_)) {
      line.who = accepted->who;
      line.when = accepted->when;
      line.reason = accepted->reason;
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

std::string fAdvice::PageOf(const Concerned& concerned) const {
  return PageName(main_.Pages().Table(), concerned.page, strings_);
}

std::string fAdvice::PathOf(const Concerned& concerned) const {
  const bool location = concerned.page == shell::kMainWindow;
  const fields::Field* field =
      location ? &location_ : main_.Pending().Find(concerned.page, concerned.control);
  return field ? fields::PathOf(field->caption()) : std::string();
}

std::string fAdvice::SeverityOf(const Found& found) const {
  return Text(found.accepted ? "Accepted" : IsFault(found.advice) ? "Fault" : "Hint");
}

std::string fAdvice::CountText() const {
  std::vector<std::string> counts;
  for (const auto& [fault, one, many] :
       {std::tuple(true, "1 fault", "%s1% faults"), {false, "1 hint", "%s1% hints"}}) {
    const auto count = std::ranges::count_if(list_, [fault = fault](const Found& found) {
      return !found.accepted && IsFault(found.advice) == fault;
    });
    if (count > 0) counts.push_back(Text(count == 1 ? one : many, {std::to_string(count)}));
  }
  return counts.empty() ? Text("No advice") : base::Join(counts, ", ");
}

void fAdvice::ShowRows() {
  std::vector<ui::ListView::Row> rows;
  for (const Found& found : list_) {
    const Concerned& first = found.advice.fields.front();
    const int icon = found.accepted ? 0 : IsFault(found.advice) ? logger::kExclamation : logger::kInformation;
    rows.push_back({std::to_string(rows.size()),
                    {TextOf(found.advice, strings_), SeverityOf(found), PageOf(first), PathOf(first)},
                    icon});
  }
  const auto sameLine = [](const auto& a, const auto& b) { return a.cells == b.cells && a.icon == b.icon; };
  if (!std::ranges::equal(lvwAdvice.Rows(), rows, sameLine)) {
    lvwAdvice.SetRows(std::move(rows));
    if (!list_.empty()) lvwAdvice.SetSelection({0});
    lvwAdvice.FitColumns();
  }
  lblCount.SetText(CountText());
  ShowReason();
}

const fAdvice::Found* fAdvice::Selected() const {
  if (lvwAdvice.Selection().empty() || lvwAdvice.Selection().front() >= list_.size()) return nullptr;
  return &list_[lvwAdvice.Selection().front()];
}

void fAdvice::ShowReason() {
  const Found* found = Selected();
  const Rule* rule = found ? found->advice.rule : nullptr;
  const auto say = [&](ui::Label& label, const char* head, const char* text) {
    label.SetText(rule ? Text(head) + " " + Text(text) : std::string());
  };
  say(lblWhy, "Why:", rule ? rule->why : "");
  say(lblTodo, "What to do:", rule ? rule->todo : "");
  say(lblSource, "Source:", rule ? rule->source : "");
  // In a label a single sign would underline the letter after it.
  const auto plain = [](std::string_view text) { return base::ReplaceAll(text, "&", "&&"); };
  lblAccepted.SetText(found && found->accepted
                          ? Text("Accepted by %s1% on %s2%: %s3%",
                                 {plain(found->accepted->who), found->accepted->when.substr(0, kDateLength),
                                  plain(found->accepted->reason)})
                          : std::string());
  cmdGoTo.SetEnabled(found != nullptr);
  cmdAccept.SetEnabled(found && !found->accepted);
}

void fAdvice::GoTo() {
  const Found* found = Selected();
  if (!found) return;
  const Concerned& first = found->advice.fields.front();
  const fields::Field* field = main_.Pending().Find(first.page, first.control);
  if (field && field->cursor) return main_.GoTo(*field->cursor);
  if (first.page == shell::kMainWindow) {
    main_.BringToFront();
    location_.control->Focus();
  }
}

void fAdvice::AcceptSelected() {
  if (!Selected()) return;
  main_.Command("Accept", [this] {
    const Advice advice = Selected()->advice;
    const auto reason = accept_.Ask(TextOf(advice, strings_));
    if (!reason) return;
    try {
      std::vector<Accepted> accepted = accepted_;
      accepted.push_back(
          Accept(advice, settings_.userName, configuration::UtcText(std::time(nullptr)), *reason));
      std::vector<configuration::Line> lines;
      std::ranges::transform(accepted, std::back_inserter(lines), ToLine);
      notes_.Keep(configuration::kAccepted, std::move(lines));
      accepted_ = std::move(accepted);
    } catch (const std::exception& error) {
      const std::string words = shell::InWords(strings_, error);
      main_.AddMessage(words, "Accept", kLocation, logger::kError);
      Say(words, ui::Icon::kExclamation);
    }
    Follow();
  });
}

}  // namespace advice
