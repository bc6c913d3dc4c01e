#include "plugin/program.h"

#include <utility>

#include "advice/fAdvice.h"
#include "checkout/fCheckOut.h"
#include "configuration/desk.h"
#include "fleet/fleet.h"
#include "host/contract.h"
#include "logger/message_logger.h"

namespace plugin {
namespace {

using namespace std::chrono_literals;

// The host's call that closed the window or let go must be able to return before the process ends.
constexpr auto kReturnTime = 100ms;
// For a host that keeps hold of a tool without a window; others let go at once. Longer than a host needs to
// ask for properties after its command.
constexpr auto kGaveWayTime = 10s;
// The system hands over the client that it started the server for as soon as the classes are offered.
constexpr auto kArrivalTime = 60s;

shell::Platform With(const shell::Platform& platform, ui::Prompts& prompts, ui::FileDialog& fileDialog) {
  return {.toolkit = platform.toolkit,
          .prompts = prompts,
          .loop = platform.loop,
          .fileDialog = fileDialog,
          .help = platform.help,
          .controls = platform.controls,
          .registry = platform.registry,
          .locale = platform.locale,
          .createObject = platform.createObject,
          .readFile = platform.readFile};
}

}  // namespace

Program::Program(const shell::Platform& platform, SharedMemory& memory, DesktopWindows& windows,
                 const PlugInDescription& description, const shell::Settings& settings,
                 std::span<const shell::PageEntry> pageTable, std::function<void()> quit)
    : prompts_(platform.prompts, activity_),
      fileDialog_(platform.fileDialog, activity_),
      platform_(With(platform, prompts_, fileDialog_)),
      description_(description),
      settings_(settings),
      strings_([this] { return platform_.createObject(host::kLanguageId); }),
      waiting_(platform.toolkit, activity_),
      pageTable_(pageTable),
      quit_(std::move(quit)),
      agent_(memory, windows),
      end_(
          platform.loop, Reasons(), [this] { return Busy(); }, [this] { End(); }) {
  strings_.onLoaded = [this] { waiting_.InitStrings(strings_); };
  agent_.onError = [this](int, std::string_view, std::string_view routine, std::string_view message) {
    Note(strings_.GetStrings(message), routine);
  };
  end_.Look();
}

// --- the end ---

std::vector<EndOfProgram::Reason> Program::Reasons() {
  return {
      // The user closed the main window, and has read why it could not open.
      {kReturnTime, [this] { return window_ && window_->Closed(); }},
      // Nobody uses the program: neither a host nor a person.
      {kReturnTime, [this] { return everHeld_ && !Held() && !SomethingToSee(); }},
      // The device's window is open in another process.
      {kGaveWayTime, [this] { return gaveWay_; }},
      // Started for a client that never came.
      {kArrivalTime, [this] { return !everHeld_ && !Held(); }},
  };
}

bool Program::Held() const { return !clientsGone_ && (attached_ > 0 || (outstanding && outstanding() > 0)); }

bool Program::SomethingToSee() const {
  const auto shown = [](const auto& window) {
    return window && !window->Closed() && (window->Visible() || window->Refused());
  };
  return shown(window_) || shown(refused_);
}

void Program::End() {
  if (window_) window_->EndPlugIn();
  quit_();
}

void Program::Attach() {
  ++attached_;
  Needed();
}

void Program::Detach() {
  --attached_;
  end_.Look();
}

void Program::Needed() {
  everHeld_ = true;
  clientsGone_ = false;
  gaveWay_ = false;
  end_.Look();
}

void Program::Released() {
  everHeld_ = true;
  end_.Look();
}

void Program::ClientsGone() {
  everHeld_ = true;
  clientsGone_ = true;
  end_.Look();
}

// --- the main window ---

std::unique_ptr<shell::fMain> Program::NewWindow() {
  auto window = std::make_unique<shell::fMain>(platform_, settings_, strings_, pageTable_, activity_,
                                               [this] { WindowEnding(); });
  auto desk = std::make_unique<configuration::Desk>(*window, platform_, settings_, strings_, pageTable_);
  auto fleet = std::make_unique<fleet::Fleet>(*window, *desk, platform_, settings_, strings_);
  auto advice = std::make_unique<advice::fAdvice>(*window, platform_, settings_, strings_);
  desk->onAdvise = [&advice = *advice](const auto& snapshot) { return advice.AdviceOn(snapshot); };
  window->Add(std::move(desk));
  window->Add(std::move(fleet));
  window->Add(std::move(advice));
  window->Add(std::make_unique<checkout::fCheckOut>(*window, platform_, settings_, strings_));
  return window;
}

void Program::WindowEnding() {
  if (window_ && window_->Ending()) agent_.Withdraw();
  end_.Look();
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

shell::fMain& Program::MakeWindow(const std::string& device, const std::string& name) {
  if (!prepared_) prepared_ = NewWindow();
  prepared_->MakeNative();
  window_ = std::exchange(prepared_, nullptr);
  openDevice_ = device;
  openName_ = name;
  if (window_->Pages().Count() > 0) window_->InitStrings();  // those of the pages come with their values
  for (const Noted& note : std::exchange(notes_, {})) {
    window_->AddMessage(note.message, note.routine, "OVXPlugInAPI", logger::kError);
  }
  return *window_;
}

Program::ComingUp::ComingUp(Program& program, const std::string& name) : program_(program) {
  program_.comingUp_ = true;
  if (program_.window_) program_.refused_ = std::move(program_.window_);
  program_.Prepare();
  const ui::WindowPeer* native = program_.prepared_ ? program_.prepared_->GetWindowPeer() : nullptr;
  if (native) program_.agent_.WindowHandleInMemory(name, native->Handle(), CWindowAgent::Phase::kLoading);
}

Program::ComingUp::~ComingUp() {
  const shell::fMain* window = program_.Window();
  if (window && !window->Refused() && !window->Ending()) {
    program_.agent_.Loaded();
  } else {
    program_.agent_.Withdraw();
  }
  program_.comingUp_ = false;
  program_.end_.Look();
}

CWindowAgent::Found Program::RaisePublished(const std::string& name) {
  const auto found = agent_.RaisePublished(name);
  if (found == CWindowAgent::Found::kRaised) {
    prepared_.reset();
    gaveWay_ = true;
    end_.Look();
  }
  return found;
}

void Program::RaiseWindow() {
  const ui::WindowPeer* native = window_->GetWindowPeer();
  if (!native) return;
  constexpr std::int16_t kRestored = 2;
  agent_.ShowWindowByHandle(kRestored, native->Handle(), window_->State() == ui::WindowState::kMaximized);
}

void Program::Note(const std::string& message, std::string_view routine) {
  if (window_) return window_->AddMessage(message, routine, "OVXPlugInAPI", logger::kError);
  notes_.push_back({message, std::string(routine)});
}

bool Program::Report(const std::string& fault) {
  if (!window_) return false;
  window_->AddMessage(fault, "Report", "Main", logger::kError);
  return true;
}

}  // namespace plugin
