#include "platform/win32/com/com_object.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <fmt/format.h>

#include "automation/error.h"
#include "platform/win32/com/call_watch.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/system/text.h"

namespace win32 {
namespace {

using automation::Access;
using automation::Error;
using automation::Value;

// What the system's words do not say of a host that is out of reach.
constexpr struct {
  HRESULT result;
  const char* words;
} kOutOfReach[] = {
    {RPC_E_CALL_CANCELED, " The host did not answer, and the call was given up."},
    {RPC_E_CALL_REJECTED, " The host is busy."},
    {RPC_E_DISCONNECTED, " The host's program has ended."},
    {RPC_E_SERVER_DIED, " The host's program has ended."},
    {RPC_E_SERVER_DIED_DNE, " The host's program has ended."},
    {HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), " The host's program has ended."},
    {HRESULT_FROM_WIN32(RPC_S_CALL_FAILED), " The host's program has ended."},
};

std::string Words(HRESULT result) {
  const auto found = std::ranges::find(kOutOfReach, result, [](const auto& entry) { return entry.result; });
  return SystemText(result) + (found == std::end(kOutOfReach) ? "" : found->words);
}

struct NoCaseLess {
  using is_transparent = void;
  static char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
  bool operator()(std::string_view left, std::string_view right) const {
    return std::ranges::lexicographical_compare(left, right, {}, Lower, Lower);
  }
};

template <class Content>
using ByName = std::map<std::string, Content, NoCaseLess>;

/// What is known of all objects that are reached in one way.
struct ObjectClass {
  std::string path;  // for messages
  ByName<DISPID> ids;
  ByName<std::shared_ptr<ObjectClass>> results;  // classes of the objects that the members give

  explicit ObjectClass(std::string way) : path(std::move(way)) {}

  std::shared_ptr<ObjectClass> ResultOf(std::string_view member) {
    const auto known = results.find(member);
    if (known != results.end()) return known->second;
    auto result = std::make_shared<ObjectClass>(path + "." + std::string(member));
    results.emplace(member, result);
    return result;
  }
};

std::shared_ptr<ObjectClass> RootClass(std::string_view programId) {
  static ByName<std::shared_ptr<ObjectClass>> roots;
  auto& root = roots[std::string(programId)];
  if (!root) root = std::make_shared<ObjectClass>(std::string(programId));
  return root;
}

/// The strings of an EXCEPINFO are the caller's to free.
struct ExceptionInfo : EXCEPINFO {
  ExceptionInfo() : EXCEPINFO{} {}
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;
  ~ExceptionInfo() {
    SysFreeString(bstrDescription);
    SysFreeString(bstrSource);
    SysFreeString(bstrHelpFile);
  }
};

/// One call's arguments as the platform wants them: last one first.
class Parameters {
 public:
  explicit Parameters(std::span<const Value> arguments) {
    owned_.reserve(arguments.size());
    raw_.reserve(arguments.size());
    for (std::size_t i = arguments.size(); i > 0; --i) {
      owned_.push_back(ToVariant(arguments[i - 1]));
      raw_.push_back(owned_.back().Get());
    }
  }

  DISPPARAMS For(WORD flags) {
    const bool put = (flags & DISPATCH_PROPERTYPUT) != 0;
    return {raw_.data(), put ? &putName_ : nullptr, static_cast<UINT>(raw_.size()), put ? 1u : 0u};
  }

  WORD Flags(Access access) const {
    if (access != Access::kPut) return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    const bool object = !raw_.empty() && raw_.front().vt == VT_DISPATCH;
    return static_cast<WORD>(DISPATCH_PROPERTYPUT | (object ? DISPATCH_PROPERTYPUTREF : 0));
  }

 private:
  std::vector<Variant> owned_;
  std::vector<VARIANT> raw_;  // borrows from owned_
  DISPID putName_ = DISPID_PROPERTYPUT;
};

class ComTarget : public automation::Target {
 public:
  ComTarget(ComPtr<IDispatch> dispatch, std::shared_ptr<ObjectClass> objectClass)
      : dispatch_(std::move(dispatch)), class_(std::move(objectClass)) {}
  ~ComTarget() override {
    const PendingCall call("Release");
    dispatch_.Reset();
  }

  IDispatch* Dispatch() const { return dispatch_.Get(); }

  Value Invoke(Access access, std::string_view member, std::span<const Value> arguments) override {
    const PendingCall call(member);
    Parameters parameters(arguments);
    const auto known = class_->ids.find(member);
    if (known == class_->ids.end()) {
      const DISPID id = LookUp(member);
      class_->ids.emplace(member, id);
      return Make(access, member, id, parameters);
    }
    const DISPID id = known->second;
    if (auto value = Try(access, member, id, parameters)) return std::move(*value);
    const DISPID fresh = LookUp(member);
    if (fresh != id) {
      // Not an object of the class that it was taken for: from now on it has ids of its own.
      class_ = std::make_shared<ObjectClass>(class_->path);
      class_->ids.emplace(member, fresh);
    }
    return Make(access, member, fresh, parameters);
  }

