#include "platform/win32/com/registration.h"

// Needs windows.h before it.
#include <sddl.h>

#include <fmt/format.h>

#include "base/error.h"
#include "base/text.h"
#include "platform/win32/com/type_library.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/registry.h"
#include "platform/win32/system/text.h"

namespace win32 {
namespace {

using base::RegistryRoot;

constexpr const char* kClasses = "Software\\Classes\\";

// Who may start and call the tool, as "COM security" of the platform's documentation has it: rights on this
// computer only (CC execute, DC execute here, SW activate here), for whoever works at it, for a host that is
// a service, for the system and its administrators; PS is the user that the tool runs as.
constexpr const wchar_t* kMayLaunch =
    L"O:BAG:BAD:(A;;CCDCSW;;;IU)(A;;CCDCSW;;;SU)(A;;CCDCSW;;;SY)(A;;CCDCSW;;;BA)";
constexpr const wchar_t* kMayCall =
    L"O:BAG:BAD:(A;;CCDC;;;PS)(A;;CCDC;;;IU)(A;;CCDC;;;SU)(A;;CCDC;;;SY)(A;;CCDC;;;BA)";

using Binary = std::vector<BYTE>;

/// A value of a key below the classes; its default value when it has no name. A text when there are no bytes.
struct Entry {
  std::string key;
  std::string text;
  std::wstring name = {};
  Binary bytes = {};
};

/// All keys of one class.
struct ClassKeys {
  std::string id;                       // of the class
  std::string tree;                     // of the class itself, in the view of this program's width
  std::string server;                   // the key below it that names this file
  std::string file;                     // as it stands there
  std::vector<std::string> programIds;  // trees that the registration of the other width needs too
  std::vector<std::string> shared;      // further ones
  std::vector<Entry> entries;           // the server's first: it tells to whom the others belong
};

Binary SecurityOf(const wchar_t* description) {
  PSECURITY_DESCRIPTOR made = nullptr;
  ULONG size = 0;
  if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(description, SDDL_REVISION_1, &made, &size))
    throw base::Error("The permissions of the tool could not be made: " + LastErrorText());
  const auto* bytes = static_cast<const BYTE*>(made);
  Binary copy(bytes, bytes + size);
  LocalFree(made);
  return copy;
}

// A host may be a service, whose session nobody sees: "Interactive User" puts the tool before the person who
// works at the computer ("RunAs" and "AppID Key" of the platform's documentation). The program's name leads
// the running tool to its permissions.
void AddApplication(ClassKeys& keys, const ServerClass& served) {
  if (served.applicationId == GUID{}) return;
  const std::string path = ProgramPath();
  const std::string id = GuidText(served.applicationId);
  const std::string application = "AppID\\" + id;
  const std::string program = "AppID" + path.substr(path.rfind('\\'));
  keys.shared.insert(keys.shared.end(), {application, program});
  keys.entries.push_back({keys.tree, id, L"AppID"});
  keys.entries.push_back({program, id, L"AppID"});
  keys.entries.push_back({application, path.substr(path.rfind('\\') + 1)});
  keys.entries.push_back({application, "Interactive User", L"RunAs"});
  keys.entries.push_back({application, {}, L"LaunchPermission", SecurityOf(kMayLaunch)});
  keys.entries.push_back({application, {}, L"AccessPermission", SecurityOf(kMayCall)});
}

ClassKeys KeysOf(const ServerClass& served, const std::optional<LibraryName>& library) {
  ClassKeys keys;
  keys.id = GuidText(served.classId);
  keys.tree = "CLSID\\" + keys.id;
  keys.server = keys.tree + (served.control ? "\\InprocServer32" : "\\LocalServer32");
  keys.file = served.control ? ModulePath() : '"' + ProgramPath() + '"';
  keys.entries = {{keys.server, keys.file}, {keys.tree, served.friendlyName}};
  if (served.control) {
    keys.entries.push_back({keys.server, "Apartment", L"ThreadingModel"});
    keys.entries.push_back({keys.tree + "\\Control", ""});
  }
  keys.entries.push_back({keys.tree + "\\ProgID", served.programIds.front()});
  if (library) {
    keys.entries.push_back({keys.tree + "\\TypeLib", library->id});
    keys.entries.push_back({keys.tree + "\\Version", library->version});
  }
  keys.programIds = served.programIds;
  for (const std::string& programId : served.programIds) {
    keys.entries.push_back({programId, served.friendlyName});
    keys.entries.push_back({programId + "\\CLSID", keys.id});
  }
  AddApplication(keys, served);
  return keys;
}

std::vector<ClassKeys> KeysOf(const std::vector<ServerClass>& classes, int typeLibrary) {
  std::optional<LibraryName> library;
  if (typeLibrary) library = OwnLibraryName(typeLibrary);
  std::vector<ClassKeys> all;
  for (const ServerClass& served : classes) all.push_back(KeysOf(served, library));
  return all;
}

LSTATUS WriteEntry(RegistryRoot root, const Entry& entry) {
  RegistryKey opened;
  const LSTATUS status = RegCreateKeyExW(HiveOf(root), Wide(kClasses + entry.key).c_str(), 0, nullptr, 0,
                                         KEY_SET_VALUE, nullptr, opened.Put(), nullptr);
  if (status != ERROR_SUCCESS) return status;
  const wchar_t* name = entry.name.empty() ? nullptr : entry.name.c_str();
  if (!entry.bytes.empty())
    return RegSetValueExW(opened.Get(), name, 0, REG_BINARY, entry.bytes.data(),
                          static_cast<DWORD>(entry.bytes.size()));
  const std::wstring text = Wide(entry.text);
  return RegSetValueExW(opened.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

/// Keeps the first of several failures, so that everything is tried before it is told.
class FirstFailure {
 public:
  void Note(const std::string& action, HRESULT status) {
    if (status != ERROR_SUCCESS && text_.empty()) text_ = action + ": " + SystemText(status);
  }
  void Tell() const {
    if (!text_.empty()) throw base::Error(text_);
  }

 private:
  std::string text_;
};

/// Deletes a key that holds nothing; a user's classes have these two only when somebody registered there.
void DeleteWhenEmpty(HKEY hive, const std::wstring& key) {
  RegistryKey opened;
  DWORD subkeys = 0;
  DWORD values = 0;
  if (RegOpenKeyExW(hive, key.c_str(), 0, KEY_READ, opened.Put()) != ERROR_SUCCESS) return;
  const LSTATUS status = RegQueryInfoKeyW(opened.Get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr,
                                          &values, nullptr, nullptr, nullptr, nullptr);
  opened.Reset();
  if (status == ERROR_SUCCESS && subkeys == 0 && values == 0) RegDeleteKeyW(hive, key.c_str());
}

void DeleteTree(RegistryRoot root, const std::string& tree, FirstFailure& failure) {
  const LSTATUS status = RegDeleteTreeW(HiveOf(root), Wide(kClasses + tree).c_str());
  if (status != ERROR_FILE_NOT_FOUND) failure.Note("Could not delete " + (kClasses + tree), status);
}

/// Deletes what is this file's. Another copy of the program, or the one of the other width, may be registered
/// too; then what all share stays. So does a program id that leads to the class of another program by now.
void RemoveClass(RegistryRoot root, const ClassKeys& keys, FirstFailure& failure) {
  const auto text = [&](RegistryView view, const std::string& key) {
    return DefaultText(view, HiveOf(root), kClasses + key);
  };
  const std::string named = text(RegistryView::kOwn, keys.server);
  if (!named.empty() && !base::EqualsNoCase(named, keys.file)) return;
  DeleteTree(root, keys.tree, failure);
  if (!text(RegistryView::kOther, keys.server).empty()) return;
  for (const std::string& programId : keys.programIds) {
    if (base::EqualsNoCase(text(RegistryView::kOwn, programId + "\\CLSID"), keys.id))
      DeleteTree(root, programId, failure);
  }
  for (const std::string& tree : keys.shared) DeleteTree(root, tree, failure);
}

void Remove(RegistryRoot root, const std::vector<ClassKeys>& classes, int typeLibrary) {
  FirstFailure failure;
  for (const ClassKeys& keys : classes) RemoveClass(root, keys, failure);
  if (typeLibrary) failure.Note("Could not remove the type library", RemoveTypeLibrary(root, typeLibrary));
  if (root == RegistryRoot::kCurrentUser) {
    for (const char* key : {"CLSID", "TypeLib", "Interface", "AppID"})
      DeleteWhenEmpty(HiveOf(root), Wide(std::string(kClasses) + key));
  }
  failure.Tell();
}

void Write(RegistryRoot root, const Entry& entry) {
  const LSTATUS status = WriteEntry(root, entry);
  if (status != ERROR_SUCCESS)
    throw base::Error(fmt::format("Could not write {}{}: {}", kClasses, entry.key, SystemText(status)));
}

}  // namespace

bool RegisterServerIn(RegistryRoot root, const std::vector<ServerClass>& classes, int typeLibrary) {
  const std::vector<ClassKeys> all = KeysOf(classes, typeLibrary);
  if (WriteEntry(root, all.front().entries.front()) == ERROR_ACCESS_DENIED) return false;
  try {
    for (const ClassKeys& keys : all) {
      for (const Entry& entry : keys.entries) Write(root, entry);
    }
    if (typeLibrary) RegisterTypeLibrary(root, typeLibrary);
  } catch (const base::Error&) {
    try {
      Remove(root, all, typeLibrary);
    } catch (const base::Error&) {
      // The first failure tells more.
    }
    throw;
  }
  return true;
}

RegistryRoot RegisterServer(const std::vector<ServerClass>& classes, int typeLibrary) {
  for (const RegistryRoot root : {RegistryRoot::kLocalMachine, RegistryRoot::kCurrentUser}) {
    if (RegisterServerIn(root, classes, typeLibrary)) return root;
  }
  throw base::Error("Neither the machine's nor the user's classes can be written.");
}

void UnregisterServer(const std::vector<ServerClass>& classes, int typeLibrary) {
  const std::vector<ClassKeys> all = KeysOf(classes, typeLibrary);
  Remove(RegistryRoot::kCurrentUser, all, typeLibrary);
  Remove(RegistryRoot::kLocalMachine, all, typeLibrary);
}

}  // namespace win32
