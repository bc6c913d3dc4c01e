// What all automation objects of the process share: the settings, the texts, the one main window and its
// published name, and the end of the program. Owned by the composition root, outlives every automation
// object.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/end_of_program.h"
#include "plugin/plugin_description.h"
#include "plugin/window_agent.h"
#include "shell/activity.h"
#include "shell/main_window.h"
#include "shell/wait_window.h"

namespace plugin {

class Program {
 public:
  /// `quit` ends the message loop; called at most once. Nothing is freed before the loop has returned, so
  /// whatever is still running comes to its own end first.
  Program(const shell::Platform& platform, SharedMemory& memory, DesktopWindows& windows,
          const PlugInDescription& description, const shell::Settings& settings,
          std::span<const shell::PageEntry> pageTable, std::function<void()> quit);

  /// What the composition root gave, with prompts and file dialogs that count as activity.
  const shell::Platform& GetPlatform() const { return platform_; }
  const shell::Settings& GetSettings() const { return settings_; }
  shell::Strings& GetStrings() { return strings_; }

  std::span<const shell::PageEntry> PageTable() const { return pageTable_; }

  /// True while nothing else may be begun: a command, a question or a start is under way.
  bool Busy() const { return comingUp_ || activity_.Busy(); }
  bool IsComingUp() const { return comingUp_; }

  /// A start, from the host's command to the open window. Other processes find the loading window under
  /// `name` meanwhile; afterwards they find the open one, or nothing.
  class ComingUp {
   public:
    ComingUp(Program& program, const std::string& name);
    ComingUp(const ComingUp&) = delete;
    ComingUp& operator=(const ComingUp&) = delete;
    ~ComingUp();

   private:
    Program& program_;
  };

  /// Work for a script: nothing else is begun meanwhile, and nobody is there to be asked about a silent host.
  class Unattended {
   public:
    explicit Unattended(Program& program) : program_(program), scope_(program.activity_) {
      ++program_.unattended_;
    }
    ~Unattended() {
      --program_.unattended_;
      program_.end_.Look();
    }

   private:
    Program& program_;
    shell::Activity::Scope scope_;
  };

  /// The main window, or nothing before the first command that got so far, and after one that was refused.
  shell::fMain* Window() const { return window_.get(); }
  /// Makes it, hidden, where it last was. `device` and `name` are what it is opened on and its published
  /// name. Throws base::Error when the system cannot; everything is as before then.
  shell::fMain& MakeWindow(const std::string& device, const std::string& name);
  const std::string& OpenDevice() const { return openDevice_; }
  const std::string& OpenName() const { return openName_; }
  /// Makes the main window ahead, while the host is still getting ready to command it.
  void Prepare();
  /// Brings the main window in front of other programs' windows.
  void RaiseWindow();

  /// Brings the window that another process published under `name` to the front. After that this process has
  /// nothing to do: it ends when the host lets go, or soon by itself.
  CWindowAgent::Found RaisePublished(const std::string& name);
  /// True while this process waits for its end because the device's window is open in another one.
  bool GaveWay() const { return gaveWay_; }
  /// A command came: this process is needed, and so is whoever sent it.
  void Needed();

  /// For the message log, which the host's own error does not go into: shown with the main window once there
  /// is one.
  void Note(const std::string& message, std::string_view routine);
  /// Logs a fault of a handler that did not catch it; no when there is no window to log it in.
  bool Report(const std::string& fault);

  // Who uses the process. None of these ends it at once.
  /// An automation object for the host was made, or has gone.
  void Attach();
  void Detach();
  /// Callers outside have let go of the last object or lock.
  void Released();
  /// The last process that is known to use this one has ended, whatever it still held.
  void ClientsGone();
  /// Whether anybody outside still uses an object here.
  bool Held() const;
  /// How many objects and locks callers outside hold; asked where it is set, since not every class of the
  /// server is the host's.
  std::function<int()> outstanding;

  /// A call of the host's member has been pending for `elapsed`, 5 s or more: answers whether the user gives
  /// it up. Without a user it is given up after a minute.
  bool CallOverdue(std::string_view member, std::chrono::milliseconds elapsed) {
    return unattended_ > 0 ? elapsed >= kUnattendedWait : waiting_.Overdue(member, elapsed);
  }
  /// That call has ended.
  void CallOver() { waiting_.Over(); }
  shell::WaitWindow& Waiting() { return waiting_; }
  /// True when the program ends as soon as nothing is under way.
  bool Ending() const { return end_.Due(); }

 private:
  static constexpr std::chrono::seconds kUnattendedWait{60};

  std::unique_ptr<shell::fMain> NewWindow();
  void WindowEnding();
  bool SomethingToSee() const;
  std::vector<EndOfProgram::Reason> Reasons();
  void End();

  shell::Activity activity_;
  shell::CountedPrompts prompts_;
  shell::CountedFileDialog fileDialog_;
  shell::Platform platform_;
  PlugInDescription description_;
  shell::Settings settings_;
  shell::Strings strings_;
  shell::WaitWindow waiting_;
  std::span<const shell::PageEntry> pageTable_;
  std::function<void()> quit_;
  CWindowAgent agent_;
  int attached_ = 0;
  bool everHeld_ = false;
  bool clientsGone_ = false;
  bool gaveWay_ = false;
  bool comingUp_ = false;
  int unattended_ = 0;
  struct Noted {
    std::string message;
    std::string routine;
  };
  std::vector<Noted> notes_;
  std::string openDevice_;
  std::string openName_;
  EndOfProgram end_;
  std::unique_ptr<shell::fMain> prepared_;
  std::unique_ptr<shell::fMain> refused_;  // a start that failed: its log stays until it was read
  std::unique_ptr<shell::fMain> window_;
};

}  // namespace plugin
