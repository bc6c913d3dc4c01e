#include "platform/win32/com/variant.h"

#include <cstring>

#include <fmt/format.h>

#include "automation/error.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/system/text.h"

namespace win32 {
namespace {

using automation::Bytes;
using automation::Value;

void Check(HRESULT result) {
  if (FAILED(result)) throw automation::Error(static_cast<std::uint32_t>(result), SystemText(result));
}

template <class Number>
Value WholeOrReal(Number number) {
  if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

class ArrayAccess {
 public:
  explicit ArrayAccess(SAFEARRAY* array) : array_(array) { Check(SafeArrayAccessData(array, &data_)); }
  ArrayAccess(const ArrayAccess&) = delete;
  ArrayAccess& operator=(const ArrayAccess&) = delete;
  ~ArrayAccess() { SafeArrayUnaccessData(array_); }
  void* Data() const { return data_; }

 private:
  SAFEARRAY* array_;
  void* data_ = nullptr;
};

std::uint8_t ToByte(const VARIANT& element) {
  const std::int32_t whole = ToValue(element).AsWhole();
  if (whole < 0 || whole > 255)
    throw automation::Error(automation::kTypeMismatch, fmt::format("{} in an array is not a byte.", whole));
  return static_cast<std::uint8_t>(whole);
}

Bytes ToBytes(SAFEARRAY* array, VARTYPE element) {
  if (!array) return {};
  if (SafeArrayGetDim(array) != 1)
    throw automation::Error(automation::kTypeMismatch, "The array has more than one dimension.");
  LONG lower = 0;
  LONG upper = -1;
  Check(SafeArrayGetLBound(array, 1, &lower));
  Check(SafeArrayGetUBound(array, 1, &upper));
  Bytes bytes(upper < lower ? 0 : static_cast<std::size_t>(upper - lower) + 1);
  const ArrayAccess access(array);
  if (element == VT_UI1) {
    if (!bytes.empty()) std::memcpy(bytes.data(), access.Data(), bytes.size());
    return bytes;
  }
  // Script languages have no arrays but those of variants.
  const auto* variants = static_cast<const VARIANT*>(access.Data());
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = ToByte(variants[i]);
  return bytes;
}

Value ToObject(IUnknown* unknown) {
  if (!unknown) return automation::Object();
  const auto dispatch = ComPtr<IUnknown>::Share(unknown).As<IDispatch>();
  if (!dispatch)
    throw automation::Error(automation::kTypeMismatch, "The object has no members to call by name.");
  if (auto local = LocalObjectOf(dispatch.Get())) return local;
  return FromDispatch(dispatch.Get());
}

// For the types without a C++ counterpart that the system itself turns into a real.
Value ConvertToReal(const VARIANT& variant) {
  Variant real;
  Check(VariantChangeType(real.Put(), const_cast<VARIANT*>(&variant), 0, VT_R8));
  return real.Get().dblVal;
}

Value FromPlain(const VARIANT& variant) {
  switch (variant.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_ERROR:
      if (variant.scode == DISP_E_PARAMNOTFOUND) return {};
      break;
    case VT_BOOL:
      return variant.boolVal != VARIANT_FALSE;
    case VT_I1:
      return WholeOrReal(static_cast<int>(static_cast<signed char>(variant.cVal)));
    case VT_UI1:
      return WholeOrReal(static_cast<int>(variant.bVal));
    case VT_I2:
      return WholeOrReal(static_cast<int>(variant.iVal));
    case VT_UI2:
      return WholeOrReal(static_cast<int>(variant.uiVal));
    case VT_I4:
      return WholeOrReal(variant.lVal);
    case VT_INT:
      return WholeOrReal(variant.intVal);
    case VT_UI4:
      return WholeOrReal(variant.ulVal);
    case VT_UINT:
      return WholeOrReal(variant.uintVal);
    case VT_I8:
      return WholeOrReal(variant.llVal);
    case VT_UI8:
      return WholeOrReal(variant.ullVal);
    case VT_R4:
      return static_cast<double>(variant.fltVal);
    case VT_R8:
    case VT_DATE:
      return variant.dblVal;
    case VT_CY:
    case VT_DECIMAL:
      return ConvertToReal(variant);
    case VT_BSTR:
      return TextOf(variant.bstrVal);
    case VT_DISPATCH:
      return ToObject(variant.pdispVal);
    case VT_UNKNOWN:
      return ToObject(variant.punkVal);
    case VT_ARRAY | VT_UI1:
      return ToBytes(variant.parray, VT_UI1);
    case VT_ARRAY | VT_VARIANT:
      return ToBytes(variant.parray, VT_VARIANT);
    default:
      break;
  }
  throw automation::Error(automation::kTypeMismatch,
                          fmt::format("A value of variant type {} is not understood.", variant.vt));
}

struct Writer {
  VARIANT* out;

  void operator()(std::monostate) const {}
  void operator()(bool flag) const {
    out->vt = VT_BOOL;
    out->boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  }
  void operator()(std::int32_t whole) const {
    out->vt = VT_I4;
    out->lVal = whole;
  }
  void operator()(double real) const {
    out->vt = VT_R8;
    out->dblVal = real;
  }
  void operator()(const std::string& text) const {
    out->bstrVal = Bstr(text).Release();
    if (!out->bstrVal) Check(E_OUTOFMEMORY);
    out->vt = VT_BSTR;
  }
  void operator()(const Bytes& bytes) const {
    out->parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!out->parray) Check(E_OUTOFMEMORY);
    out->vt = VT_ARRAY | VT_UI1;
    if (bytes.empty()) return;
    const ArrayAccess access(out->parray);
    std::memcpy(access.Data(), bytes.data(), bytes.size());
  }
  void operator()(const automation::Object& object) const {
    out->pdispVal = ToDispatch(object).Release();
    out->vt = VT_DISPATCH;
  }
  void operator()(const automation::List& list) const {
    out->parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(list.size()));
    if (!out->parray) Check(E_OUTOFMEMORY);
    out->vt = VT_ARRAY | VT_VARIANT;
    const ArrayAccess access(out->parray);
    auto* elements = static_cast<VARIANT*>(access.Data());
    for (std::size_t i = 0; i < list.size(); ++i) elements[i] = ToVariant(list[i]).Release();
  }
};

}  // namespace

Value ToValue(const VARIANT& variant) {
  if (!(variant.vt & VT_BYREF)) return FromPlain(variant);
  if (variant.vt == (VT_BYREF | VT_VARIANT)) return ToValue(*variant.pvarVal);
  Variant plain;
  Check(VariantCopyInd(plain.Put(), const_cast<VARIANT*>(&variant)));
  return FromPlain(plain.Get());
}

Variant ToVariant(const Value& value) {
  Variant variant;
  std::visit(Writer{variant.Put()}, value.Get());
  return variant;
}

}  // namespace win32
