#include "host/contract.h"
#include "logger/message_logger.h"
#include "plugin/plugin_api.h"

namespace plugin {
namespace {

// For a host that keeps hold of a tool without a window; others let go at once. Longer than a host needs to
// ask for properties after its command.
constexpr auto kEndDelay = std::chrono::seconds(10);

}  // namespace

Program::Program(const shell::Platform& platform, SharedMemory& memory, DesktopWindows& windows,
                 const PlugInDescription& description, const shell::Settings& settings,
                 std::span<const shell::PageEntry> pageTable, std::function<void()> quit)
    : platform_(platform),
      description_(description),
      settings_(settings),
      strings_([&platform] { return platform.createObject(host::kLanguageId); }),
      waiting_(platform.toolkit),
      pageTable_(pageTable),
      quit_(std::move(quit)),
      agent_(memory, windows),
      endSoon_(platform.loop, kEndDelay) {
  strings_.onLoaded = [this] { waiting_.InitStrings(strings_); };
  endSoon_.onTick = [this] {
    endSoon_.Stop();
    quit_();
  };
}

std::unique_ptr<shell::fMain> Program::NewWindow() {
  return std::make_unique<shell::fMain>(platform_, settings_, strings_, pageTable_, quit_);
}

void Program::Prepare() {
  if (window_ || prepared_) return;
  try {
    const shell::Strings::Hold hold(strings_);
    prepared_ = NewWindow();
    prepared_->Prepare();
  } catch (const std::exception&) {
    prepared_.reset();  // the command tries again and tells the host
  }
}

shell::fMain& Program::MakeWindow() {
  window_ = std::exchange(prepared_, nullptr);
  if (window_) {
    window_->ReInitializeStrings();
  } else {
    window_ = NewWindow();
  }
  window_->onEnding = [this] { agent_.Withdraw(); };
  return *window_;
}

void Program::PublishWindow(const std::string& name) {
  const ui::WindowPeer* native = window_->GetWindowPeer();
  if (!native || window_->Ending() || !window_->Tag().empty()) return;
  agent_.onError = [this](int number, std::string_view className, std::string_view routine,
                          std::string_view message) {
    window_->AddMessage(strings_.GetStrings(message), routine, className, number);
  };
  agent_.WindowHandleInMemory(name, native->Handle());
}

CWindowAgent::Found Program::RaisePublished(const std::string& name) {
  const auto found = agent_.RaisePublished(name);
  if (found == CWindowAgent::Found::kRaised) {
    prepared_.reset();
    endSoon_.Start();
  }
  return found;
}

void Program::RaiseWindow() {
  const ui::WindowPeer* native = window_->GetWindowPeer();
  if (!native) return;
  constexpr std::int16_t kRestored = 2;
  agent_.ShowWindowByHandle(kRestored, native->Handle(), window_->State() == ui::WindowState::kMaximized);
}

bool Program::Report(const std::string& fault) {
  if (!window_) return false;
  window_->AddMessage(fault, "Report", "Main", logger::kError);
  return true;
}

void Program::HostLetGo() {
  if (!window_) return quit_();
  if (!window_->Visible() && !window_->Ending()) window_->EndPlugIn();
}

}  // namespace plugin
