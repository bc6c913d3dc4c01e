// The type library that this executable or library carries, and its registration. The resource of the next
// number holds the same library for programs of the other width.
#pragma once

#include <string>

#include "base/registry.h"
#include "platform/win32/system/handle.h"

namespace win32 {

/// The library of a TYPELIB resource; empty when there is none of this number.
ComPtr<ITypeLib> OwnTypeLibrary(int resource);

/// As the keys of the registry write them.
struct LibraryName {
  std::string id;
  std::string version;
};
/// Throws base::Error when there is no such resource.
LibraryName OwnLibraryName(int resource);

/// Names this file for its own width, and for the other width unless a program of that width is named there
/// already. With the library the system registers its interfaces, in the views of both widths. Throws
/// base::Error.
void RegisterTypeLibrary(base::RegistryRoot root, int resource);

/// Takes this file's names away again; what names another file stays, with the interfaces. Gives back the
/// first failure, or S_OK.
HRESULT RemoveTypeLibrary(base::RegistryRoot root, int resource);

}  // namespace win32
