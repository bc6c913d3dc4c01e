#include "simulator/win32/host.h"

#include <algorithm>

#include "base/error.h"
#include "base/registry.h"
#include "base/text.h"
#include "platform/win32/system/registry.h"
#include "simulator/catalogue.h"
#include "simulator/template.h"
#include "simulator/win32/other_host.h"
#include "simulator/win32/setup.h"

namespace simhost {
namespace {

constexpr GUID kObjectServerClass = {
    0xeaf2e792, 0x0ff1, 0x408c, {0xa7, 0x6d, 0x84, 0x4b, 0x2f, 0x5c, 0xee, 0xa0}};
constexpr GUID kRegistrationClass = {
    0x078b6a45, 0x0f7e, 0x4f0c, {0xbd, 0xad, 0x57, 0x50, 0xe6, 0x49, 0xa0, 0x52}};
constexpr GUID kLanguageClass = {
    0xb21ef3c7, 0x432e, 0x4c79, {0x9b, 0x91, 0x5d, 0x61, 0x0f, 0x48, 0xab, 0x63}};

constexpr std::string_view kBlockName = "RoofTopObject";

base::Numbers UserNumbers() {
  const std::string decimal = win32::WindowsLocale().GetLocaleString(base::kLocaleDecimal);
  return base::Numbers(decimal == "," ? ',' : '.');
}

simulator::BuildingOptions BuildingOptionsOf(const Options& options) {
  simulator::BuildingOptions result;
  result.dataFolder = options.dataFolder;
  result.storeFile = options.storeFile;
  result.numbers = UserNumbers();
  return result;
}

std::shared_ptr<automation::LocalObject> Local(const automation::Object& object) {
  return std::dynamic_pointer_cast<automation::LocalObject>(object.GetTarget());
}

// Place of the rooftop block among the functional blocks of a controller, from 0.
std::size_t BlockPlace(const simulator::Building& building, const std::filesystem::path& dataFolder) {
  const simulator::TypeCatalogue catalogue(dataFolder / "types.json");
  const auto device = simulator::ReadTemplate(simulator::UnpackTemplate(building.TemplateBytes()), catalogue);
  for (std::size_t place = 0; place < device.objects.size(); ++place) {
    if (device.objects[place].name == kBlockName) return place;
  }
  throw base::Error("The device template has no functional block \"" + std::string(kBlockName) + "\".");
}

}  // namespace

Host::Host(const Options& options) : options_(options) { Reopen(); }

std::vector<win32::ServerClass> Host::Classes() {
  return {{kObjectServerClass,
           {"MVPlugInLib.ObjectServer"},
           "Virtual building: object server",
           [this] { return Local(building_->ObjectServer()); },
           {}},
          {kRegistrationClass,
           {"MVPlugInLib.Registration"},
           "Virtual building: registration of plug-ins",
           [this] { return Local(building_->Registration()); },
           {}},
          {kLanguageClass,
           {"MVLanguage.Language"},
           "Virtual building: languages",
           [this] { return Local(building_->Language()); },
           {}}};
}

void Host::Serve(std::function<void()> onLastRelease) {
  win32::ComServer::Options options;
  options.singleUse = false;
  options.onLastRelease = std::move(onLastRelease);
  server_ = std::make_unique<win32::ComServer>(Classes(), std::move(options));
}

void Host::Die() {
  // Wine goes on offering the classes of a process that was killed, and the next host would not be found.
  server_.reset();
  EndOwnProcess();
}

void Host::Reopen() {
  if (options_.fresh) {
    std::error_code failed;
    std::filesystem::remove(options_.storeFile, failed);
    if (failed) throw base::Error("The store " + options_.storeFile.string() + " cannot be removed.");
  }
  building_ = std::make_unique<simulator::Building>(BuildingOptionsOf(options_));
}

simulator::DeviceInfo Host::Device(std::string_view name) const {
  for (const simulator::DeviceInfo& device : building_->Devices()) {
    if (base::EqualsNoCase(device.name, name)) return device;
  }
  throw base::Error("The building has no device \"" + std::string(name) + "\".");
}

void Host::BeFound() {
  if (!server_) Serve([] {});
  RegisterHost(Classes());
}

Tool& Host::StartTool() {
  BeFound();
  RegisterTool();
  RegisterControls();
  ProvideTemplates(*building_, std::filesystem::absolute(options_.dataFolder / "LonWorks"));
  return *tools_.emplace_back(std::make_unique<Tool>());
}

void Host::PrepareTool(const simulator::DeviceInfo& device) {
  CurrentTool().Prepare(*building_, device, BlockPlace(*building_, options_.dataFolder));
}

bool Host::Configure(std::string_view deviceName) {
  const simulator::DeviceInfo device = Device(deviceName);
  Tool& tool = StartTool();
  try {
    PrepareTool(device);
    tool.Send(0, 0, "");
  } catch (...) {
    ReleaseTool();
    throw;
  }
  const bool opened = tool.HasWindow();
  if (!opened) ReleaseTool();
  return opened;
}

Tool& Host::CurrentTool() {
  if (tools_.empty()) throw base::Error("No tool has been started.");
  return *tools_.back();
}

void Host::ReleaseTool() {
  if (!tools_.empty()) tools_.pop_back();
}

bool Host::ReleaseClosedTools() {
  return std::erase_if(tools_, [](const std::unique_ptr<Tool>& tool) { return tool->Closed(); }) > 0;
}

bool Host::HasToolFor(std::string_view deviceName) const {
  return std::ranges::any_of(tools_, [&](const auto& tool) { return tool->DeviceName() == deviceName; });
}

}  // namespace simhost
