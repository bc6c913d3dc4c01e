// What the COM tests share: a local class with members of every kind, a foreign object that counts how it is
// asked, and a second apartment, to which every call crosses as it would cross processes.
#pragma once

#include <cstring>
#include <functional>
#include <memory>
#include <thread>

#include "automation/local_object.h"
#include "platform/win32/com/com_class.h"

namespace com_test {

using automation::Arguments;
using automation::Value;

/// What other programs may send: the type and, at the common start of all members, the value.
template <class T>
VARIANT Plain(int type, T value) {
  VARIANT plain;
  VariantInit(&plain);
  plain.vt = static_cast<VARTYPE>(type);
  std::memcpy(&plain.llVal, static_cast<const void*>(&value), sizeof value);
  return plain;
}

class Box : public automation::LocalClass<Box> {
 public:
  static const automation::MemberOf<Box> kMembers[8];

  Value content;
};

/// Passes everything on to another IDispatch and counts the look-ups of names; objects that come back are
/// shown in the same way. Its ids are those of the other object plus `shift`.
class ForeignObject : public win32::ComClass<IDispatch> {
 public:
  ForeignObject(win32::ComPtr<IDispatch> inner, int& lookUps, DISPID shift = 0)
      : inner_(std::move(inner)), lookUps_(lookUps), shift_(shift) {}

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

 private:
  win32::ComPtr<IDispatch> inner_;
  int& lookUps_;
  DISPID shift_;
};

/// Writes the default value of a machine-wide key, in the view of programs of the other width where asked.
inline constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
void WriteDefault(REGSAM view, const std::string& key, const std::string& text);

/// A thread with a message loop and an apartment, in which objects live that other threads call.
class OtherApartment {
 public:
  OtherApartment();
  ~OtherApartment();

  /// Makes a box there and gives the caller's proxy of it.
  automation::Object MakeBox();
  /// Runs `work` there and waits for its end; meanwhile the caller's apartment takes calls.
  void Run(const std::function<void()>& work);

 private:
  void Loop(HANDLE ready);

  DWORD threadId_ = 0;
  std::thread thread_;
};

}  // namespace com_test
