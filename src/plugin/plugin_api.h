// The automation class through which the host drives the tool: it takes the connection and identity
// properties and, on SendCommand, checks the server, joins the network, loads the device template and opens
// the main window. Every failure reaches the host as the application-defined automation error with the
// application title as its source.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/local_object.h"
#include "host/session.h"
#include "plugin/program.h"

namespace plugin {

class PlugInApi : public automation::LocalClass<PlugInApi> {
 public:
  explicit PlugInApi(Program& program) : program_(program) { program_.Attach(); }
  ~PlugInApi() override { program_.Detach(); }

  /// Brings the plug-in up on the device and block that the properties name. InitializePlugIn does the same;
  /// no argument of either is examined, the host's command ids carry no meaning here.
  void SendCommand();

 private:
  friend class automation::LocalClass<PlugInApi>;
  static const automation::MemberOf<PlugInApi> kMembers[24];

  friend struct Members;  // the functions of the table

  /// Tells the caller in the language in use; `text` and `arguments` as FormatStrings takes them.
  [[noreturn]] void Raise(std::string_view text, const std::vector<std::string>& arguments = {}) const;
  void BringUp();
  void CheckServerVersion() const;
  host::SessionRequest Request(int lmoIndex) const;
  void LoadWindow(const host::Session& session, const host::SessionRequest& request);
  /// True when the window is open already; the same device is brought to the front, another one refused.
  bool RaiseOpenWindow();
  /// True when another process has its window open on the device; it is brought to the front.
  bool RaiseOtherProcess() const;
  std::string WindowName() const;

  /// The main window, unless a start was refused or it is closing: what is asked of it then holds for the
  /// next one.
  shell::fMain* UsableWindow() const;
  void SetVisible(bool visible);
  /// Does what was asked for while the window was hidden.
  void ApplyMinimized();
  void SetMinimized(bool minimized);
  void MoveTo(std::optional<int> left, std::optional<int> top);
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

  // What the host asked of a window that was not there yet.
  std::optional<int> leftWhenOpened_;
  std::optional<int> topWhenOpened_;
  bool visibleWhenOpened_ = true;
  std::optional<bool> minimizeWhenShown_;
};

}  // namespace plugin
