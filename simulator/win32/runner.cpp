#include "simulator/win32/runner.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "simulator/win32/console.h"
#include "simulator/win32/tool_process.h"

namespace simhost {
namespace {

constexpr std::string_view kExpectError = "expect-error";
constexpr std::string_view kEach = "each";
constexpr std::string_view kEnd = "end";
constexpr std::chrono::seconds kEndTime{5};

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

bool ExpectsError(const Step& step) { return step.words[0].text == kExpectError && !step.words[0].quoted; }

std::size_t WordCount(std::string_view name) { return name.find(' ') == name.npos ? 1 : 2; }

}  // namespace

bool Runner::Run(const std::filesystem::path& file) {
  const auto start = Clock::now();
  WriteLine(file.filename().string());
  if (!ToolProcesses().empty()) {
    WriteLine("FAILED: a tool that this script did not start is running; close it first.");
    return false;
  }
  bool held = false;
  try {
    stage_.order = {};
    stage_.patience.interrupt = [this] { stage_.ThrowFailure(); };
    stage_.remembered = settings_;
    stage_.otherHost.reset();
    stage_.OnHost([](Host& host) { host.Reopen(); });
    RunSteps(file, ReadScript(file));
    stage_.WaitOrder();
    held = true;
  } catch (const std::exception& error) {
    WriteLine(error.what());
  }
  try {
    ReleaseAll(held);
  } catch (const std::exception& error) {
    WriteLine(fmt::format("{}: at the end: {}", file.string(), error.what()));
    held = false;
  }
  WriteLine(fmt::format("{} {} after {:.1f} s", file.filename().string(), held ? "held" : "FAILED",
                        SecondsSince(start)));
  return held;
}

void Runner::RunSteps(const std::filesystem::path& file, Steps steps) {
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const Step& step = steps[i];
    const auto failure = [&](const std::string& text) {
      return base::Error(
          fmt::format("FAILED {}:{}: {}\n        {}", file.string(), step.line, step.source, text));
    };
    if (step.words[0].text == kEach) {
      i += RunEach(file, steps.subspan(i));
      continue;
    }
    if (ExpectsError(step)) {
      if (i > 0 && !ExpectsError(steps[i - 1])) continue;  // done with the step before
      throw failure("there is no step before it that could fail");
    }
    const Step* next = i + 1 < steps.size() && ExpectsError(steps[i + 1]) ? &steps[i + 1] : nullptr;
    const auto start = Clock::now();
    try {
      stage_.ThrowFailure();
      next ? RequireFailure(step, *next) : Perform(step);
    } catch (const automation::Error& error) {
      throw failure(
          fmt::format("error 0x{:08X} from \"{}\": {}", error.Code(), error.Source(), error.what()));
    } catch (const std::exception& error) {
      throw failure(error.what());
    }
    WriteLine(fmt::format("  {:4}  {} ({:.2f} s)", step.line, step.source, SecondsSince(start)));
  }
}

std::size_t Runner::RunEach(const std::filesystem::path& file, Steps steps) {
  const std::vector<Word>& words = steps[0].words;
  const auto end = std::ranges::find(steps, kEnd, [](const Step& step) { return step.words[0].text; });
  if (words.size() != 4 || words[2].text != "=" || end == steps.end())
    throw base::Error(file.string() + ": it is written: each NAME = \"texts\", steps, end");
  const auto last = static_cast<std::size_t>(end - steps.begin());
  for (const std::string& text : base::Split(words[3].text, " ")) {
    WriteLine("        " + words[1].text + " = " + text);
    stage_.remembered[words[1].text] = text;
    RunSteps(file, steps.subspan(1, last - 1));
  }
  return last;
}

void Runner::Perform(const Step& step) {
  std::vector<Word> words = step.words;
  for (Word& word : words) word.text = Expand(word.text, stage_.remembered);
  const Command* command = FindCommand(words);
  if (!command) throw base::Error("there is no command \"" + words[0].text + "\"");
  const Words rest = Words(words).subspan(WordCount(command->name));
  if (rest.size() < command->least || rest.size() > command->most) {
    throw base::Error(fmt::format("it is written: {} {}", command->name, command->usage));
  }
  command->run(stage_, rest);
}

const Command* Runner::FindCommand(Words words) const {
  const std::string one = words[0].text;
  const std::string two = words.size() > 1 ? one + ' ' + words[1].text : one;
  const Command* found = nullptr;
  for (const auto commands : {HostCommands(), WindowCommands(), more_}) {
    for (const Command& command : commands) {
      if (command.name == two) return &command;
      if (command.name == one) found = &command;
    }
  }
  return found;
}

void Runner::RequireFailure(const Step& step, const Step& expectedError) {
  if (expectedError.words.size() < 2 || expectedError.words.size() > 3) {
    throw base::Error("it is written: expect-error text [source]");
  }
  const std::string text = Expand(expectedError.words[1].text, stage_.remembered);
  std::string complaint = "expected the error \"" + text + "\", but there was none";
  try {
    Perform(step);
    stage_.WaitOrder();
  } catch (const automation::Error& error) {
    complaint = Difference("error", text, error.Description());
    if (complaint.empty() && expectedError.words.size() == 3) {
      complaint = Difference("source of the error", expectedError.words[2].text, error.Source());
    }
  } catch (const base::Error& error) {
    complaint = Difference("error", text, error.what());
  }
  if (!complaint.empty()) throw base::Error(complaint);
}

// The tool belongs to the script: when the script let it end as it should, none runs now.
void Runner::ReleaseAll(bool held) {
  std::string complaint;
  try {
    stage_.OnHost([show = stage_.showHostWindow](Host& host) {
      host.ReleaseAllTools();
      show(false);
    });
    if (held) {
      stage_.patience.With(kEndTime).Until([] { return ToolProcesses().empty(); },
                                           "the tool is still running");
    }
  } catch (const base::Error& error) {
    complaint = error.what();
  }
  EndToolProcesses();
  if (held && !complaint.empty()) throw base::Error(complaint);
}

}  // namespace simhost
