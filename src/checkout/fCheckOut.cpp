#include "checkout/fCheckOut.h"

#include <algorithm>
#include <chrono>
#include <ctime>

#include "base/text.h"
#include "configuration/backups.h"
#include "host/output_functions.h"
#include "logger/message_logger.h"
#include "shell/words.h"

namespace checkout {
namespace {

using namespace std::chrono_literals;
using configuration::TextOf;

constexpr const char* kLimit = "CheckOutLimit";  // in the settings
constexpr const char* kUsualLimit = "120";       // seconds
constexpr int kShortestLimit = 5, kLongestLimit = 3600;
// Results, as files have them: keys of the string table.
constexpr const char *kMoved = "moved", *kNotMoved = "not moved", *kSkipped = "skipped";
constexpr auto kOfferInterval = 500ms;  // until the main window is there and has nothing else to do

}  // namespace

fCheckOut::fCheckOut(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
                     const shell::Strings& strings)
    : ToolWindow("fCheckOut", platform, settings, strings),
      main_(main),
      notes_(settings, main.Opened, configuration::kNotes),
      outputs_(main.Device(), main.Context().transactions,
               {settings, main.Opened, configuration::kOverridden}),
      second_(platform.loop, 1s),
      offer_(platform.loop, kOfferInterval) {
  lvwSteps.onSelection = [this] { ChooseStep(); };
  cmdStart.onClick = [this] { StartStep(); };
  cmdYes.onClick = [this] { Answer(kMoved); };
  cmdNo.onClick = [this] { Answer(kNotMoved); };
  cmdSkip.onClick = [this] { Answer(kSkipped); };
  cmdClose.onClick = [this] { Close(); };
  cancelButton = &cmdClose;
  onQueryClose = [this] { return MayClose(); };
  second_.onTick = [this] { Tick(); };
  offer_.onTick = [this] {
    if (main_.Visible()) main_.Command("PutBack", [this] { OfferToPutBack(); });
  };
  BuildLayout();
}

void fCheckOut::BuildLayout() {
  using ui::Empty, ui::GrowX, ui::Item;
  lblStep.SetHeading(true);
  txtLimit.SetColumns(6);
  txtRemark.SetColumns(60);
  SetLayout(ui::Stack({
      ui::Grow(Item(lvwSteps)),
      GrowX(Item(lblStep)),
      GrowX(Item(lblSafety)),
      GrowX(Item(lblState)),
      GrowX(ui::Line({Item(lblRemark), GrowX(Item(txtRemark))})),
      GrowX(ui::Line({Item(lblLimit), Item(txtLimit), Item(lblSeconds), GrowX(Empty()), Item(cmdStart),
                      Item(cmdYes), Item(cmdNo), Item(cmdSkip), Item(cmdClose)})),
  }));
}

std::vector<ui::MenuItem> fCheckOut::FileMenu() {
  return {{Text("C&heck out outputs..."), [this] { Open(); }, {}}, {}};
}

void fCheckOut::InitStrings() {
  SetTitle(Text("Check-out of the outputs"));
  lvwSteps.SetColumns({Text("Output"), Text("Function"), Text("Step"), Text("Result"), Text("Remark"),
                       Text("By"), Text("When")});
  SetTexts({
      {&lblSafety, "Make sure that nobody works at the unit."},
      {&lblLimit, "Time &limit:"},
      {&lblSeconds, "sec"},
      {&lblRemark, "&Remark:"},
      {&cmdYes, "&Yes, it moved"},
      {&cmdNo, "&No"},
      {&cmdSkip, "S&kip"},
      {&cmdClose, "&Close"},
  });
  cmdStart.SetRoom(Text("&Put back"));
  txtLimit.SetTip(Text("After this time the output goes back by itself"));
}

void fCheckOut::Tell(const std::string& words, ui::Icon icon) {
  main_.AddMessage(words, "CheckOut", kLocation,
                   icon == ui::Icon::kError ? logger::kError : logger::kExclamation);
  Say(words, icon);
}

// --- opening ---

// What pages change by themselves loses nothing.
bool fCheckOut::HasEdits() const {
  const auto changes = main_.Pending().List();
  return std::ranges::any_of(changes, [](const shell::Change& change) { return change.field != nullptr; });
}

std::string fCheckOut::WhyNot() {
  if (main_.Locked()) return Text("The window is locked. Unlock it to check the outputs.");
  if (HasEdits()) return Text("There are changes that are not applied. Apply them or take them back first.");
  outputs_.Load();
  if (!outputs_.Standing().empty()) OfferToPutBack();
  if (!outputs_.Standing().empty())
    return Text("No further output is overridden before these are put back:") + "\r\n" +
           NamesOf(outputs_.Standing());
  steps_ = ReadSteps(main_.Device());
  return steps_.empty() ? Text("No output with a function drives its local hardware.") : std::string();
}

void fCheckOut::Open() {
  main_.Command("CheckOut", [this] {
    try {
      const std::string reason = WhyNot();
      if (reason.empty()) return Lead();
      Say(reason, ui::Icon::kInformation);
    } catch (const std::exception& error) {
      Tell(shell::InWords(strings_, error), ui::Icon::kExclamation);
    }
  });
}

void fCheckOut::Lead() {
  const std::string limit = ReadChoice(platform_.registry, settings_, kLimit);
  txtLimit.SetText(limit.empty() ? kUsualLimit : limit);
  results_ = notes_.Read()[configuration::kCheckOut];
  step_ = 0;
  started_ = timeOver_ = false;
  ShowSteps();
  Realize();
  Show();
  BringToFront();
  cmdStart.Focus();
  second_.Start();
  struct End {  // also where the loop ends before the window
    fCheckOut& window;
    ~End() {
      window.second_.Stop();
      window.Hide();
    }
  } const end{*this};
  platform_.loop.RunUntil([this] { return !Visible(); });
}

// --- one step ---

configuration::Line* fCheckOut::ResultOf(const Step& step) {
  const auto found = std::ranges::find_if(results_, [&](const configuration::Line& line) {
    return TextOf(line, "output") == std::to_string(step.Looked().output) &&
           TextOf(line, "function") == step.Looked().function && TextOf(line, "step") == step.position;
  });
  return found == results_.end() ? nullptr : &*found;
}

void fCheckOut::ShowSteps() {
  std::vector<ui::ListView::Row> rows;
  for (const Step& step : steps_) {
    const configuration::Line* line = ResultOf(step);
    const configuration::Line result = line ? *line : configuration::Line();
    const std::string when = TextOf(result, "when");
    rows.push_back({std::to_string(rows.size()),
                    {Text("Output %s1%", {std::to_string(step.Looked().output)}), step.Looked().function,
                     Text(step.position), line ? Text(TextOf(result, "result")) : std::string(),
                     TextOf(result, "remark"), TextOf(result, "who"), when.substr(0, when.find('T'))},
                    TextOf(result, "result") == kNotMoved ? logger::kExclamation : 0});
  }
  lvwSteps.SetRows(std::move(rows));
  lvwSteps.SetSelection({step_});
  lvwSteps.FitColumns();
  ShowState();
}

std::string fCheckOut::WhatHappens(const Step& step) const {
  const std::string output = std::to_string(step.Looked().output);
  const std::string& function = step.Looked().function;
  std::string text = step.Looked().state == "0" ? Text("Output %s1%, %s2%, switches OFF.", {output, function})
                     : host::GetOutputSignalClass(function) == host::SignalClass::kOnOff
                         ? Text("Output %s1%, %s2%, switches ON.", {output, function})
                         : Text("Output %s1%, %s2%, goes to %s3%.", {output, function, step.position});
  if (step.overrides.size() > 1)
    text.append(" ").append(Text("%s1% stays OFF meanwhile.", {step.overrides.back().function}));
  return text;
}

void fCheckOut::ShowState() {
  const bool standing = !outputs_.Standing().empty();
  const bool stuck = standing && !started_;
  lblStep.SetText(WhatHappens(steps_[step_]));
  if (stuck) {
    lblState.SetText(Text("NOT PUT BACK: the output may still be overridden."));
  } else if (standing) {
    lblState.SetText(
        Text("The output is overridden and goes back by itself in %s1% sec. Did it move as expected?",
             {std::to_string(outputs_.Left().count())}));
  } else {
    lblState.SetText(timeOver_ ? Text("The time is over and the output went back. Did it move as expected?")
                               : Text("Start overrides the output until you have answered."));
  }
  cmdStart.SetText(Text(stuck ? "&Put back" : "&Start"));
  cmdStart.SetEnabled(stuck || !started_ || timeOver_);
  cmdYes.SetEnabled(started_);
  cmdNo.SetEnabled(started_);
  cmdSkip.SetEnabled(!stuck);
  txtLimit.SetEnabled(!standing);
  defaultButton = started_ ? nullptr : &cmdStart;  // Enter behind a remark answers nothing
}

void fCheckOut::ChooseStep() {
  const bool free = outputs_.Standing().empty() && !outputs_.Busy() && !lvwSteps.Selection().empty();
  if (!free) return lvwSteps.SetSelection({step_});
  step_ = lvwSteps.Selection().front();
  started_ = timeOver_ = false;
  ShowState();
}

void fCheckOut::StartStep() {
  if (outputs_.Busy()) return;
  if (!outputs_.Standing().empty()) {
    PutBack();
    return ShowState();
  }
  const auto limit = settings_.numbers.Parse(txtLimit.Text()).value_or(0);
  if (limit < kShortestLimit || limit > kLongestLimit || limit != static_cast<int>(limit)) {
    Say(Text("The time limit is a whole number of seconds from %s1% to %s2%.",
             {std::to_string(kShortestLimit), std::to_string(kLongestLimit)}),
        ui::Icon::kExclamation);
    return txtLimit.Focus();
  }
  KeepChoice(platform_.registry, settings_, kLimit, txtLimit.Text());
  timeOver_ = false;
  try {
    const ui::WaitPointer pointer(platform_.loop);
    outputs_.Start(steps_[step_], std::chrono::seconds(static_cast<int>(limit)));
    started_ = true;
  } catch (const std::exception& error) {
    started_ = false;
    if (outputs_.Standing().empty()) {
      Tell(shell::InWords(strings_, error), ui::Icon::kExclamation);
    } else {
      TellStanding();
    }
  }
  ShowState();
  if (started_) cmdYes.Focus();
}

void fCheckOut::Tick() {
  if (outputs_.Busy() || !started_ || outputs_.Standing().empty()) return;
  if (outputs_.Left() == 0s) {
    timeOver_ = PutBack();
    started_ = timeOver_;  // the answer is due; what is stuck goes first
  }
  if (Visible()) ShowState();
}

void fCheckOut::Answer(const char* result) {
  if (outputs_.Busy()) return;
  if (result == std::string_view(kNotMoved) && base::Trim(txtRemark.Text()).empty()) {
    Say(Text("Say in the remark what happened instead."), ui::Icon::kInformation);
    return txtRemark.Focus();
  }
  const bool back = PutBack();
  started_ = timeOver_ = false;
  Keep(result);
  txtRemark.SetText({});
  if (back && step_ + 1 < steps_.size()) ++step_;
  ShowSteps();
  if (Visible()) cmdStart.Focus();
}

void fCheckOut::Keep(const char* result) {
  const Step& step = steps_[step_];
  configuration::Line line = {{"output", std::to_string(step.Looked().output)},
                              {"function", step.Looked().function},
                              {"step", step.position},
                              {"result", result},
                              {"remark", std::string(base::Trim(txtRemark.Text()))},
                              {"who", settings_.userName},
                              {"when", configuration::UtcText(std::time(nullptr))}};
  if (configuration::Line* former = ResultOf(step)) {
    *former = std::move(line);
  } else {
    results_.push_back(std::move(line));
  }
  try {
    notes_.Keep(configuration::kCheckOut, results_);
  } catch (const std::exception& error) {
    Tell(shell::InWords(strings_, error), ui::Icon::kExclamation);
  }
}

}  // namespace checkout
