// Shows objects of this process to late-bound callers elsewhere: any automation::LocalObject as an IDispatch,
// whose member ids are the places in the member table plus 1. One object has one IDispatch as long as
// somebody holds it. The id 0 is the object's `Item` or `Value` where it has one. User-interface thread only.
#pragma once

#include "automation/object.h"
#include "platform/win32/system/handle.h"

namespace win32 {

/// The IDispatch of `object`: its own when it is a COM object already, an empty pointer for nothing. Errors
/// of the members arrive at the caller with code, description and source; other exceptions as
/// kApplicationDefined. Throws automation::Error kTypeMismatch when the object is neither local nor COM.
/// With `typeInfo`, a dispatch interface, the object also answers for that interface, callers may name their
/// arguments, and results have the types that it tells. It is handed to tools that ask for it.
ComPtr<IDispatch> ToDispatch(const automation::Object& object, ITypeInfo* typeInfo = nullptr);

/// Takes every object that is shown away from callers in other processes, whose further calls fail. The
/// objects end unless this process holds them.
void DisconnectCallers();

/// The local object that ToDispatch showed as `dispatch`, so that an object which comes back is called
/// directly; nothing for an object of somebody else.
automation::Object LocalObjectOf(IDispatch* dispatch);

}  // namespace win32
