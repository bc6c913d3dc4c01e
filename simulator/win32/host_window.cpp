#include "simulator/win32/host_window.h"

#include <fmt/format.h>

#include <algorithm>

#include "automation/error.h"
#include "platform/win32/system/registry.h"

namespace simhost {
namespace {

constexpr char kTitle[] = "Virtual building";
constexpr std::chrono::milliseconds kLookInterval{500};

}  // namespace

HostWindow::HostWindow(Host& host, ui::EventLoop& loop, ui::Prompts& prompts, ui::Toolkit& toolkit)
    : ui::Window("fHost"),
      host_(host),
      loop_(loop),
      prompts_(prompts),
      toolkit_(toolkit),
      events_(host.GetBuilding()),
      timer_(loop, kLookInterval) {
  SetTitle(kTitle);
  fraDevices.SetText("Devices");
  lvwDevices.SetColumns({"Name", "Location", "Program id", "State"});
  cmdConfigure.SetText("&Configure...");
  cmdConfigure.SetTip("Opens the configuration tool for the selected device");
  cmdNew.SetText("&New unit...");
  cmdNew.SetTip("Adds a unit as it comes from the factory, to be prepared without a device");
  cmdRemove.SetText("Re&move unit...");
  cmdRemove.SetTip("Takes the selected unit and all its values out of the building");
  cmdRefresh.SetText("&Refresh");
  cmdClose.SetText("Cl&ose");
  fraEvents.SetText("Events");
  lvwEvents.SetColumns({"Time", "Event"});
  SetLayout(ui::Stack({ui::Grow(ui::Box(fraDevices, ui::Grow(ui::Item(lvwDevices)))),
                       ui::Line({ui::Item(cmdConfigure), ui::Item(cmdNew), ui::Item(cmdRemove),
                                 ui::Item(cmdRefresh), ui::GrowX(ui::Empty()), ui::Item(cmdClose)}),
                       ui::Grow(ui::Box(fraEvents, ui::Grow(ui::Item(lvwEvents))))}));
  defaultButton = &cmdConfigure;
  cancelButton = &cmdClose;
  // From the loop: the tool is started from an ordinary message, not from inside a notification of the
  // button.
  cmdConfigure.onClick = [this] { loop_.Post([this] { Configure(); }); };
  cmdNew.onClick = [this] { AskForUnit(); };
  cmdRemove.onClick = [this] { RemoveUnit(); };
  cmdRefresh.onClick = [this] { ShowDevices(); };
  cmdClose.onClick = [this] { Close(); };
  timer_.onTick = [this] { ShowEvents(); };
  dialog_.onAccept = [this](const auto& name, const auto& location) { return AddUnit(name, location); };
  // Before the dialog goes, or the system would bring another program to the front.
  dialog_.onQueryClose = [this] {
    SetAcceptsInput(true);
    return true;
  };
  ShowDevices();
  lvwDevices.SetSelection({0});
  timer_.Start();
}

HostWindow::~HostWindow() { toolkit_.Discard(dialog_); }

void HostWindow::Note(const std::string& sentence) {
  lvwEvents.AddRow(
      {std::to_string(lvwEvents.Rows().size()), {win32::WindowsLocale().GeneralDateNow(), sentence}});
  lvwEvents.FitColumns();
}

void HostWindow::ShowDevices() {
  const std::vector<std::size_t> selection = lvwDevices.Selection();
  std::vector<ui::ListView::Row> rows;
  for (const simulator::DeviceInfo& device : host_.GetBuilding().Devices()) {
    const char* state = host_.HasToolFor(device.name) ? "Being configured" : "Ready";
    rows.push_back({device.name, {device.name, device.location, device.programId, state}});
  }
  lvwDevices.SetRows(std::move(rows));
  lvwDevices.SetSelection(selection);
  lvwDevices.FitColumns();
}

void HostWindow::ShowEvents() {
  for (const std::string& sentence : events_.News()) Note(sentence);
  if (host_.ReleaseClosedTools()) {
    Note("The tool was closed.");
    ShowDevices();
  }
}

std::string HostWindow::Selected() {
  if (!lvwDevices.Selection().empty()) return lvwDevices.Rows()[lvwDevices.Selection().front()].key;
  Tell("Select a device first.");
  return {};
}

void HostWindow::Configure() {
  const std::string device = Selected();
  if (device.empty()) return;
  Note(fmt::format("The tool is asked to configure {}.", device));
  SetAcceptsInput(false);
  std::string failure;
  try {
    if (!host_.Configure(device)) Note(fmt::format("The window that is open on {} was raised.", device));
  } catch (const automation::Error& error) {
    failure = fmt::format("{}\n\nSource: {}", error.Description(),
                          error.Source().empty() ? "unknown" : error.Source());
  } catch (const std::exception& error) {
    failure = error.what();
  }
  SetAcceptsInput(true);
  ShowDevices();
  if (!failure.empty()) Tell(failure);
}

void HostWindow::AskForUnit() {
  toolkit_.Realize(dialog_);
  SetAcceptsInput(false);
  dialog_.Open();
}

bool HostWindow::AddUnit(const std::string& name, const std::string& location) {
  try {
    host_.GetBuilding().AddUnit(name, location);
  } catch (const std::exception& error) {
    Tell(error.what());
    return false;
  }
  ShowDevices();
  lvwDevices.SetSelection({lvwDevices.Rows().size() - 1});
  Note(fmt::format("The unit {} was added.", lvwDevices.Rows().back().key));
  return true;
}

void HostWindow::RemoveUnit() {
  const std::string unit = Selected();
  if (unit.empty()) return;
  const std::string question =
      fmt::format("Remove the unit \"{}\" with all its values?\n\nThis cannot be undone.", unit);
  const std::size_t place = lvwDevices.Selection().front();
  if (prompts_.Ask({question, kTitle, ui::Buttons::kYesNo, ui::Icon::kQuestion}) != ui::Answer::kYes) return;
  try {
    host_.GetBuilding().RemoveUnit(unit);
  } catch (const std::exception& error) {
    return Tell(error.what());
  }
  ShowDevices();
  if (!lvwDevices.Rows().empty()) lvwDevices.SetSelection({std::min(place, lvwDevices.Rows().size() - 1)});
  Note(fmt::format("The unit {} was removed.", unit));
}

void HostWindow::Tell(const std::string& text) {
  Note(text);
  prompts_.Ask({text, kTitle, ui::Buttons::kOk, ui::Icon::kExclamation});
}

}  // namespace simhost
