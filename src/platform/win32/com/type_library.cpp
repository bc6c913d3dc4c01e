#include "platform/win32/com/type_library.h"

#include <fmt/format.h>

#include "base/error.h"
#include "base/text.h"
#include "platform/win32/system/files.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/registry.h"
#include "platform/win32/system/text.h"

// The import libraries have these two, the compiler's headers do not.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib*, OLECHAR* path, OLECHAR* helpFolder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID, WORD major, WORD minor, LCID, SYSKIND);

namespace win32 {
namespace {

using base::RegistryRoot;

constexpr SYSKIND kWidths[] = {SYS_WIN32, SYS_WIN64};

struct Attributes {
  GUID id = {};
  WORD major = 0;
  WORD minor = 0;
  SYSKIND width = SYS_WIN32;

  LibraryName Name() const { return {GuidText(id), fmt::format("{:x}.{:x}", major, minor)}; }

  /// The file that is registered for a width; empty for none.
  std::string FileOf(RegistryRoot root, SYSKIND forWidth) const {
    const LibraryName name = Name();
    const std::string key = fmt::format("Software\\Classes\\TypeLib\\{}\\{}\\0\\{}", name.id, name.version,
                                        forWidth == SYS_WIN64 ? "win64" : "win32");
    return DefaultText(RegistryView::kOwn, HiveOf(root), key);
  }
};

Attributes AttributesOf(const ComPtr<ITypeLib>& library) {
  TLIBATTR* found = nullptr;
  if (!library || FAILED(library->GetLibAttr(&found)))
    throw base::Error("The program carries no type library.");
  const Attributes attributes{found->guid, found->wMajorVerNum, found->wMinorVerNum, found->syskind};
  library->ReleaseTLibAttr(found);
  return attributes;
}

HRESULT Register(RegistryRoot root, ITypeLib* library, const std::string& file) {
  const auto add = root == RegistryRoot::kLocalMachine ? &RegisterTypeLib : &RegisterTypeLibForUser;
  return add(library, Wide(file).data(), nullptr);
}

/// Also true of a resource of this file, which is named behind it.
bool IsOwn(const std::string& file) {
  const std::string own = ModulePath();
  return base::EqualsNoCase(file.substr(0, own.size()), own);
}

}  // namespace

ComPtr<ITypeLib> OwnTypeLibrary(int resource) {
  ComPtr<ITypeLib> library;
  if (resource == 0) return library;
  const std::wstring file = Wide(ModulePath() + "\\" + std::to_string(resource));
  LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Put());
  return library;
}

LibraryName OwnLibraryName(int resource) { return AttributesOf(OwnTypeLibrary(resource)).Name(); }

void RegisterTypeLibrary(RegistryRoot root, int resource) {
  for (const int number : {resource, resource + 1}) {
    const auto library = OwnTypeLibrary(number);
    if (!library && number != resource) return;
    const Attributes attributes = AttributesOf(library);
    const std::string named = attributes.FileOf(root, attributes.width);
    if (number != resource && !IsOwn(named) && FileExists(named)) continue;
    const std::string file = number == resource ? ModulePath() : fmt::format("{}\\{}", ModulePath(), number);
    const HRESULT result = Register(root, library.Get(), file);
    if (FAILED(result)) throw base::Error("Could not register the type library: " + SystemText(result));
  }
}

HRESULT RemoveTypeLibrary(RegistryRoot root, int resource) {
  const auto remove = root == RegistryRoot::kLocalMachine ? &UnRegisterTypeLib : &UnRegisterTypeLibForUser;
  const Attributes own = AttributesOf(OwnTypeLibrary(resource));
  HRESULT failure = S_OK;
  bool removed = false;
  for (const SYSKIND width : kWidths) {
    if (!IsOwn(own.FileOf(root, width))) continue;
    const HRESULT result = remove(own.id, own.major, own.minor, LOCALE_NEUTRAL, width);
    removed = true;
    if (SUCCEEDED(failure)) failure = result;
  }
  if (!removed) return failure;
  // The interfaces went as well, and the library that is still named needs them.
  for (const SYSKIND width : kWidths) {
    ComPtr<ITypeLib> other;
    const std::string file = own.FileOf(root, width);
    if (file.empty() || FAILED(LoadTypeLibEx(Wide(file).c_str(), REGKIND_NONE, other.Put()))) continue;
    const HRESULT result = Register(root, other.Get(), file);
    if (SUCCEEDED(failure)) failure = result;
  }
  return failure;
}

}  // namespace win32
