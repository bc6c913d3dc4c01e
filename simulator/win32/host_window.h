// The window of the virtual building: its devices with what they are, and what happened in it. From here a
// person starts the tool for a device, as in any host, and adds units or takes them away. Used by the
// program's entry point and by scripts that show it.
#pragma once

#include "simulator/win32/events.h"
#include "simulator/win32/host.h"
#include "simulator/win32/unit_dialog.h"
#include "ui/event_loop.h"
#include "ui/form.h"
#include "ui/prompts.h"

namespace simhost {

class HostWindow : public ui::Window {
 public:
  HostWindow(Host& host, ui::EventLoop& loop, ui::Prompts& prompts, ui::Toolkit& toolkit);
  ~HostWindow() override;

  /// A notice of the program itself, in the list of events.
  void Note(const std::string& sentence);

 private:
  /// The name of the selected device; empty, after a word to the person, when none is.
  std::string Selected();
  void ShowDevices();
  void ShowEvents();
  void Configure();
  void AskForUnit();
  bool AddUnit(const std::string& name, const std::string& location);
  void RemoveUnit();
  void Tell(const std::string& text);

  Host& host_;
  ui::EventLoop& loop_;
  ui::Prompts& prompts_;
  ui::Toolkit& toolkit_;
  UnitDialog dialog_;
  Events events_;
  ui::Timer timer_;

  ui::Frame fraDevices{*this, "fraDevices"};
  ui::ListView lvwDevices{*this, "lvwDevices"};
  ui::Button cmdConfigure{*this, "cmdConfigure"};
  ui::Button cmdNew{*this, "cmdNew"};
  ui::Button cmdRemove{*this, "cmdRemove"};
  ui::Button cmdRefresh{*this, "cmdRefresh"};
  ui::Button cmdClose{*this, "cmdClose"};
  ui::Frame fraEvents{*this, "fraEvents"};
  ui::ListView lvwEvents{*this, "lvwEvents"};
};

}  // namespace simhost
