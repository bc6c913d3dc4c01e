#include "simulator/win32/setup.h"

#include <algorithm>
#include <bit>
#include <fstream>
#include <iterator>

#include "base/error.h"
#include "base/text.h"
#include "platform/win32/com/registration.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/registry.h"
#include "platform/win32/system/text.h"

namespace simhost {
namespace {

constexpr DWORD kRegistrationTime = 30000;  // milliseconds
constexpr char kPathKey[] = "SOFTWARE\\LonWorks\\";
constexpr char kPathName[] = "LonWorks Path";
constexpr wchar_t kTemplates[] = L"Apps\\QVR KV\\OvxCommonFiles\\Templates";

// The default value of a key below the classes, the present user's before the machine's as the system looks
// them up.
std::string ReadClassKey(const std::string& key) {
  for (const HKEY hive : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    for (const auto view : {win32::RegistryView::kOwn, win32::RegistryView::kOther}) {
      const std::string text = win32::DefaultText(view, hive, "Software\\Classes\\" + key);
      if (!text.empty()) return text;
    }
  }
  return {};
}

// All are registered together; a newer library has more of them.
constexpr const char* kControlProgramIds[] = {"MVConfigSensor.ctlSensorHardware", "MVAbout.About"};

// What the system starts or loads for the class; empty where it is not registered.
std::string ServerOf(const std::string& programId, const std::string& serverKey) {
  const std::string classId = ReadClassKey(programId + "\\CLSID");
  return classId.empty() ? "" : ReadClassKey("CLSID\\" + classId + "\\" + serverKey);
}

bool RegisteredAs(const std::string& programId, const std::string& program,
                  const std::string& serverKey = "LocalServer32") {
  return base::Lower(ServerOf(programId, serverKey)).find(base::Lower(program)) != std::string::npos;
}

// Not all programs put their path in quotation marks before the switches.
std::string WithoutSwitches(const std::string& command) {
  if (command.starts_with('"')) return base::Split(command, "\"")[1];
  const std::size_t end = base::Lower(command).find(".exe ");
  return end == std::string::npos ? command : command.substr(0, end + 4);
}

// A real host is never put out of its place; another copy of the building may be.
void StopForAnotherHost(const std::string& programId) {
  for (const char* key : {"LocalServer32", "InprocServer32"}) {
    const std::string server = WithoutSwitches(ServerOf(programId, key));
    const std::filesystem::path file = win32::Wide(server);
    const std::filesystem::path own = win32::Wide(win32::ProgramPath());
    std::error_code failed;
    // The system looks in its own folders for a name without one.
    const bool there = file.has_parent_path() ? std::filesystem::exists(file, failed) : !file.empty();
    if (!there || file.filename() == own.filename() || file.parent_path() == own.parent_path()) continue;
    throw base::Error("Another host is installed on this computer (" + server +
                      "). The virtual building does not take its place; use it on another computer.");
  }
}

bool HoldsBytes(const std::filesystem::path& file, const automation::Bytes& bytes) {
  std::ifstream stream(file, std::ios::binary);
  return stream &&
         std::equal(std::istreambuf_iterator<char>(stream), {}, bytes.begin(), bytes.end(),
                    [](char left, std::uint8_t right) { return static_cast<std::uint8_t>(left) == right; });
}

std::filesystem::path CommonFolder(const std::filesystem::path& ownFolder) {
  win32::WindowsRegistry registry;
  constexpr auto root = base::RegistryRoot::kLocalMachine;
  const std::string named = base::ReadRegistryString(registry, root, kPathKey, kPathName);
  if (!named.empty()) return win32::Wide(named);
  const std::string own = win32::Utf8(ownFolder.wstring());
  base::WriteRegistryString(registry, root, kPathKey, kPathName, own);
  if (base::ReadRegistryString(registry, root, kPathKey, kPathName) == own) return ownFolder;
  throw base::Error("The machine-wide registry value \"" + std::string(kPathName) +
                    "\" is missing and this user may not " +
                    "set it. The tool finds its device template through it.");
}

std::filesystem::path BesideProgram(const wchar_t* file) {
  return std::filesystem::path(win32::Wide(win32::ProgramFolder())) / file;
}

struct FreeModule {
  void operator()(HMODULE module) const { FreeLibrary(module); }
};

/// Calls one of the entry points with which a library registers itself.
void CallControls(const std::filesystem::path& file, const char* entry) {
  using Entry = HRESULT(STDMETHODCALLTYPE*)();
  const std::string failed =
      "The editing controls of " + win32::Utf8(file.wstring()) + " did not carry out " + entry;
  const win32::Owner<HMODULE, FreeModule> library(LoadLibraryW(file.c_str()));
  if (!library) throw base::Error(failed + ": " + win32::LastErrorText());
  const auto call = std::bit_cast<Entry>(GetProcAddress(library.Get(), entry));
  const HRESULT result = call ? call() : HRESULT_FROM_WIN32(GetLastError());
  if (FAILED(result)) throw base::Error(failed + ": " + win32::SystemText(result));
}

}  // namespace

void RegisterHost(const std::vector<win32::ServerClass>& classes) {
  bool missing = false;
  for (const win32::ServerClass& entry : classes) {
    for (const std::string& programId : entry.programIds) {
      if (RegisteredAs(programId, win32::ProgramPath())) continue;
      StopForAnotherHost(programId);
      missing = true;
    }
  }
  if (missing) win32::RegisterServer(classes, 0);
}

void RegisterTool() {
  const std::filesystem::path tool = BesideProgram(kToolFile);
  if (!std::filesystem::exists(tool) || RegisteredAs(kToolProgramId, win32::Utf8(tool.wstring()))) return;
  std::wstring command = L"\"" + tool.wstring() + L"\" /RegServer";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION information{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                      &information)) {
    throw base::Error("The tool cannot be started to register itself: " + win32::LastErrorText());
  }
  const win32::Handle process(information.hProcess);
  const win32::Handle thread(information.hThread);
  if (WaitForSingleObject(process.Get(), kRegistrationTime) != WAIT_OBJECT_0) {
    TerminateProcess(process.Get(), 1);
    throw base::Error("The tool did not finish registering itself.");
  }
  DWORD code = 0;
  GetExitCodeProcess(process.Get(), &code);
  if (code != 0)
    throw base::Error("The tool could not register itself (exit code " + std::to_string(code) + ").");
}

void RegisterControls() {
  const std::filesystem::path file = BesideProgram(kControlsFile);
  const bool there = std::filesystem::exists(file);
  const auto registered = [name = win32::Utf8(file.wstring())](const char* programId) {
    return RegisteredAs(programId, name, "InprocServer32");
  };
  if (!there || std::ranges::all_of(kControlProgramIds, registered)) return;
  CallControls(file, "DllRegisterServer");
}

void UnregisterControls() {
  const std::filesystem::path file = BesideProgram(kControlsFile);
  if (std::filesystem::exists(file)) CallControls(file, "DllUnregisterServer");
}

void ProvideTemplates(const simulator::Building& building, const std::filesystem::path& ownFolder) {
  const std::filesystem::path folder = CommonFolder(ownFolder) / kTemplates;
  std::error_code failed;
  std::filesystem::create_directories(folder, failed);
  const automation::Bytes bytes = building.TemplateBytes();
  for (const simulator::DeviceInfo& device : building.Devices()) {
    const std::filesystem::path file = folder / win32::Wide(device.templateFileName);
    if (HoldsBytes(file, bytes)) continue;
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream)
      throw base::Error("The device template cannot be written to " + win32::Utf8(file.wstring()) + ".");
  }
}

}  // namespace simhost
