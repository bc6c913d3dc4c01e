// Base of a COM object that this program implements: counts references and answers QueryInterface for the
// interfaces that are named. Used by every adapter, sink and factory of the Windows edge; single-threaded
// apartment only.
#pragma once

#include "platform/win32/system/handle.h"

namespace win32 {

/// Starts with one reference, which belongs to whoever made it; the last Release deletes the object. The
/// first interface also answers for IUnknown.
template <class First, class... Others>
class ComClass : public First, public Others... {
 public:
  ComClass() = default;
  ComClass(const ComClass&) = delete;
  ComClass& operator=(const ComClass&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (id == __uuidof(IUnknown)) *object = static_cast<First*>(this);
    Offer<First>(id, object);
    (Offer<Others>(id, object), ...);
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }

  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~ComClass() = default;

 private:
  template <class Interface>
  void Offer(REFIID id, void** object) {
    if (id == __uuidof(Interface)) *object = static_cast<Interface*>(this);
  }

  ULONG references_ = 1;
};

}  // namespace win32
