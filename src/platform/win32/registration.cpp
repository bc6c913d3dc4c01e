#include "platform/win32/registration.h"

#include <fmt/format.h>

#include "base/error.h"
#include "platform/win32/process.h"
#include "platform/win32/system_error.h"

namespace win32 {
namespace {

constexpr const char* kClasses = "Software\\Classes";

/// A value of a key below the classes; its default value when it has no name.
struct Entry {
  std::string key;
  std::string text;
  std::wstring name = {};
};

struct Contents {
  std::vector<Entry> entries;
  std::vector<std::string> trees;  // what is deleted again, each with all below it
};

HKEY HiveOf(base::RegistryRoot root) {
  return root == base::RegistryRoot::kLocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring KeyPath(const std::string& key) { return Wide(std::string(kClasses) + "\\" + key); }

std::string GuidText(const GUID& guid) {
  wchar_t text[40] = L"";
  StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
  return Utf8(text);
}

struct Library {
  std::string id;
  std::string version;
  std::string name;
};

Library DescribeLibrary(int resource) {
  Library described;
  if (resource == 0) return described;
  const auto library = OwnTypeLibrary(resource);
  TLIBATTR* attributes = nullptr;
  if (!library || FAILED(library->GetLibAttr(&attributes))) {
    throw base::Error("The program carries no type library.");
  }
  described.id = GuidText(attributes->guid);
  described.version = fmt::format("{:x}.{:x}", attributes->wMajorVerNum, attributes->wMinorVerNum);
  library->ReleaseTLibAttr(attributes);
  Bstr name;
  library->GetDocumentation(-1, nullptr, name.Put(), nullptr, nullptr);
  described.name = TextOf(name.Get());
  return described;
}

void AddClass(Contents& contents, const ServerClass& served, const Library& library) {
  const std::string id = GuidText(served.classId);
  const std::string key = "CLSID\\" + id;
  contents.trees.push_back(key);
  contents.entries.push_back({key, served.friendlyName});
  if (served.control) {
    const std::string server = key + "\\InprocServer32";
    contents.entries.push_back({server, ModulePath()});
    contents.entries.push_back({server, "Apartment", L"ThreadingModel"});
    contents.entries.push_back({key + "\\Control", ""});
  } else {
    contents.entries.push_back({key + "\\LocalServer32", '"' + ProgramPath() + '"'});
  }
  contents.entries.push_back({key + "\\ProgID", served.programIds.front()});
  if (!library.id.empty()) {
    contents.entries.push_back({key + "\\TypeLib", library.id});
    contents.entries.push_back({key + "\\Version", library.version});
  }
  for (const std::string& programId : served.programIds) {
    contents.trees.push_back(programId);
    contents.entries.push_back({programId, served.friendlyName});
    contents.entries.push_back({programId + "\\CLSID", id});
  }
}

void AddLibrary(Contents& contents, const Library& library) {
  const std::string key = "TypeLib\\" + library.id;
  const std::string version = key + "\\" + library.version;
  const std::string file = ModulePath();
  contents.trees.push_back(key);
  contents.entries.push_back({version, library.name});
  contents.entries.push_back({version + (sizeof(void*) == 8 ? "\\0\\win64" : "\\0\\win32"), file});
  contents.entries.push_back({version + "\\FLAGS", "0"});
  contents.entries.push_back({version + "\\HELPDIR", file.substr(0, file.rfind('\\'))});
}

Contents ContentsOf(const std::vector<ServerClass>& classes, int typeLibrary) {
  Contents contents;
  const Library library = DescribeLibrary(typeLibrary);
  for (const ServerClass& served : classes) AddClass(contents, served, library);
  if (!library.id.empty()) AddLibrary(contents, library);
  return contents;
}

[[noreturn]] void Fail(const std::string& action, const std::string& key, LSTATUS status) {
  throw base::Error(fmt::format("{} {}\\{}: {}", action, kClasses, key, SystemText(status)));
}

LSTATUS WriteEntry(base::RegistryRoot root, const Entry& entry) {
  RegistryKey opened;
  const LSTATUS status = RegCreateKeyExW(HiveOf(root), KeyPath(entry.key).c_str(), 0, nullptr, 0,
                                         KEY_SET_VALUE, nullptr, opened.Put(), nullptr);
  if (status != ERROR_SUCCESS) return status;
  const std::wstring text = Wide(entry.text);
  return RegSetValueExW(opened.Get(), entry.name.empty() ? nullptr : entry.name.c_str(), 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(text.c_str()),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

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

/// Tries everything, then reports the first failure.
void RemoveTrees(base::RegistryRoot root, const Contents& contents) {
  const HKEY hive = HiveOf(root);
  LSTATUS failure = ERROR_SUCCESS;
  std::string failed;
  for (const std::string& tree : contents.trees) {
    const LSTATUS status = RegDeleteTreeW(hive, KeyPath(tree).c_str());
    if (status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND || failure != ERROR_SUCCESS) continue;
    failure = status;
    failed = tree;
  }
  if (root == base::RegistryRoot::kCurrentUser) {
    DeleteWhenEmpty(hive, KeyPath("CLSID"));
    DeleteWhenEmpty(hive, KeyPath("TypeLib"));
  }
  if (failure != ERROR_SUCCESS) Fail("Could not delete", failed, failure);
}

}  // namespace

bool RegisterServerIn(base::RegistryRoot root, const std::vector<ServerClass>& classes, int typeLibrary) {
  const Contents contents = ContentsOf(classes, typeLibrary);
  for (const Entry& entry : contents.entries) {
    const LSTATUS status = WriteEntry(root, entry);
    if (status == ERROR_SUCCESS) continue;
    if (&entry == &contents.entries.front() && status == ERROR_ACCESS_DENIED) return false;
    RemoveTrees(root, contents);
    Fail("Could not write", entry.key, status);
  }
  return true;
}

void RegisterServer(const std::vector<ServerClass>& classes, int typeLibrary) {
  if (RegisterServerIn(base::RegistryRoot::kLocalMachine, classes, typeLibrary)) return;
  if (RegisterServerIn(base::RegistryRoot::kCurrentUser, classes, typeLibrary)) return;
  throw base::Error("Neither the machine's nor the user's classes can be written.");
}

void UnregisterServer(const std::vector<ServerClass>& classes, int typeLibrary) {
  const Contents contents = ContentsOf(classes, typeLibrary);
  RemoveTrees(base::RegistryRoot::kCurrentUser, contents);
  RemoveTrees(base::RegistryRoot::kLocalMachine, contents);
}

}  // namespace win32
