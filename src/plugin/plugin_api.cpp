#include "plugin/plugin_api.h"

#include "automation/error.h"
#include "base/error.h"
#include "base/text.h"
#include "host/contract.h"
#include "host/device_template.h"

namespace plugin {

using automation::Arguments;
using automation::Object;
using automation::Value;

namespace {

void RequireYes(const Value& answer) {
  if (!answer.AsBool()) throw base::Error("The host refused.");
}

}  // namespace

// The members in the order of the type library; a caller's member id is the place in the table plus 1.
struct Members {
  using Member = automation::MemberOf<PlugInApi>;

  template <auto field>
  static constexpr Member Text(std::string_view name) {
    return {name, [](PlugInApi& api, const Arguments&) { return Value(api.*field); },
            [](PlugInApi& api, const Value& value) { api.*field = value.AsText(); }};
  }

  /// Read from the settings; writing is an error of its own.
  template <auto field>
  static constexpr Member Identity(std::string_view name) {
    return {name, [](PlugInApi& api, const Arguments&) { return Value(api.program_.GetSettings().*field); },
            [](PlugInApi& api, const Value&) { api.Raise("Attempt to write to read-only property"); }};
  }

  /// The window's size in pixels; writing is accepted and changes nothing.
  template <auto field>
  static constexpr Member Size(std::string_view name) {
    return {name, [](PlugInApi& api, const Arguments&) { return Value(api.Bounds().*field); },
            [](PlugInApi&, const Value&) {}};
  }

  static constexpr Member kVisible = {
      "Visible",
      [](PlugInApi& api, const Arguments&) {
        const shell::fMain* window = api.program_.Window();
        return Value(window ? window->Visible() : api.program_.GaveWay());
      },
      [](PlugInApi& api, const Value& value) { api.SetVisible(value.AsBool()); }};
  static constexpr Member kRemote = {
      "Remote", [](PlugInApi& api, const Arguments&) { return Value(api.remote_); },
      [](PlugInApi& api, const Value& value) { api.remote_ = value.AsBool(); }};
  static constexpr Member kLeft = {
      "Left", [](PlugInApi& api, const Arguments&) { return Value(api.Bounds().left); },
      [](PlugInApi& api, const Value& value) { api.MoveTo(value.AsWhole(), api.Bounds().top); }};
  static constexpr Member kTop = {
      "Top", [](PlugInApi& api, const Arguments&) { return Value(api.Bounds().top); },
      [](PlugInApi& api, const Value& value) { api.MoveTo(api.Bounds().left, value.AsWhole()); }};
  static constexpr Member kMinimized = {
      "Minimized",
      [](PlugInApi& api, const Arguments&) {
        const shell::fMain* window = api.program_.Window();
        return Value(window && window->State() == ui::WindowState::kMinimized);
      },
      [](PlugInApi& api, const Value& value) { api.SetMinimized(value.AsBool()); }};
  static constexpr Member kPort = {
      "NetworkIpPort", [](PlugInApi& api, const Arguments&) { return Value(api.networkIpPort_); },
      [](PlugInApi& api, const Value& value) { api.networkIpPort_ = value.AsWhole(); }};

