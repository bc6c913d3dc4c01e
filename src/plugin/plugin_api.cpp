#include "plugin/plugin_api.h"

#include <exception>
#include <utility>

#include "automation/error.h"
#include "host/contract.h"
#include "host/device_template.h"

namespace plugin {

using automation::Arguments;
using automation::Object;
using automation::Value;

// The members in the order of the type library; a caller's member id is the place in the table plus 1.
struct Members {
  using Member = automation::MemberOf<PlugInApi>;

  static void Take(std::string& field, const Value& value) { field = value.AsText(); }
  static void Take(bool& field, const Value& value) { field = value.AsBool(); }
  static void Take(std::int32_t& field, const Value& value) { field = value.AsWhole(); }

  /// What the host tells; kept as it is.
  template <auto field>
  static constexpr Member Kept(std::string_view name) {
    return {name, [](PlugInApi& api, const Arguments&) { return Value(api.*field); },
            [](PlugInApi& api, const Value& value) { Take(api.*field, value); }};
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
  static constexpr Member kLeft = {
      "Left", [](PlugInApi& api, const Arguments&) { return Value(api.Bounds().left); },
      [](PlugInApi& api, const Value& value) { api.MoveTo(value.AsWhole(), {}); }};
  static constexpr Member kTop = {
      "Top", [](PlugInApi& api, const Arguments&) { return Value(api.Bounds().top); },
      [](PlugInApi& api, const Value& value) { api.MoveTo({}, value.AsWhole()); }};
  static constexpr Member kMinimized = {
      "Minimized",
      [](PlugInApi& api, const Arguments&) {
        const shell::fMain* window = api.program_.Window();
        return Value(window && window->State() == ui::WindowState::kMinimized);
      },
      [](PlugInApi& api, const Value& value) { api.SetMinimized(value.AsBool()); }};

  static Value Command(PlugInApi& api, const Arguments& arguments) {
    arguments[2];  // a command id, an object class and a key; none of them is examined
    api.SendCommand();
    return {};
  }
};

const automation::MemberOf<PlugInApi> PlugInApi::kMembers[24] = {
    Members::kVisible,
    Members::Kept<&PlugInApi::networkName_>("NetworkName"),
    Members::Kept<&PlugInApi::networkInterfaceName_>("NetworkInterfaceName"),
    Members::Kept<&PlugInApi::remote_>("Remote"),
    Members::Size<&ui::Bounds::height>("Height"),
    Members::Size<&ui::Bounds::width>("Width"),
    Members::kLeft,
    Members::kMinimized,
    Members::Identity<&shell::Settings::manufacturerId>("ManufacturerID"),
    Members::Identity<&shell::Settings::manufacturerName>("ManufacturerName"),
    Members::Identity<&shell::Settings::requiredServerVersion>("LcaVersion"),
    Members::Kept<&PlugInApi::ovxServerVersion_>("OvxServerVersion"),
    Members::Identity<&shell::Settings::version>("version"),
    Members::kTop,
    Members::Identity<&shell::Settings::title>("Name"),
    Members::Kept<&PlugInApi::developmentProgramId_>("DevelopmentProgramId"),
    Members::Kept<&PlugInApi::networkIpAddress_>("NetworkIpAddress"),
    Members::Kept<&PlugInApi::networkIpPort_>("NetworkIpPort"),
    Members::Kept<&PlugInApi::folderName_>("FolderName"),
    Members::Kept<&PlugInApi::deviceName_>("DeviceName"),
    Members::Kept<&PlugInApi::lmoIndex_>("LmoIndex"),
    Members::Kept<&PlugInApi::code_>("code"),
    {"SendCommand", nullptr, nullptr, Members::Command},
    {"InitializePlugIn", nullptr, nullptr, Members::Command},
};

void PlugInApi::Raise(std::string_view text, const std::vector<std::string>& arguments) const {
  shell::Strings& strings = program_.GetStrings();
  strings.ReloadStrings();  // no window has done it yet while the tool comes up
  throw automation::Error(automation::kApplicationDefined, strings.FormatStrings(text, arguments),
                          program_.GetSettings().title);
}

// What the host gave as its reason is for the installer, not for the host.
void PlugInApi::SendCommand() {
  if (program_.Busy()) Raise("The configuration tool is busy. Please try again when it has finished.");
  program_.Needed();
  if (RaiseOpenWindow() || RaiseOtherProcess()) return;
  // The host may call again while it still has a call of this one to answer.
  const Program::ComingUp comingUp(program_, WindowName());
  try {
    BringUp();
  } catch (const host::StepError& failed) {
    try {
      std::rethrow_if_nested(failed);
    } catch (const std::exception& reason) {
      program_.Note(shell::DescribeError(reason), "SendCommand");
    }
    Raise(failed.what(), failed.Arguments());
  }
}

bool PlugInApi::RaiseOpenWindow() {
  shell::fMain* window = program_.Window();
  if (!window || window->Refused()) return false;
  if (window->Ending()) Raise("The configuration tool is closing. Please try again.");
  if (program_.OpenName() != WindowName())
    Raise("The configuration window is open on %s%. Please close it before another device is configured.",
          {program_.OpenDevice()});
  SetVisible(true);
  program_.RaiseWindow();
  return true;
}

bool PlugInApi::RaiseOtherProcess() const {
  const auto found = program_.RaisePublished(WindowName());
  if (found == CWindowAgent::Found::kNoAnswer)
    Raise("The configuration window is open on %s% already, but does not answer. Please close it first.",
          {deviceName_});
  if (found == CWindowAgent::Found::kOtherRights)
    Raise(
        "The configuration window is open on %s% already, in a program with other rights. Please close it "
        "first.",
        {deviceName_});
  return found == CWindowAgent::Found::kRaised;
}

std::string PlugInApi::WindowName() const {
  return PublishedName(program_.GetSettings().title, Request(0).NetworkPlace(), deviceName_);
}

host::SessionRequest PlugInApi::Request(int lmoIndex) const {
  return {.networkName = networkName_,
          .ipAddress = networkIpAddress_,
          .ipPort = networkIpPort_,
          .remote = remote_,
          .interfaceName = networkInterfaceName_,
          .programId = developmentProgramId_,
          .deviceName = deviceName_,
          .lmoIndex = lmoIndex,
          .commonFilesFolder = program_.GetSettings().commonFilesFolder,
          .readFile = program_.GetPlatform().readFile};
}

void PlugInApi::BringUp() {
  program_.GetStrings().ReloadStrings();  // the question about a silent host may come before any window
  Object server = host::Try("DRFs catalog could not be refreshed, exiting application", {}, [this] {
    Object object = program_.GetPlatform().createObject(host::kObjectServerId);
    host::RequireYes(object.Call(host::kRefreshCatalog, host::kMakerPrefix));
    return object;
  });
  CheckServerVersion();
  const int lmoIndex =
      host::Try("The functional block index \"%s%\" is not a whole number of 16 bits.", {lmoIndex_},
                [this] { return program_.GetSettings().numbers.ToInt16(lmoIndex_); });
  const host::SessionRequest request = Request(lmoIndex);
  LoadWindow(host::Session(std::move(server), request), request);
}

void PlugInApi::LoadWindow(const host::Session& session, const host::SessionRequest& request) {
  shell::fMain* window = nullptr;
  try {
    window = &program_.MakeWindow(deviceName_, WindowName());
  } catch (const std::exception& fault) {
    Raise("The configuration window could not be opened: %s%", {fault.what()});
  }
  window->ObjectServer = session.Server();
  window->Opened = request;
  window->ProcessLonMarkObjectCommand(session.Network(), session.BlockName());
  const ui::Bounds place = window->GetBounds();
  const auto left = std::exchange(leftWhenOpened_, std::nullopt);
  const auto top = std::exchange(topWhenOpened_, std::nullopt);
  if (left || top) window->Move(left.value_or(place.left), top.value_or(place.top));
  // A host that let go meanwhile let go of a hidden window.
  if (std::exchange(visibleWhenOpened_, true) && program_.Held()) {
    window->ShowWindow();
    if (!window->Refused()) ApplyMinimized();
  } else if (window->Refused()) {
    window->Close();  // it would do so once it is shown
  }
}

void PlugInApi::CheckServerVersion() const {
  const std::string& required = program_.GetSettings().requiredServerVersion;
  constexpr std::string_view kDifferent = "OVX server version %s1% not equal to required version %s2%.X";
  const std::vector<std::string> versions{ovxServerVersion_, required};
  const auto [version, revision] =
      host::Try(kDifferent, versions, [this] { return host::SplitVersion(ovxServerVersion_); });
  const auto [requiredVersion, requiredRevision] = host::SplitVersion(required);
  if (version != requiredVersion) throw host::StepError(kDifferent, versions);
  if (revision < requiredRevision)
    Raise("OVX server revision %s1% lower than required minimum revision %s2%.X",
          {std::to_string(revision), required});
}

shell::fMain* PlugInApi::UsableWindow() const {
  shell::fMain* window = program_.Window();
  return window && !window->Refused() && !window->Ending() ? window : nullptr;
}

void PlugInApi::SetVisible(bool visible) {
  shell::fMain* window = UsableWindow();
  if (!window || program_.IsComingUp()) {
    visibleWhenOpened_ = visible;
  } else if (!visible) {
    window->Hide();
  } else {
    window->Show();
    ApplyMinimized();
  }
}

void PlugInApi::ApplyMinimized() {
  const auto minimize = std::exchange(minimizeWhenShown_, std::nullopt);
  shell::fMain& window = *program_.Window();
  if (!minimize || *minimize == (window.State() == ui::WindowState::kMinimized)) return;
  window.SetState(*minimize ? ui::WindowState::kMinimized : ui::WindowState::kNormal);
}

void PlugInApi::SetMinimized(bool minimized) {
  shell::fMain* window = UsableWindow();
  minimizeWhenShown_.reset();
  if (minimized == (window && window->State() == ui::WindowState::kMinimized)) return;
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

void PlugInApi::MoveTo(std::optional<int> left, std::optional<int> top) {
  shell::fMain* window = UsableWindow();
  if (!window) {
    if (left) leftWhenOpened_ = left;
    if (top) topWhenOpened_ = top;
    return;
  }
  if (window->State() != ui::WindowState::kNormal)
    Raise("Plug-in can't be moved or sized while minimized or maximized");
  const ui::Bounds place = window->GetBounds();
  window->Move(left.value_or(place.left), top.value_or(place.top));
}

ui::Bounds PlugInApi::Bounds() const {
  if (const shell::fMain* window = UsableWindow()) return window->GetBounds();
  return {.left = leftWhenOpened_.value_or(0), .top = topWhenOpened_.value_or(0)};
}

}  // namespace plugin
