#include "simulator/win32/entry.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <fmt/format.h>

#include "platform/win32/system/process.h"
#include "platform/win32/system/text.h"
#include "simulator/win32/console.h"
#include "simulator/win32/options.h"
#include "simulator/win32/program.h"

namespace simhost {
namespace {

constexpr char kTitle[] = "Virtual building";
constexpr int kCannotRun = 2;  // as against 1, a script that did not hold

std::vector<std::wstring> Arguments() {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (!words) return {};
  std::vector<std::wstring> arguments(words + 1, words + count);
  LocalFree(static_cast<void*>(words));
  return arguments;
}

int Help(std::span<const Command> moreCommands) {
  WriteLine(Usage() +
            "\n\nCommands of a script, one a line; text that holds blanks stands in quotation marks:");
  for (const auto commands : {HostCommands(), WindowCommands(), moreCommands}) {
    for (const Command& command : commands) WriteLine(fmt::format("  {} {}", command.name, command.usage));
  }
  WriteLine("  expect-error text [source]      behind a command that is to fail");
  WriteLine("  each NAME = TEXTS               the steps down to \"end\", with each of the texts as ${NAME}");
  WriteLine("\nQuestions of expect and remember:\n" + QuestionUsage());
  return 0;
}

int Do(const Options& options, std::span<const Command> moreCommands) {
  if (options.task == Task::kHelp) return Help(moreCommands);
  Program program(options, moreCommands);
  switch (options.task) {
    case Task::kRegister:
      return program.Register();
    case Task::kUnregister:
      return program.Unregister();
    case Task::kServe:
      return program.RunServer();
    case Task::kScripts:
      return program.RunScripts();
    default:
      return program.RunWindow();
  }
}

}  // namespace

int Main(std::span<const Command> moreCommands) {
  OpenConsole();
  try {
    return Do(ParseOptions(Arguments(), win32::Wide(win32::ProgramFolder())), moreCommands);
  } catch (const std::exception& error) {
    win32::ReportFailure(kTitle, error.what());
    return kCannotRun;
  }
}

}  // namespace simhost
