// The tool in a process of its own, as a host that was compiled with the type library uses it: by the
// dispatch interfaces of its classes, with named arguments, and with the types that the library promises.
#include <gtest/gtest.h>

#include <cstdio>

#include "QVRKvTARNCfg.h"
#include "base/text.h"
#include "platform/win32/com/apartment.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/text.h"

namespace {

using automation::Value;

/// What the tool prints when it is started with `word`.
std::string RunTool(const wchar_t* word) {
  const std::wstring line = L"\"" + win32::Wide(win32::ProgramFolder()) + L"\\QVRKvTARNCfg.exe\" " + word;
  std::FILE* output = _wpopen(line.c_str(), L"r");
  if (!output) return "not started";
  std::string printed;
  char part[200];
  while (std::fgets(part, sizeof part, output)) printed += part;
  _pclose(output);
  return printed;
}

class EarlyBound : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(RunTool(L"/RegServer"), "KV-TARN Configuration: registered for all users of this computer.\n");
  }
  static void TearDownTestSuite() { RunTool(L"/UnregServer"); }

  /// The interface itself is asked for, so that the system needs its registration to bring it here.
  static win32::ComPtr<IDispatch> Create(const CLSID& classId, const IID& interfaceId) {
    void* object = nullptr;
    EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, interfaceId, &object), S_OK);
    return win32::ComPtr<IDispatch>(static_cast<IDispatch*>(object));
  }

  /// Arguments in the order of `names`, the member's first; all are named. The result when there is one.
  static HRESULT Call(IDispatch* object, std::vector<std::wstring> names, const std::vector<Value>& values,
                      win32::Variant* result = nullptr) {
    std::vector<LPOLESTR> words;
    for (std::wstring& name : names) words.push_back(name.data());
    std::vector<DISPID> ids(names.size());
    const HRESULT found =
        object->GetIDsOfNames(GUID{}, words.data(), static_cast<UINT>(words.size()), 0, ids.data());
    if (FAILED(found)) return found;
    std::vector<win32::Variant> owned;
    std::vector<VARIANT> arguments;
    for (const Value& value : values) owned.push_back(win32::ToVariant(value));
    for (const auto& variant : owned) arguments.push_back(variant.Get());
    const auto count = static_cast<UINT>(arguments.size());
    DISPPARAMS parameters = {arguments.data(), ids.data() + 1, count, count};
    return object->Invoke(ids[0], GUID{}, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                          result ? result->Put() : nullptr, nullptr, nullptr);
  }

  win32::ComApartment apartment_;
};

TEST_F(EarlyBound, ObjectsOfAnotherProcessHaveTheTypesOfTheLibrary) {
  EXPECT_TRUE(Create(CLSID_Configuration, DIID__Configuration));
  EXPECT_TRUE(Create(CLSID_OVXPlugInAPI, DIID__OVXPlugInAPI));
  const auto record = Create(CLSID_CTransaction, DIID__CTransaction);
  ASSERT_TRUE(record);
  EXPECT_EQ(Call(record.Get(), {L"ReDimRspArgument", L"IsPreserve", L"Index"}, {false, 3}), S_OK);
  EXPECT_EQ(Call(record.Get(), {L"SetRspArgumentElement", L"Value", L"Index"}, {200, 2}), S_OK);
  win32::Variant result;
  ASSERT_EQ(Call(record.Get(), {L"GetRspArgumentElement", L"Index"}, {2}, &result), S_OK);
  EXPECT_EQ(result.Get().vt, VT_UI1);
  EXPECT_EQ(result.Get().bVal, 200);
  const std::pair<const wchar_t*, int> properties[] = {{L"State", VT_I2},
                                                       {L"SeqNumber", VT_I2},
                                                       {L"ReceivedBytesArg", VT_I4},
                                                       {L"RspArgument", VT_ARRAY | VT_UI1}};
  for (const auto& [name, type] : properties) {
    ASSERT_EQ(Call(record.Get(), {name}, {}, &result), S_OK);
    EXPECT_EQ(result.Get().vt, type) << win32::Utf8(name);
  }
}

}  // namespace
