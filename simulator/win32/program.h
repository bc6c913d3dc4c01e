// The parts of the running program put together: COM, the message loop, windows, the host. One object for the
// life of the process, made and used by the entry point.
#pragma once

#include <memory>

#include "platform/win32/com/apartment.h"
#include "platform/win32/window/dialogs.h"
#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/toolkit.h"
#include "simulator/win32/commands.h"
#include "simulator/win32/host.h"
#include "simulator/win32/host_thread.h"
#include "simulator/win32/host_window.h"
#include "simulator/win32/options.h"

namespace simhost {

class Program {
 public:
  /// `moreCommands` are those that only this program's scripts have. Throws base::Error when the building
  /// cannot be opened.
  explicit Program(const Options& options, std::span<const Command> moreCommands);
  ~Program();

  /// Each does its task to the end and answers the exit code of the process.
  int RunWindow();
  int RunScripts();
  /// Started by the system for somebody who asked for the building: ends when nobody holds it any more.
  int RunServer();
  int Register();
  int Unregister();

 private:
  void ShowWindow(bool show);
  void Fault(const std::string& text);

  Options options_;
  std::span<const Command> moreCommands_;
  win32::ComApartment apartment_;
  win32::MessageLoop loop_;
  win32::NativeToolkit toolkit_;
  win32::MessagePrompts prompts_;
  Host host_;
  HostThread thread_;
  std::unique_ptr<HostWindow> window_;
};

}  // namespace simhost
