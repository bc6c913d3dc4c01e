#include "platform/win32/com/interface_description.h"

#include "automation/error.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/system/system_error.h"

namespace win32 {
namespace {

bool IsPlain(VARTYPE type) {
  return type == VT_UI1 || type == VT_BOOL || (type >= VT_I2 && type <= VT_R8) || type == VT_BSTR;
}

MemberDescription Describe(const FUNCDESC& function) {
  MemberDescription member{function.elemdescFunc.tdesc.vt, {}};
  for (SHORT i = 0; i < function.cParams; ++i)
    member.parameters.push_back(function.lprgelemdescParam[i].tdesc.vt);
  return member;
}

}  // namespace

InterfaceDescription::InterfaceDescription(ITypeInfo* info) : info_(ComPtr<ITypeInfo>::Share(info)) {
  TYPEATTR* attributes = nullptr;
  if (!info || FAILED(info->GetTypeAttr(&attributes))) return;
  id_ = attributes->guid;
  for (UINT i = 0; i < attributes->cVars; ++i) {
    VARDESC* property = nullptr;
    if (FAILED(info->GetVarDesc(i, &property))) continue;
    members_[property->memid] = {property->elemdescVar.tdesc.vt, {}};
    info->ReleaseVarDesc(property);
  }
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(info->GetFuncDesc(i, &function))) continue;
    members_[function->memid] = Describe(*function);
    info->ReleaseFuncDesc(function);
  }
  info->ReleaseTypeAttr(attributes);
}

const MemberDescription& InterfaceDescription::At(int place) const {
  static const MemberDescription kAnything;
  const auto found = members_.find(place + 1);
  return found == members_.end() ? kAnything : found->second;
}

Variant MemberDescription::Shape(Variant value) const {
  if (!IsPlain(type) || value.Get().vt == type) return value;
  Variant shaped;
  const HRESULT result =
      VariantChangeType(shaped.Put(), const_cast<VARIANT*>(&value.Get()), VARIANT_ALPHABOOL, type);
  if (FAILED(result)) throw automation::Error(static_cast<std::uint32_t>(result), SystemText(result));
  return shaped;
}

HRESULT TakeArgument(const VARIANT& given, VARTYPE declared, automation::Value& taken) {
  // Script languages hand over their variables by reference.
  const VARIANT& plain = given.vt == (VT_BYREF | VT_VARIANT) ? *given.pvarVal : given;
  if (IsPlain(declared)) {
    if (plain.vt == VT_NULL) return DISP_E_TYPEMISMATCH;
    if (plain.vt == VT_ERROR && plain.scode == DISP_E_PARAMNOTFOUND) return DISP_E_PARAMNOTOPTIONAL;
  }
  taken = ToValue(given);
  if (declared == VT_BSTR && taken.IsEmpty()) taken = "";
  return S_OK;
}

}  // namespace win32
