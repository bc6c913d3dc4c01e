// The system's VARIANT and the tool's automation::Value, one into the other. Used by the outgoing objects and
// by the adapter that shows local objects to other processes.
#pragma once

#include "automation/object.h"
#include "platform/win32/system/handle.h"

namespace win32 {

/// Follows references. Numbers too large for 32 bits, dates and currencies become reals; a missing argument
/// and null become nothing; an array of bytes, or of variants that are each 0 to 255, becomes bytes. Any
/// other type is an automation::Error kTypeMismatch that names it.
automation::Value ToValue(const VARIANT& variant);

/// Text becomes VT_BSTR, bytes VT_ARRAY | VT_UI1, a list VT_ARRAY | VT_VARIANT, an object VT_DISPATCH. Throws
/// as ToDispatch does.
Variant ToVariant(const automation::Value& value);

}  // namespace win32
