// The window of the virtual building: its devices with what they are, and what happened in it. From here a
// person starts the tool for a device, as in any host. Used by the program's entry point and by scripts that
// show it.
#pragma once

#include "simulator/win32/events.h"
#include "simulator/win32/host.h"
#include "ui/event_loop.h"
#include "ui/form.h"
#include "ui/prompts.h"

namespace simhost {

class HostWindow : public ui::Window {
 public:
  HostWindow(Host& host, ui::EventLoop& loop, ui::Prompts& prompts);

  /// A notice of the program itself, in the list of events.
  void Note(const std::string& sentence);

 private:
  void ShowDevices();
  void ShowEvents();
  void Configure();
  void Tell(const std::string& text);

  Host& host_;
  ui::EventLoop& loop_;
  ui::Prompts& prompts_;
  Events events_;
  ui::Timer timer_;

  ui::Frame fraDevices{*this, "fraDevices"};
  ui::ListView lvwDevices{*this, "lvwDevices"};
  ui::Button cmdConfigure{*this, "cmdConfigure"};
  ui::Button cmdRefresh{*this, "cmdRefresh"};
  ui::Button cmdClose{*this, "cmdClose"};
  ui::Frame fraEvents{*this, "fraEvents"};
  ui::ListView lvwEvents{*this, "lvwEvents"};
};

}  // namespace simhost
