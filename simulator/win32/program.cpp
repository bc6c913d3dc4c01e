#include "simulator/win32/program.h"

#include <thread>

#include "platform/win32/com/registration.h"
#include "simulator/win32/console.h"
#include "simulator/win32/runner.h"
#include "simulator/win32/setup.h"
#include "simulator/win32/stage.h"

namespace simhost {
namespace {

constexpr std::chrono::milliseconds kLookInterval{500};
// Whoever had the system start this program asks for an object at once, or never.
constexpr std::chrono::seconds kUnusedTime{60};

}  // namespace

Program::Program(const Options& options, std::span<const Command> moreCommands)
    : options_(options),
      moreCommands_(moreCommands),
      loop_([this](const std::string& text) { Fault(text); }),
      toolkit_(loop_),
      prompts_(toolkit_),
      host_(options) {}

Program::~Program() { ShowWindow(false); }

void Program::Fault(const std::string& text) {
  WriteLine(text);
  if (window_) window_->Note(text);
}

void Program::ShowWindow(bool show) {
  if (window_) toolkit_.Discard(*window_);
  window_.reset();
  if (!show) return;
  window_ = std::make_unique<HostWindow>(host_, loop_, prompts_, toolkit_);
  toolkit_.Realize(*window_);
  window_->Show();
}

int Program::RunWindow() {
  // A tool that is still open keeps its host: the building serves on without its window until the tool is
  // closed.
  const auto quitWhenUnused = [this] {
    if (!window_->Visible() && host_.Outstanding() == 0) loop_.Quit();
  };
  host_.Serve(quitWhenUnused);
  ShowWindow(true);
  window_->onClosed = [this, quitWhenUnused] {
    host_.ReleaseAllTools();
    quitWhenUnused();
  };
  return loop_.Run();
}

int Program::RunScripts() {
  ui::Timer look(loop_, kLookInterval);
  look.onTick = [this] {
    if (!window_) host_.ReleaseClosedTools();  // the window looks itself, and tells of it
  };
  look.Start();
  Stage stage(host_, thread_, [this](bool show) { ShowWindow(show); });
  int failed = 0;
  std::thread scripts([&] {
    Runner runner(stage, options_.settings, moreCommands_);
    for (const auto& script : options_.scripts) failed += runner.Run(script) ? 0 : 1;
    thread_.Post([this] { loop_.Quit(); });
  });
  loop_.Run();
  scripts.join();
  return failed == 0 ? 0 : 1;
}

int Program::RunServer() {
  host_.Serve([this] { loop_.Quit(); });
  ui::Timer unused(loop_, kUnusedTime);
  unused.onTick = [this] {
    if (host_.Outstanding() == 0) loop_.Quit();
  };
  unused.Start();
  return loop_.Run();
}

int Program::Register() {
  win32::RegisterServer(host_.Classes(), 0);
  RegisterControls();
  return 0;
}

int Program::Unregister() {
  UnregisterControls();
  win32::UnregisterServer(host_.Classes(), 0);
  return 0;
}

}  // namespace simhost
