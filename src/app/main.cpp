// Entry point and composition root: builds the parts, hands each what it needs, and runs the process either
// as the automation server that the host started or for one switch of the command line.
#include <exception>
#include <memory>
#include <string>

#include "QVRKvTARNCfg.h"
#include "base/text.h"
#include "pages/page_table.h"
#include "platform/win32/com/apartment.h"
#include "platform/win32/com/client_watch.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/com_server.h"
#include "platform/win32/com/registration.h"
#include "platform/win32/control/control_host.h"
#include "platform/win32/system/files.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/registry.h"
#include "platform/win32/system/window_agent.h"
#include "platform/win32/window/dialogs.h"
#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/toolkit.h"
#include "plugin/configuration_api.h"
#include "plugin/plugin_api.h"
#include "plugin/startup.h"
#include "serverlink/transaction.h"

namespace {

constexpr int kTypeLibrary = 1;
constexpr int kLicences = 1;
constexpr GUID kApplicationId = {
    0xb54ed18b, 0x3f0e, 0x4c66, {0x9d, 0x7c, 0x61, 0x0b, 0xe2, 0x4a, 0x95, 0x3d}};
constexpr const char* kTitle = "KV-TARN Configuration";
constexpr const char* kLonWorksKey = "SOFTWARE\\LonWorks\\";
constexpr const char* kLonWorksPath = "LonWorks Path";

using MakeObject = std::function<std::shared_ptr<automation::LocalObject>()>;

/// The automation classes; the functions are needed only to serve, not to register.
std::vector<win32::ServerClass> Classes(MakeObject makeApi = {}, MakeObject makeConfiguration = {}) {
  return {{CLSID_OVXPlugInAPI,
           {"QVRKvTARNCfg.LNSPlugInAPI", "QVRKvTARNCfg.OVXPlugInAPI"},
           kTitle,
           std::move(makeApi),
           DIID__OVXPlugInAPI,
           false,
           kApplicationId},
          {CLSID_CTransaction,
           {"QVRKvTARNCfg.CTransaction"},
           "KV-TARN Transaction",
           [] { return std::make_shared<serverlink::CTransaction>(); },
           DIID__CTransaction,
           false,
           kApplicationId},
          {CLSID_Configuration,
           {"QVRKvTARNCfg.Configuration"},
           "KV-TARN Configurations for scripts",
           std::move(makeConfiguration),
           DIID__Configuration,
           false,
           kApplicationId}};
}

plugin::ProgramIdentity Identity() {
  const win32::ProgramVersion version = win32::OwnVersion();
  return {version.product, version.company, version.major, version.minor, version.revision};
}

plugin::StartUpFacts Facts(base::Registry& registry, base::Locale& locale) {
  plugin::StartUpFacts facts;
  facts.identity = Identity();
  facts.applicationFolder = win32::ProgramFolder();
  facts.lonWorksFolder =
      base::ReadRegistryString(registry, base::RegistryRoot::kLocalMachine, kLonWorksKey, kLonWorksPath);
  facts.licences = win32::OwnText(kLicences);
  facts.documentsFolder = win32::DocumentsFolder();
  facts.userName = win32::UserName();
  const std::string decimal = locale.GetLocaleString(base::kLocaleDecimal);
  if (decimal.size() == 1) facts.decimalSeparator = decimal.front();
  facts.fileExists = win32::FileExists;
  return facts;
}

int ServeHost() {
  win32::ComApartment apartment;
  plugin::Program* running = nullptr;
  win32::MessageLoop loop([&running](const std::string& fault) {
    if (!running || !running->Report(fault)) win32::ReportFailure(kTitle, fault);
  });
  win32::NativeToolkit toolkit(loop);
  win32::MessagePrompts prompts(toolkit);
  win32::FileNameDialog fileDialog(toolkit);
  win32::HtmlHelpViewer help;
  win32::ActiveXHost controls(toolkit, loop);
  win32::WindowsRegistry registry;
  win32::WindowsLocale locale;
  win32::PagedMemory memory;
  win32::NativeDesktop desktop;
  const shell::Platform platform{.toolkit = &toolkit,
                                 .prompts = prompts,
                                 .loop = loop,
                                 .fileDialog = fileDialog,
                                 .help = help,
                                 .controls = controls,
                                 .registry = registry,
                                 .locale = locale,
                                 .createObject = win32::CreateObject,
                                 .readFile = win32::ReadWholeFile};

  const auto description = plugin::BuildDescription(Identity());
  const auto settings = plugin::MakeSettings(Facts(registry, locale), description);
  plugin::Program program(platform, memory, desktop, description, settings, pages::PageTable(),
                          [&loop] { loop.Quit(); });
  running = &program;
  apartment.WatchPending({.overdue =
                              [&program](auto member, auto elapsed) {
                                if (program.Ending()) win32::EndProcess();
                                return program.CallOverdue(member, elapsed);
                              },
                          .over = [&program] { program.CallOver(); }});
  const win32::ClientWatch watch(apartment, [&program] { program.ClientsGone(); });
  const win32::ComServer server(
      Classes([&program] { return std::make_shared<plugin::PlugInApi>(program); },
              [&program] { return std::make_shared<plugin::ConfigurationApi>(program); }),
      {true, kTypeLibrary, [&program] { program.Released(); }});
  program.outstanding = [&server] { return server.Outstanding(); };
  loop.Post([&program] { program.Prepare(); });
  const int exitCode = loop.Run();
  running = nullptr;
  // Nothing is left but to let go of the host's objects, and a host that hangs must not hold that up.
  apartment.WatchPending({.overdue = [](auto, auto) -> bool { win32::EndProcess(); }, .over = [] {}});
  return exitCode;
}

/// The switches that every local server knows may begin with either sign, as the system itself writes them.
bool IsSwitch(std::string_view word, std::string_view name) {
  return (word.starts_with('/') || word.starts_with('-')) && base::EqualsNoCase(word.substr(1), name);
}

int RunCommand(const std::string& commandTail) {
  const std::string word = base::Split(base::Trim(commandTail), " ").front();
  const win32::ComApartment apartment;
  if (IsSwitch(word, "RegServer")) {
    const bool forAll = win32::RegisterServer(Classes(), kTypeLibrary) == base::RegistryRoot::kLocalMachine;
    win32::ReportDone(kTitle, forAll ? "registered for all users of this computer."
                                     : "registered for the present user only. A host that runs with "
                                       "administrator's rights does not see it.");
  } else if (IsSwitch(word, "UnregServer")) {
    win32::UnregisterServer(Classes(), kTypeLibrary);
  } else {
    plugin::RunStandAlone(commandTail, plugin::BuildDescription(Identity()), win32::CreateObject);
  }
  return 0;
}

}  // namespace

// The start-up code of the C library calls this in a program with windows too.
extern "C" int wmain(int, wchar_t**) {
  try {
    win32::LimitLibraryFolders();
    const std::string commandTail = win32::CommandTail();
    return win32::StartedByActivation(commandTail) ? ServeHost() : RunCommand(commandTail);
  } catch (const std::exception& error) {
    win32::ReportFailure(kTitle, error.what());
  } catch (...) {
    win32::ReportFailure(kTitle, "The program could not be started.");
  }
  return 1;
}