 private:
  [[noreturn]] void Fail(std::string_view member, HRESULT result, const std::string& more = {}) const {
    throw Error(static_cast<std::uint32_t>(result),
                fmt::format("\"{}\" of {} failed: {}{}", member, class_->path, Words(result), more));
  }

  DISPID LookUp(std::string_view member) const {
    std::wstring name = Wide(member);
    LPOLESTR names[] = {name.data()};
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = dispatch_->GetIDsOfNames(GUID{}, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result)) Fail(member, result);
    return id;
  }

  Value Make(Access access, std::string_view member, DISPID id, Parameters& parameters) const {
    auto value = Try(access, member, id, parameters);
    if (!value) Fail(member, DISP_E_MEMBERNOTFOUND);
    return std::move(*value);
  }

  /// Nothing when the object does not know the id.
  std::optional<Value> Try(Access access, std::string_view member, DISPID id, Parameters& parameters) const {
    const WORD flags = parameters.Flags(access);
    DISPPARAMS raw = parameters.For(flags);
    Variant result;
    ExceptionInfo exception;
    UINT argument = 0;
    const HRESULT status =
        dispatch_->Invoke(id, GUID{}, LOCALE_USER_DEFAULT, flags, &raw,
                          access == Access::kPut ? nullptr : result.Put(), &exception, &argument);
    if (status == DISP_E_MEMBERNOTFOUND) return {};
    if (status == DISP_E_EXCEPTION) Rethrow(member, exception);
    if (status == DISP_E_TYPEMISMATCH || status == DISP_E_PARAMNOTFOUND) {
      const UINT place = argument < raw.cArgs ? raw.cArgs - argument : 0;
      Fail(member, status, place ? fmt::format(" Argument {}.", place) : "");
    }
    if (FAILED(status)) Fail(member, status);
    return ResultOf(member, result.Get());
  }

  [[noreturn]] void Rethrow(std::string_view member, ExceptionInfo& exception) const {
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    const auto code = exception.wCode ? exception.wCode : static_cast<std::uint32_t>(exception.scode);
    std::string description = TextOf(exception.bstrDescription);
    if (description.empty()) Fail(member, static_cast<HRESULT>(code ? code : DISP_E_EXCEPTION));
    throw Error(code, description, TextOf(exception.bstrSource));
  }

  Value ResultOf(std::string_view member, const VARIANT& result) const {
    const bool object = result.vt == VT_DISPATCH && result.pdispVal && !LocalObjectOf(result.pdispVal);
    if (!object) return ToValue(result);
    return automation::Object(
        std::make_shared<ComTarget>(ComPtr<IDispatch>::Share(result.pdispVal), class_->ResultOf(member)));
  }

  ComPtr<IDispatch> dispatch_;
  std::shared_ptr<ObjectClass> class_;
};

[[noreturn]] void FailCreation(std::string_view programId, HRESULT result) {
  // The system has no words of its own for all of its versions of this.
  const bool unknown = result == CO_E_CLASSSTRING || result == REGDB_E_CLASSNOTREG;
  throw Error(static_cast<std::uint32_t>(result),
              fmt::format("The object \"{}\" could not be created: {}{}", programId,
                          unknown ? "it is not registered on this computer. " : "", Words(result)));
}

}  // namespace

automation::Object CreateObject(std::string_view programId) {
  CLSID classId;
  HRESULT result = CLSIDFromProgID(Wide(programId).c_str(), &classId);
  if (FAILED(result)) FailCreation(programId, result);
  void* object = nullptr;
  const PendingCall call(programId);
  result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, __uuidof(IDispatch),
                            &object);
  if (FAILED(result)) FailCreation(programId, result);
  ComPtr<IDispatch> dispatch(static_cast<IDispatch*>(object));
  return automation::Object(std::make_shared<ComTarget>(std::move(dispatch), RootClass(programId)));
}

automation::Object FromDispatch(IDispatch* dispatch) {
  if (!dispatch) return {};
  return automation::Object(std::make_shared<ComTarget>(ComPtr<IDispatch>::Share(dispatch),
                                                        std::make_shared<ObjectClass>("an object")));
}

ComPtr<IDispatch> ComObjectOf(const automation::Object& object) {
  const auto* target = dynamic_cast<const ComTarget*>(object.GetTarget().get());
  return target ? ComPtr<IDispatch>::Share(target->Dispatch()) : ComPtr<IDispatch>();
}

}  // namespace win32
