#include "platform/win32/com_server.h"

#include <fmt/format.h>

#include "base/error.h"
#include "platform/win32/com_class.h"
#include "platform/win32/local_dispatch.h"
#include "platform/win32/process.h"
#include "platform/win32/system_error.h"

namespace win32 {

struct ComServer::State {
  std::vector<Owner<DWORD, RevokeClassObject>> registrations;
  bool singleUse = true;
  std::function<void()> onLastRelease;
  int outstanding = 0;

  void Add() { ++outstanding; }
  void Drop() {
    if (--outstanding == 0 && onLastRelease) onLastRelease();
  }
};

namespace {

ComPtr<ITypeInfo> TypeInfoOf(int typeLibrary, const GUID& interfaceId) {
  ComPtr<ITypeInfo> info;
  const auto library = OwnTypeLibrary(typeLibrary);
  if (library && interfaceId != GUID{}) library->GetTypeInfoOfGuid(interfaceId, info.Put());
  return info;
}

}  // namespace

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
  for (const ServerClass& served : classes) {
    const ComPtr<IClassFactory> factory(new Factory(served, options.typeLibrary, state_));
    Owner<DWORD, RevokeClassObject> registration;
    const HRESULT result =
        CoRegisterClassObject(served.classId, factory.Get(), CLSCTX_LOCAL_SERVER,
                              options.singleUse ? REGCLS_SINGLEUSE : REGCLS_MULTIPLEUSE, registration.Put());
    if (FAILED(result)) {
      throw base::Error(
          fmt::format("The class {} could not be offered: {}", served.friendlyName, SystemText(result)));
    }
    state_->registrations.push_back(std::move(registration));
  }
}

ComServer::~ComServer() {
  state_->registrations.clear();
  state_->onLastRelease = nullptr;
  DisconnectCallers();
}

int ComServer::Outstanding() const { return state_->outstanding; }

ComPtr<ITypeLib> OwnTypeLibrary(int resource) {
  ComPtr<ITypeLib> library;
  if (resource == 0) return library;
  const std::wstring file = Wide(ModulePath() + "\\" + std::to_string(resource));
  LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Put());
  return library;
}

}  // namespace win32
