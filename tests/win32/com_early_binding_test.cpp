// The tool's classes as hosts that were compiled with the type library use them: by the dispatch interfaces
// that it describes, with named arguments, and with the types that it promises; also in a process of their
// own.
#include <gtest/gtest.h>

#include <cstdio>

#include "QVRKvTARNCfg.h"
#include "com_support.h"
#include "platform/win32/com/apartment.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/type_library.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/system/process.h"
#include "plugin/plugin_api.h"
#include "serverlink/transaction.h"
#include "tests/core/stand_ins.h"

namespace {

using win32::ComPtr;

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

struct EarlyBinding : testing::Test {
  static void SetUpTestSuite() {
    ASSERT_EQ(RunTool(L"/RegServer"), "KV-TARN Configuration: registered for all users of this computer.\n");
  }
  static void TearDownTestSuite() { RunTool(L"/UnregServer"); }

  static ComPtr<ITypeInfo> Describe(const IID& interfaceId) {
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(win32::OwnTypeLibrary(1)->GetTypeInfoOfGuid(interfaceId, info.Put()), S_OK);
    return info;
  }

  /// The names, ids and number of the members that the type library tells of an interface.
  static void CheckDescription(const std::shared_ptr<automation::LocalObject>& object,
                               const IID& interfaceId) {
    const auto info = Describe(interfaceId);
    const auto dispatch = win32::ToDispatch(automation::Object(object), info.Get());
    for (int place = 0; place < object->MemberCount(); ++place) {
      std::wstring name = win32::Wide(object->MemberName(place));
      LPOLESTR names[] = {name.data()};
      DISPID described = -1;
      EXPECT_EQ(info->GetIDsOfNames(names, 1, &described), S_OK) << object->MemberName(place);
      EXPECT_EQ(Ids(dispatch.Get(), {name}).at(0), described) << object->MemberName(place);
    }
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->cVars + attributes->cFuncs, object->MemberCount());
    info->ReleaseTypeAttr(attributes);
  }

  /// The interface itself is asked for, so that the system needs its registration to bring it here.
  static ComPtr<IDispatch> Create(const CLSID& classId, const IID& interfaceId) {
    void* object = nullptr;
    EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, interfaceId, &object), S_OK);
    return ComPtr<IDispatch>(static_cast<IDispatch*>(object));
  }

  /// Of a member and its parameters.
  static std::vector<DISPID> Ids(IDispatch* object, std::vector<std::wstring> names,
                                 HRESULT expected = S_OK) {
    std::vector<LPOLESTR> words;
    for (std::wstring& name : names) words.push_back(name.data());
    std::vector<DISPID> ids(names.size());
    EXPECT_EQ(object->GetIDsOfNames(GUID{}, words.data(), static_cast<UINT>(words.size()), 0, ids.data()),
              expected);
    return ids;
  }

  /// Calls `member` with its arguments in a call's order, the first ones named by their parameters' ids.
  static HRESULT Call(IDispatch* object, DISPID member, std::vector<VARIANT> arguments,
                      std::vector<DISPID> names, VARIANT* result = nullptr) {
    DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                             static_cast<UINT>(names.size())};
    return object->Invoke(member, GUID{}, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters, result,
                          nullptr, nullptr);
  }

  static VARIANT Whole(LONG number) { return com_test::Plain(VT_I4, number); }

  win32::ComApartment apartment_;
};

TEST_F(EarlyBinding, ArgumentsGoToTheParametersThatAreNamed) {
  const auto record = std::make_shared<serverlink::CTransaction>();
  record->RspArgument.resize(4);
  const auto info = Describe(DIID__CTransaction);
  const auto dispatch = win32::ToDispatch(automation::Object(record), info.Get());
  const auto ids = Ids(dispatch.Get(), {L"SetRspArgumentElement", L"value", L"index"});
  EXPECT_EQ(Call(dispatch.Get(), ids[0], {Whole(7), Whole(1)}, {ids[1]}), S_OK) << "the index by its place";
  EXPECT_EQ(record->RspArgument, (automation::Bytes{0, 7, 0, 0}));

  const VARIANT missing = com_test::Plain(VT_ERROR, DISP_E_PARAMNOTFOUND);
  const VARIANT null = com_test::Plain(VT_NULL, 0);
  const std::tuple<std::vector<VARIANT>, std::vector<DISPID>, HRESULT> refused[] = {
      {{Whole(1)}, {ids[1]}, DISP_E_PARAMNOTOPTIONAL},
      {{Whole(1), Whole(2)}, {9}, DISP_E_PARAMNOTFOUND},
      {{Whole(1), Whole(2)}, {ids[1], ids[1]}, DISP_E_PARAMNOTFOUND},
      {{Whole(1), Whole(2)}, {ids[2]}, DISP_E_PARAMNOTFOUND},
      {{missing, Whole(2)}, {}, DISP_E_PARAMNOTOPTIONAL},
      {{null, Whole(2)}, {}, DISP_E_TYPEMISMATCH}};
  for (const auto& [arguments, names, expected] : refused)
    EXPECT_EQ(Call(dispatch.Get(), ids[0], arguments, names), expected);
  Ids(dispatch.Get(), {L"SetRspArgumentElement", L"SetRspArgumentElement", L"index"}, DISP_E_UNKNOWNNAME);
}

TEST_F(EarlyBinding, TheLibraryDescribesTheMembersOfBothClassesWithTheirIds) {
  CheckDescription(std::make_shared<serverlink::CTransaction>(), DIID__CTransaction);

  tests::StandIns around;
  const shell::Platform platform = around.Bare();
  const shell::Settings settings;
  plugin::Program program(platform, around.memory, around.desktop, plugin::BuildDescription({}), settings, {},
                          [] {});
  CheckDescription(std::make_shared<plugin::PlugInApi>(program), DIID__OVXPlugInAPI);
}

TEST_F(EarlyBinding, ObjectsOfAnotherProcessHaveTheTypesOfTheLibrary) {
  EXPECT_TRUE(Create(CLSID_Configuration, DIID__Configuration));
  EXPECT_TRUE(Create(CLSID_OVXPlugInAPI, DIID__OVXPlugInAPI));
  const auto record = Create(CLSID_CTransaction, DIID__CTransaction);
  ASSERT_TRUE(record);
  win32::Variant result;
  const auto call = [&](const std::vector<std::wstring>& names, const std::vector<VARIANT>& arguments) {
    const auto ids = Ids(record.Get(), names);
    return Call(record.Get(), ids[0], arguments, {ids.begin() + 1, ids.end()}, result.Put());
  };
  EXPECT_EQ(call({L"ReDimRspArgument", L"IsPreserve", L"Index"}, {com_test::Plain(VT_BOOL, 0), Whole(3)}),
            S_OK);
  EXPECT_EQ(call({L"SetRspArgumentElement", L"Value", L"Index"}, {Whole(200), Whole(2)}), S_OK);
  ASSERT_EQ(call({L"GetRspArgumentElement", L"Index"}, {Whole(2)}), S_OK);
  EXPECT_EQ(result.Get().vt, VT_UI1);
  EXPECT_EQ(result.Get().bVal, 200);
  const std::pair<const wchar_t*, int> properties[] = {{L"State", VT_I2},
                                                       {L"SeqNumber", VT_I2},
                                                       {L"ReceivedBytesArg", VT_I4},
                                                       {L"RspArgument", VT_ARRAY | VT_UI1}};
  for (const auto& [name, type] : properties) {
    ASSERT_EQ(call({name}, {}), S_OK);
    EXPECT_EQ(result.Get().vt, type) << win32::Utf8(name);
  }
}

}  // namespace
