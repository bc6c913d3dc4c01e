// What an installer needs of the automation server: its classes and its type library in the system's
// registry, for all users where that is allowed, else for the present user. Called for /RegServer and
// /UnregServer.
#pragma once

#include "base/registry.h"
#include "platform/win32/com/com_server.h"

namespace win32 {

/// Writes the classes with the path of this executable or library. `typeLibrary` is the number of its TYPELIB
/// resource, 0 for none; the resource of the next number, where there is one, is for programs of the other
/// width. Gives back for whom: what is registered for one user is unknown to programs with administrator's
/// rights. Throws base::Error with the key and the reason; nothing half-written stays.
base::RegistryRoot RegisterServer(const std::vector<ServerClass>& classes, int typeLibrary);

/// Removes what names this executable or library, for all users and for the present one; keys that are
/// missing are no error. What the registration of another copy, or of the other width, needs as well stays.
/// Throws base::Error.
void UnregisterServer(const std::vector<ServerClass>& classes, int typeLibrary);

/// RegisterServer for one of the two. False when the system does not allow it.
bool RegisterServerIn(base::RegistryRoot root, const std::vector<ServerClass>& classes, int typeLibrary);

}  // namespace win32
