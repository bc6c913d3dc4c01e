// Owners of what the system lends: kernel handles, registry keys, strings, variants and COM pointers. Each
// releases what it holds, can be moved and cannot be copied. Put() empties the owner and gives the place for
// an out parameter.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <string>
#include <string_view>
#include <utility>

#include "platform/win32/system/text.h"

namespace win32 {

/// Owner of a system resource of type T; `Closer` is a function object that releases one. An empty owner
/// holds T{}.
template <class T, class Closer>
class Owner {
 public:
  Owner() = default;
  explicit Owner(T resource) : resource_(resource) {}
  Owner(Owner&& other) noexcept : resource_(other.Release()) {}
  Owner& operator=(Owner&& other) noexcept {
    Owner moved(std::move(other));
    std::swap(resource_, moved.resource_);
    return *this;
  }
  ~Owner() { Reset(); }

  explicit operator bool() const { return resource_ != T{}; }
  T Get() const { return resource_; }
  T Release() { return std::exchange(resource_, T{}); }
  T* Put() {
    Reset();
    return &resource_;
  }
  void Reset() {
    if (resource_ != T{}) Closer()(Release());
  }

 private:
  T resource_{};
};

/// The closer of what one function of the system releases.
template <auto function>
struct Calls {
  template <class T>
  void operator()(T resource) const {
    function(resource);
  }
};
struct CloseKernelHandle {
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};
template <class Interface>
struct ReleaseInterface {
  void operator()(Interface* pointer) const { pointer->Release(); }
};

/// A kernel handle; a failed CreateFile's INVALID_HANDLE_VALUE is not an empty one, compare before.
using Handle = Owner<HANDLE, CloseKernelHandle>;
using RegistryKey = Owner<HKEY, Calls<RegCloseKey>>;

class Bstr : public Owner<BSTR, Calls<SysFreeString>> {
 public:
  using Owner::Owner;
  explicit Bstr(std::string_view utf8) : Bstr(std::wstring_view(Wide(utf8))) {}
  explicit Bstr(std::wstring_view wide)
      : Owner(SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()))) {}
};

/// The text of a BSTR that somebody else owns; null is the empty text.
inline std::string TextOf(BSTR text) { return Utf8({text, SysStringLen(text)}); }

/// A counted COM interface. The constructor takes over one reference; Share adds its own.
template <class Interface>
class ComPtr : public Owner<Interface*, ReleaseInterface<Interface>> {
 public:
  using Owner<Interface*, ReleaseInterface<Interface>>::Owner;

  static ComPtr Share(Interface* pointer) {
    if (pointer) pointer->AddRef();
    return ComPtr(pointer);
  }

  Interface* operator->() const { return this->Get(); }

  /// Another interface of the same object; empty when it has none.
  template <class Other>
  ComPtr<Other> As() const {
    void* other = nullptr;
    if (*this) this->Get()->QueryInterface(__uuidof(Other), &other);
    return ComPtr<Other>(static_cast<Other*>(other));
  }
};

class Variant {
 public:
  Variant() { VariantInit(&variant_); }
  Variant(Variant&& other) noexcept : variant_(other.Release()) {}
  Variant& operator=(Variant&& other) noexcept {
    Variant moved(std::move(other));
    std::swap(variant_, moved.variant_);
    return *this;
  }
  ~Variant() { VariantClear(&variant_); }

  const VARIANT& Get() const { return variant_; }
  VARIANT Release() {
    const VARIANT released = variant_;
    VariantInit(&variant_);
    return released;
  }
  VARIANT* Put() {
    VariantClear(&variant_);
    return &variant_;
  }

 private:
  VARIANT variant_;
};

}  // namespace win32
