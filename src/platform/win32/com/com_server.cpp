#include "platform/win32/com/com_server.h"

#include <fmt/format.h>

#include "base/error.h"
#include "platform/win32/com/com_class.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/type_library.h"
#include "platform/win32/system/own_window.h"
#include "platform/win32/system/text.h"

namespace win32 {
namespace {

// --- for Wine alone ---
// An interface of an object that callers in other processes could ask for, kept ready for as long as this
// lives.
//
// Wine ends its service for an interface with the last object that offers it here, and then waits for calls
// of the interface that are still returning. It can miss their end and wait for ever: the caller hangs with
// it. With one of each kept there is no last one.
class KeptInterface {
 public:
  KeptInterface(IUnknown* object, const IID& id) {
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream_.Put()))) return;
    if (FAILED(CoMarshalInterface(stream_.Get(), id, object, MSHCTX_LOCAL, nullptr, MSHLFLAGS_TABLESTRONG)))
      stream_.Reset();
  }
  KeptInterface(KeptInterface&&) = default;
  KeptInterface& operator=(KeptInterface&&) = delete;
  ~KeptInterface() {
    if (!stream_ || FAILED(stream_->Seek({}, STREAM_SEEK_SET, nullptr))) return;
    CoReleaseMarshalData(stream_.Get());
  }

 private:
  ComPtr<IStream> stream_;
};

/// What callers see of this process is of these interfaces. Nobody calls this one.
class NoObject : public ComClass<IDispatch, IClassFactory> {
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};
// ---

ComPtr<ITypeInfo> TypeInfoOf(int typeLibrary, const GUID& interfaceId) {
  ComPtr<ITypeInfo> info;
  const auto library = OwnTypeLibrary(typeLibrary);
  if (library && interfaceId != GUID{}) library->GetTypeInfoOfGuid(interfaceId, info.Put());
  return info;
}

}  // namespace

struct ComServer::State {
  using Registration = Owner<DWORD, Calls<CoRevokeClassObject>>;
  std::vector<Registration> registrations;
  std::vector<KeptInterface> kept;  // for Wine alone
  bool singleUse = true;
  std::function<void()> onLastRelease;
  int outstanding = 0;

  void Add() { ++outstanding; }
  void Drop() {
    if (--outstanding == 0 && onLastRelease) Guarded(onLastRelease);
  }
};

class ComServer::Factory : public ComClass<IClassFactory> {
 public:
  Factory(const ServerClass& served, int typeLibrary, std::shared_ptr<State> state)
      : make_(served.make),
        typeInfo_(TypeInfoOf(typeLibrary, served.interfaceId)),
        state_(std::move(state)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    // Withdrawing the classes lets go of their factories, this one too.
    const auto self = ComPtr<Factory>::Share(this);
    try {
      auto made = make_();
      if (!made) return E_FAIL;
      const automation::Object counted(Counted(std::move(made)));
      // The system withdraws the class that was used, but not the others.
      if (state_->singleUse) state_->registrations.clear();
      return ToDispatch(counted, typeInfo_.Get())->QueryInterface(id, object);
    } catch (const automation::Error& error) {
      return static_cast<HRESULT>(error.Code());
    } catch (...) {
      return E_FAIL;
    }
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    lock ? state_->Add() : state_->Drop();
    return S_OK;
  }

 private:
  /// The same object, but the count goes down after the last reference to it went.
  std::shared_ptr<automation::LocalObject> Counted(std::shared_ptr<automation::LocalObject> object) const {
    auto* raw = object.get();
    auto release = [object = std::move(object), state = state_](automation::LocalObject*) mutable {
      object.reset();
      state->Drop();
    };
    state_->Add();
    return {raw, std::move(release)};
  }

  std::function<std::shared_ptr<automation::LocalObject>()> make_;
  ComPtr<ITypeInfo> typeInfo_;
  std::shared_ptr<State> state_;
};

ComServer::ComServer(const std::vector<ServerClass>& classes, Options options)
    : state_(std::make_shared<State>()) {
  state_->onLastRelease = std::move(options.onLastRelease);
  state_->singleUse = options.singleUse;
  const ComPtr<IDispatch> standIn(new NoObject);
  for (const IID& id : {__uuidof(IDispatch), __uuidof(IClassFactory)}) {
    state_->kept.emplace_back(standIn.Get(), id);
  }
  for (const ServerClass& served : classes) {
    const ComPtr<IClassFactory> factory(new Factory(served, options.typeLibrary, state_));
    State::Registration registration;
    const HRESULT result =
        CoRegisterClassObject(served.classId, factory.Get(), CLSCTX_LOCAL_SERVER,
                              options.singleUse ? REGCLS_SINGLEUSE : REGCLS_MULTIPLEUSE, registration.Put());
    if (FAILED(result))
      throw base::Error(
          fmt::format("The class {} could not be offered: {}", served.friendlyName, SystemText(result)));
    state_->registrations.push_back(std::move(registration));
  }
}

ComServer::~ComServer() {
  state_->registrations.clear();
  state_->kept.clear();
  state_->onLastRelease = nullptr;
  DisconnectCallers();
}

int ComServer::Outstanding() const { return state_->outstanding; }

}  // namespace win32
