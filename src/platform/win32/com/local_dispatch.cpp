#include "platform/win32/com/local_dispatch.h"

#include <map>
#include <vector>

#include "automation/error.h"
#include "automation/local_object.h"
#include "platform/win32/com/com_class.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/system/text.h"

namespace win32 {
namespace {

using automation::Access;
using automation::LocalObject;
using automation::Value;

// --- what a type library tells of a dispatch interface ---

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

bool IsPlain(VARTYPE type) {
  return type == VT_UI1 || type == VT_BOOL || (type >= VT_I2 && type <= VT_R8) || type == VT_BSTR;
}

MemberDescription Describe(const FUNCDESC& function) {
  MemberDescription member{function.elemdescFunc.tdesc.vt, {}};
  for (SHORT i = 0; i < function.cParams; ++i)
    member.parameters.push_back(function.lprgelemdescParam[i].tdesc.vt);
  return member;
}

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

/// An argument for a parameter of type `declared`. Nothing becomes the empty text where a text is due, as the
/// platform converts it; null and an argument that was left out are refused with the code that
/// IDispatch::Invoke documents for them. Throws as ToValue does.
HRESULT TakeArgument(const VARIANT& given, VARTYPE declared, Value& taken) {
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

// --- the adapter ---

HRESULT Report(EXCEPINFO* exception, std::uint32_t code, const std::string& description,
               const std::string& source) {
  if (!exception) return static_cast<HRESULT>(code);
  *exception = {};
  exception->scode = static_cast<SCODE>(code);
  exception->bstrDescription = Bstr(description).Release();
  exception->bstrSource = Bstr(source).Release();
  return DISP_E_EXCEPTION;
}

/// The arguments in the order of the parameters. A caller gives them last one first, and those that it names
/// before all others, each with the id of its parameter. An argument that cannot be placed is told by its
/// index, with the codes that IDispatch::Invoke documents.
HRESULT Order(const MemberDescription& member, const DISPPARAMS& given, bool put, std::vector<Value>& ordered,
              UINT& index) {
  // The one argument of a write carries the name DISPID_PROPERTYPUT.
  const UINT named = put ? 0 : given.cNamedArgs;
  if (named > given.cArgs) return E_INVALIDARG;
  if (named > 0 && member.parameters.empty()) return DISP_E_NONAMEDARGS;
  ordered.resize(given.cArgs);
  std::vector<bool> filled(given.cArgs);
  for (index = 0; index < given.cArgs; ++index) {
    const bool isNamed = index < named;
    const UINT place = isNamed ? static_cast<UINT>(given.rgdispidNamedArgs[index]) : given.cArgs - 1 - index;
    if (isNamed && place >= member.parameters.size()) return DISP_E_PARAMNOTFOUND;
    // No parameter is optional: so many arguments can only be the first ones.
    if (place >= given.cArgs) return DISP_E_PARAMNOTOPTIONAL;
    if (filled[place]) return DISP_E_PARAMNOTFOUND;
    filled[place] = true;
    const HRESULT taken = TakeArgument(given.rgvarg[index], member.Parameter(place, put), ordered[place]);
    if (FAILED(taken)) return taken;
  }
  return S_OK;
}

class LocalDispatch : public ComClass<IDispatch> {
 public:
  LocalDispatch(std::shared_ptr<LocalObject> object, ITypeInfo* typeInfo)
      : object_(std::move(object)), description_(typeInfo) {
    Shown().emplace(object_.get(), this);
  }
  ~LocalDispatch() override { LetGo(); }

  /// From now on there is nothing behind this, whoever holds it.
  void LetGo() {
    Shown().erase(object_.get());
    object_.reset();
  }

  const std::shared_ptr<LocalObject>& GetObject() const { return object_; }

  /// All adapters that somebody holds, by the object that they show.
  static std::map<LocalObject*, LocalDispatch*>& Shown() {
    static std::map<LocalObject*, LocalDispatch*> shown;
    return shown;
  }

  /// The dispatch interface of the type library is IDispatch under an id of its own.
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool own = description_ && id == description_.Id();
    return ComClass::QueryInterface(own ? __uuidof(IDispatch) : id, object);
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = description_ ? 1 : 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** typeInfo) override {
    if (!typeInfo) return E_POINTER;
    *typeInfo = nullptr;
    if (index != 0 || !description_) return DISP_E_BADINDEX;
    *typeInfo = ComPtr<ITypeInfo>::Share(description_.Info()).Release();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    if (!object_) return RPC_E_DISCONNECTED;
    for (UINT i = 1; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    const int place = object_->Find(Utf8(names[0]));
    ids[0] = place < 0 ? DISPID_UNKNOWN : place + 1;
    if (place < 0) return DISP_E_UNKNOWNNAME;
    // Names after the first are parameters, which only type information knows.
    if (count == 1) return S_OK;
    return description_ ? description_.Info()->GetIDsOfNames(names, count, ids) : DISP_E_UNKNOWNNAME;
  }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
    if (!parameters) return E_POINTER;
    if (!object_) return RPC_E_DISCONNECTED;
    const int place = id == DISPID_VALUE ? DefaultMember() : static_cast<int>(id) - 1;
    if (place < 0 || place >= object_->MemberCount()) return DISP_E_MEMBERNOTFOUND;
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (put && parameters->cArgs != 1 && !object_->HasIndex(place)) return DISP_E_BADPARAMCOUNT;
    const Access access = put ? Access::kPut : flags & DISPATCH_PROPERTYGET ? Access::kGet : Access::kCall;
    const MemberDescription& described = description_.At(place);
    try {
      std::vector<Value> arguments;
      UINT index = 0;
      const HRESULT ordered = Order(described, *parameters, put, arguments, index);
      if (FAILED(ordered)) {
        if (wrongArgument) *wrongArgument = index;
        return ordered;
      }
      const auto object = object_;  // a member may let go of the last reference to it
      const Value value = object->InvokeAt(place, access, arguments);
      if (result) *result = described.Shape(ToVariant(value)).Release();
      return S_OK;
    } catch (const automation::Error& error) {
      return Report(exception, error.Code(), error.Description(), error.Source());
    } catch (const std::exception& error) {
      return Report(exception, automation::kApplicationDefined, error.what(), {});
    } catch (...) {
      return Report(exception, automation::kApplicationDefined, "An unknown error occurred.", {});
    }
  }

 private:
  int DefaultMember() const {
    const int item = object_->Find("Item");
    return item >= 0 ? item : object_->Find("Value");
  }

  std::shared_ptr<LocalObject> object_;
  InterfaceDescription description_;
};

}  // namespace

ComPtr<IDispatch> ToDispatch(const automation::Object& object, ITypeInfo* typeInfo) {
  if (!object) return {};
  if (auto com = ComObjectOf(object)) return com;
  auto local = std::dynamic_pointer_cast<LocalObject>(object.GetTarget());
  if (!local)
    throw automation::Error(automation::kTypeMismatch, "The object cannot be handed to another program.");
  const auto shown = LocalDispatch::Shown().find(local.get());
  if (shown != LocalDispatch::Shown().end()) return ComPtr<IDispatch>::Share(shown->second);
  return ComPtr<IDispatch>(new LocalDispatch(std::move(local), typeInfo));
}

void DisconnectCallers() {
  const auto shown = LocalDispatch::Shown();
  std::vector<ComPtr<LocalDispatch>> held;
  for (const auto& [object, adapter] : shown) held.push_back(ComPtr<LocalDispatch>::Share(adapter));
  for (const auto& adapter : held) {
    CoDisconnectObject(adapter.Get(), 0);
    adapter->LetGo();  // a call under way may still hold it
  }
}

automation::Object LocalObjectOf(IDispatch* dispatch) {
  for (const auto& [object, adapter] : LocalDispatch::Shown()) {
    if (adapter == dispatch) return automation::Object(adapter->GetObject());
  }
  return {};
}

}  // namespace win32