  static Value Command(PlugInApi& api, const Arguments& arguments) {
    arguments[2];  // a command id, an object class and a key; none of them is examined
    api.SendCommand();
    return {};
  }
};

const automation::MemberOf<PlugInApi> PlugInApi::kMembers[24] = {
    Members::kVisible,
    Members::Text<&PlugInApi::networkName_>("NetworkName"),
    Members::Text<&PlugInApi::networkInterfaceName_>("NetworkInterfaceName"),
    Members::kRemote,
    Members::Size<&ui::Bounds::height>("Height"),
    Members::Size<&ui::Bounds::width>("Width"),
    Members::kLeft,
    Members::kMinimized,
    Members::Identity<&shell::Settings::manufacturerId>("ManufacturerID"),
    Members::Identity<&shell::Settings::manufacturerName>("ManufacturerName"),
    Members::Identity<&shell::Settings::requiredServerVersion>("LcaVersion"),
    Members::Text<&PlugInApi::ovxServerVersion_>("OvxServerVersion"),
    Members::Identity<&shell::Settings::version>("version"),
    Members::kTop,
    Members::Identity<&shell::Settings::title>("Name"),
    Members::Text<&PlugInApi::developmentProgramId_>("DevelopmentProgramId"),
    Members::Text<&PlugInApi::networkIpAddress_>("NetworkIpAddress"),
    Members::kPort,
    Members::Text<&PlugInApi::folderName_>("FolderName"),
    Members::Text<&PlugInApi::deviceName_>("DeviceName"),
    Members::Text<&PlugInApi::lmoIndex_>("LmoIndex"),
    Members::Text<&PlugInApi::code_>("code"),
    {"SendCommand", nullptr, nullptr, Members::Command},
    {"InitializePlugIn", nullptr, nullptr, Members::Command},
};

void PlugInApi::Raise(std::string_view text, const std::vector<std::string>& arguments) const {
  shell::Strings& strings = program_.GetStrings();
  strings.ReloadStrings();  // no window has done it yet while the tool comes up
  throw automation::Error(automation::kApplicationDefined, strings.FormatStrings(text, arguments),
                          program_.GetSettings().title);
}

template <class Step>
auto PlugInApi::Try(std::string_view failure, const std::vector<std::string>& arguments, Step step) const {
  try {
    return step();
  } catch (const std::exception&) {
    Raise(failure, arguments);
  }
}

void PlugInApi::SendCommand() {
  const shell::fMain* window = program_.Window();
  if (comingUp_ || (window && window->Busy()))
    Raise("The configuration tool is busy. Please try again when it has finished.");
  program_.TakeBack();
  if (RaiseOpenWindow() || RaiseOtherProcess()) return;
  // The host may call again while it still has a call of this one to answer.
  comingUp_ = true;
  const struct Done {
    bool& comingUp;
    ~Done() { comingUp = false; }
  } done{comingUp_};
  BringUp();
}

bool PlugInApi::RaiseOpenWindow() {
  shell::fMain* window = program_.Window();
  if (!window) return false;
  if (window->Ending()) Raise("The configuration tool is closing. Please try again.");
  if (openWindow_ != WindowName()) {
    Raise("The configuration window is open on %s%. Please close it before another device is configured.",
          {openDevice_});
  }
  SetVisible(true);
  program_.RaiseWindow();
  return true;
}

bool PlugInApi::RaiseOtherProcess() const {
  const auto found = program_.RaisePublished(WindowName());
  if (found == CWindowAgent::Found::kNoAnswer) {
    Raise("The configuration window is open on %s% already, but does not answer. Please close it first.",
          {deviceName_});
  }
  if (found == CWindowAgent::Found::kOtherRights) {
    Raise(
        "The configuration window is open on %s% already, in a program with other rights. Please close it "
        "first.",
        {deviceName_});
  }
  return found == CWindowAgent::Found::kRaised;
}

std::string PlugInApi::NetworkPlace() const {
  return networkName_ + " at " + networkIpAddress_ + ":" + std::to_string(networkIpPort_);
}

std::string PlugInApi::WindowName() const {
  return PublishedName(program_.GetSettings().title, NetworkPlace(), deviceName_);
}

void PlugInApi::BringUp() {
  program_.GetStrings().ReloadStrings();  // the question about a silent host may come before any window
  const Object server = Try("DRFs catalog could not be refreshed, exiting application", {}, [&] {
    const Object object = program_.GetPlatform().createObject(host::kObjectServerId);
    RequireYes(object.Call(host::kRefreshCatalog, "QVR"));
    return object;
  });
  CheckServerVersion();
  const int lmoIndex = Try("The functional block index \"%s%\" is not a whole number of 16 bits.",
                           {lmoIndex_}, [&] { return program_.GetSettings().numbers.ToInt16(lmoIndex_); });
  const Object network = JoinNetwork(server);
  OpenSession(network, lmoIndex);
  const Object device = FindDevice(network);
  LoadTemplate(device, lmoIndex);
  const std::string blockName = BlockName(device, lmoIndex);
  shell::fMain& window = program_.MakeWindow();
  openDevice_ = deviceName_;
  openWindow_ = WindowName();
  window.ObjectServer = server;
  window.ProcessLonMarkObjectCommand(network, blockName);
  program_.PublishWindow(openWindow_);
  if (!window.Ending()) ApplyMinimized();
}

void PlugInApi::CheckServerVersion() const {
  const std::string& required = program_.GetSettings().requiredServerVersion;
  const std::string server = ovxServerVersion_;
  constexpr std::string_view kDifferent = "OVX server version %s1% not equal to required version %s2%.X";
  const auto [version, revision] = Try(kDifferent, {server, required}, [&] {
    auto numbers = base::Split(base::Trim(server), ".");
    if (numbers.size() > 2) numbers.resize(2);  // what follows the revision does not matter
    return host::SplitVersion(base::Join(numbers, "."));
  });
  const auto [requiredVersion, requiredRevision] = host::SplitVersion(required);
  if (version != requiredVersion) Raise(kDifferent, {server, required});
  if (revision < requiredRevision) {
    Raise("OVX server revision %s1% lower than required minimum revision %s2%.X",
          {std::to_string(revision), required});
  }
}

Object PlugInApi::JoinNetwork(const Object& server) const {
  return Try("Cannot connect to the network %s%", {NetworkPlace()}, [&] {
    return automation::RequireObject(
        server.Call(host::kConnect, networkName_, networkIpAddress_, networkIpPort_), host::kConnect);
  });
}

void PlugInApi::OpenSession(const Object& network, int lmoIndex) const {
  constexpr std::string_view kFailure = "Network error in first transaction with %s%";
  const std::vector<std::string> address{networkIpAddress_};
  const std::string status = Try(kFailure, address, [&] {
    return network
        .Call(host::kOpenSession, networkName_, remote_, networkInterfaceName_, lmoIndex,
              developmentProgramId_)
        .AsText();
  });
  if (status == host::kSessionMaxClients) Raise("Maximum number of plugins reached on %s%", address);
  if (status == host::kSessionInstanceExists) Raise("Plugin instance already exists on %s%", address);
  if (status != host::kSessionOk) Raise(kFailure, address);
}

Object PlugInApi::FindDevice(const Object& network) const {
  return Try("Network error when getting device data with %s%", {deviceName_}, [&] {
    const Object device = network.Child(host::kAppDevices).Child(host::kItem, deviceName_);
    device.Put(host::kName, deviceName_);
    return device;
  });
}

void PlugInApi::LoadTemplate(const Object& device, int lmoIndex) const {
  Try("Error loading device template for %s%", {deviceName_}, [&] {
    const Object identity = device.Child(host::kInterface);
    const std::string programId = identity.Text(host::kProgramId);
    const std::string name = host::TemplateName(programId, identity.Text(host::kVersion));
    const automation::Bytes content =
        program_.GetPlatform().readFile(host::TemplatePath(program_.GetSettings().commonFilesFolder, name));
    RequireYes(device.Call(host::kAddLmo, lmoIndex, programId, name, content));
  });
}

std::string PlugInApi::BlockName(const Object& device, int lmoIndex) const {
  return Try("The functional block with index %s1% was not found on %s2%", {lmoIndex_, deviceName_}, [&] {
    const Object lonMarkObjects = device.Child(host::kLonMarkObjects);
    const std::string name = lonMarkObjects.Child(host::kItem, lmoIndex + 1).Text(host::kName);
    lonMarkObjects.Child(host::kItem, name);  // the block must answer to its name too
    return name;
  });
}

void PlugInApi::SetVisible(bool visible) {
  shell::fMain* window = program_.Window();
  // One that has closed itself because loading failed stays closed; hosts ask for it after each start.
  if (!window || window->Ending()) return;
  if (!visible) return window->Hide();
  window->Show();
  ApplyMinimized();
}

void PlugInApi::ApplyMinimized() {
  const auto minimize = std::exchange(minimizeWhenShown_, std::nullopt);
  shell::fMain& window = *program_.Window();
  if (!minimize || *minimize == (window.State() == ui::WindowState::kMinimized)) return;
  window.SetState(*minimize ? ui::WindowState::kMinimized : ui::WindowState::kNormal);
}

void PlugInApi::SetMinimized(bool minimized) {
  shell::fMain* window = program_.Window();
  if (window && window->Visible()) {
    window->SetState(minimized ? ui::WindowState::kMinimized : ui::WindowState::kNormal);
    return;
  }
  // A hidden window cannot change its state.
  minimizeWhenShown_ = minimized;
  Raise(
      "Can not modify the minimzed property when invisble. "
      "The property will be applied the next time the plug-in is made visible");
}

void PlugInApi::MoveTo(int left, int top) {
  shell::fMain* window = program_.Window();
  if (!window) return;
  if (window->State() != ui::WindowState::kNormal)
    Raise("Plug-in can't be moved or sized while minimized or maximized");
  window->Move(left, top);
}

ui::Bounds PlugInApi::Bounds() const {
  const shell::fMain* window = program_.Window();
  return window ? window->GetBounds() : ui::Bounds{};
}

}  // namespace plugin
