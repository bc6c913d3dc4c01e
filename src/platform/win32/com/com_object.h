// Outgoing late-bound objects: automation::Object over the IDispatch of another process or component. Member
// ids are asked once per class of objects and kept for the life of the process, where a class is the way an
// object was reached (program id, then member after member; all items of a collection are one class). An
// object that turns out to be different gets ids of its own. Every failure is an automation::Error.
// User-interface thread only.
#pragma once

#include <string_view>

#include "automation/object.h"
#include "platform/win32/system/handle.h"

namespace win32 {

/// Creates an object of another program or component. Throws automation::Error naming the program id and the
/// reason.
automation::Object CreateObject(std::string_view programId);

/// An object that arrived by other ways than a member of a known object; nothing for null. Adds its own
/// reference.
automation::Object FromDispatch(IDispatch* dispatch);

/// The COM object behind `object`, or an empty pointer when it stands on something else.
ComPtr<IDispatch> ComObjectOf(const automation::Object& object);

}  // namespace win32
