// What a type library tells of a dispatch interface: its id, the names of its parameters and the types of its
// members. Used by the adapter that shows local objects to other processes.
#pragma once

#include <map>
#include <vector>

#include "automation/object.h"
#include "platform/win32/system/handle.h"

namespace win32 {

struct MemberDescription {
  VARTYPE type = VT_VARIANT;        // of the property or the result
  std::vector<VARTYPE> parameters;  // of a method

  /// The type of an argument: of a write, the property's.
  VARTYPE Parameter(std::size_t place, bool put) const {
    if (put) return type;
    return place < parameters.size() ? parameters[place] : VARTYPE{VT_VARIANT};
  }
  /// `value` as the type that the library promises to callers.
  Variant Shape(Variant value) const;
};

/// Empty when there is no type information: every member then takes and gives anything.
class InterfaceDescription {
 public:
  explicit InterfaceDescription(ITypeInfo* info);

  explicit operator bool() const { return static_cast<bool>(info_); }
  ITypeInfo* Info() const { return info_.Get(); }
  const IID& Id() const { return id_; }
  /// The member at a place of the member table, whose id is the place plus 1.
  const MemberDescription& At(int place) const;

 private:
  ComPtr<ITypeInfo> info_;
  IID id_ = {};
  std::map<MEMBERID, MemberDescription> members_;
};

/// An argument for a parameter of type `declared`. Nothing becomes the empty text where a text is due, as the
/// platform converts it; null and an argument that was left out are refused with the code that
/// IDispatch::Invoke documents for them. Throws as ToValue does.
HRESULT TakeArgument(const VARIANT& given, VARTYPE declared, automation::Value& taken);

}  // namespace win32
