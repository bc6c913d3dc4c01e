#include "simulator/win32/host_window.h"

#include <fmt/format.h>

#include "automation/error.h"
#include "platform/win32/system/registry.h"

namespace simhost {
namespace {

constexpr char kTitle[] = "Virtual building";
constexpr std::chrono::milliseconds kLookInterval{500};

}  // namespace

HostWindow::HostWindow(Host& host, ui::EventLoop& loop, ui::Prompts& prompts)
    : ui::Window("fHost"),
      host_(host),
      loop_(loop),
      prompts_(prompts),
      events_(host.GetBuilding()),
      timer_(loop, kLookInterval) {
  SetTitle(kTitle);
  fraDevices.SetText("Devices");
  lvwDevices.SetColumns({"Name", "Location", "Program id", "State"});
  cmdConfigure.SetText("&Configure...");
  cmdConfigure.SetTip("Opens the configuration tool for the selected device");
  cmdRefresh.SetText("&Refresh");
  cmdClose.SetText("Cl&ose");
  fraEvents.SetText("Events");
  lvwEvents.SetColumns({"Time", "Event"});
  SetLayout(ui::Stack(
      {ui::Grow(ui::Box(fraDevices, ui::Grow(ui::Item(lvwDevices)))),
       ui::Line({ui::Item(cmdConfigure), ui::Item(cmdRefresh), ui::GrowX(ui::Empty()), ui::Item(cmdClose)}),
       ui::Grow(ui::Box(fraEvents, ui::Grow(ui::Item(lvwEvents))))}));
  defaultButton = &cmdConfigure;
  cancelButton = &cmdClose;
  // From the loop: the tool is started from an ordinary message, not from inside a notification of the
  // button.
  cmdConfigure.onClick = [this] { loop_.Post([this] { Configure(); }); };
  cmdRefresh.onClick = [this] { ShowDevices(); };
  cmdClose.onClick = [this] { Close(); };
  timer_.onTick = [this] { ShowEvents(); };
  ShowDevices();
  lvwDevices.SetSelection({0});
  timer_.Start();
}

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

void HostWindow::Configure() {
  if (lvwDevices.Selection().empty()) return Tell("Select a device first.");
  const std::string device = lvwDevices.Rows()[lvwDevices.Selection().front()].key;
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

void HostWindow::Tell(const std::string& text) {
  Note(text);
  prompts_.Ask({text, kTitle, ui::Buttons::kOk, ui::Icon::kExclamation});
}

}  // namespace simhost
