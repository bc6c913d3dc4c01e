// The automation class through which the host drives the tool: it takes the connection and identity
// properties and, on SendCommand, checks the server, joins the network, loads the device template and opens
// the main window. Every failure reaches the host as the application-defined automation error with the
// application title as its source.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "automation/local_object.h"
#include "plugin/plugin_description.h"
#include "plugin/window_agent.h"
#include "shell/main_window.h"
#include "shell/wait_window.h"

namespace plugin {

/// What all automation objects of the process share: the settings and the one main window. Owned by the
/// composition root, outlives every automation object.
class Program {
 public:
  /// `quit` ends the process; called at most once per main window, or when an object goes without one, or
  /// when the device's window is in another process.
  Program(const shell::Platform& platform, SharedMemory& memory, DesktopWindows& windows,
          const PlugInDescription& description, const shell::Settings& settings,
          std::span<const shell::PageEntry> pageTable, std::function<void()> quit);

  const shell::Platform& GetPlatform() const { return platform_; }
  const shell::Settings& GetSettings() const { return settings_; }
  shell::Strings& GetStrings() { return strings_; }

  /// The main window, or nothing before the first SendCommand that got so far.
  shell::fMain* Window() const { return window_.get(); }
  shell::fMain& MakeWindow();
  /// Makes the main window ahead, while the host is still getting ready to command it.
  void Prepare();
  /// Lets other processes find the main window under `name` until it closes; not one that failed to load.
  void PublishWindow(const std::string& name);

  /// Brings the window that another process published under `name` to the front. After that this process has
  /// nothing to do: it ends when the host lets go, or soon by itself.
  CWindowAgent::Found RaisePublished(const std::string& name);
  /// True while this process waits for its end because the device's window is open in another one.
  bool GaveWay() const { return endSoon_.Running(); }
  /// Another command came: this process is needed after all.
  void TakeBack() { endSoon_.Stop(); }

  /// Brings the main window in front of other programs' windows.
  void RaiseWindow();

  /// Logs a fault of a handler that did not catch it; no when there is no window to log it in.
  bool Report(const std::string& fault);

  /// The last automation object was released, or the host's process died: ends the program unless a window is
  /// visible.
  void HostLetGo();

  /// A call of the host's member has been pending for `elapsed`, 5 s or more: answers whether the user gives
  /// it up.
  bool CallOverdue(std::string_view member, std::chrono::milliseconds elapsed) {
    return waiting_.Overdue(member, elapsed);
  }
  /// That call has ended.
  void CallOver() { waiting_.Over(); }
  shell::WaitWindow& Waiting() { return waiting_; }
  /// True when the main window was closed and the process is about to end.
  bool Ending() const { return window_ && window_->Ending(); }

 private:
  std::unique_ptr<shell::fMain> NewWindow();

  const shell::Platform& platform_;
  PlugInDescription description_;
  shell::Settings settings_;
  shell::Strings strings_;
  shell::WaitWindow waiting_;
  std::span<const shell::PageEntry> pageTable_;
  std::function<void()> quit_;
  CWindowAgent agent_;
  ui::Timer endSoon_;
  std::unique_ptr<shell::fMain> prepared_;
  std::unique_ptr<shell::fMain> window_;
};

class PlugInApi : public automation::LocalClass<PlugInApi> {
 public:
  explicit PlugInApi(Program& program) : program_(program) {}
  ~PlugInApi() override { program_.HostLetGo(); }

  /// Both bring the plug-in up on the device and block that the properties name; no argument is examined, the
  /// host's command ids carry no meaning here.
  void SendCommand();
  void InitializePlugIn() { SendCommand(); }

 private:
  friend class automation::LocalClass<PlugInApi>;
  static const automation::MemberOf<PlugInApi> kMembers[24];

  friend struct Members;  // the functions of the table

  /// Tells the caller in the language in use; `text` and `arguments` as FormatStrings takes them.
  [[noreturn]] void Raise(std::string_view text, const std::vector<std::string>& arguments = {}) const;
  /// Runs one step of the start-up sequence; any fault of the host in it becomes `failure`, which is looked
  /// up only then.
  template <class Step>
  auto Try(std::string_view failure, const std::vector<std::string>& arguments, Step step) const;
  void BringUp();
  void CheckServerVersion() const;
  automation::Object JoinNetwork(const automation::Object& server) const;
  void OpenSession(const automation::Object& network, int lmoIndex) const;
  automation::Object FindDevice(const automation::Object& network) const;
  void LoadTemplate(const automation::Object& device, int lmoIndex) const;
  std::string BlockName(const automation::Object& device, int lmoIndex) const;
  /// True when the window is open already; the same device is brought to the front, another one refused.
  bool RaiseOpenWindow();
  /// True when another process has its window open on the device; it is brought to the front.
  bool RaiseOtherProcess() const;
  /// The network and where its server is; for messages and for the published name.
  std::string NetworkPlace() const;
  std::string WindowName() const;

  void SetVisible(bool visible);
  /// Does what was asked for while the window was hidden.
  void ApplyMinimized();
  void SetMinimized(bool minimized);
  void MoveTo(int left, int top);
  ui::Bounds Bounds() const;

  Program& program_;
  std::string networkName_;
  std::string networkInterfaceName_;
  bool remote_ = false;
  std::string ovxServerVersion_;
  std::string developmentProgramId_;
  std::string networkIpAddress_;
  std::int32_t networkIpPort_ = 0;
  std::string folderName_;
  std::string deviceName_;
  std::string lmoIndex_;
  std::string code_;
  std::string openDevice_;  // what the window was opened on
  std::string openWindow_;  // its published name
  bool comingUp_ = false;
  std::optional<bool> minimizeWhenShown_;
};

}  // namespace plugin
