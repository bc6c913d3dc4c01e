#include <gtest/gtest.h>

#include "QVRKvTARNCfg.h"
#include "base/text.h"
#include "com_support.h"
#include "platform/win32/com/apartment.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/type_library.h"
#include "plugin/plugin_api.h"
#include "serverlink/transaction.h"
#include "tests/core/stand_ins.h"

namespace {

/// The names, ids and number of the members that the type library tells of an interface.
void CheckDescription(const std::shared_ptr<automation::LocalObject>& object, const GUID& interfaceId) {
  win32::ComPtr<ITypeInfo> info;
  const auto library = win32::OwnTypeLibrary(1);
  ASSERT_TRUE(library);
  ASSERT_EQ(library->GetTypeInfoOfGuid(interfaceId, info.Put()), S_OK);
  auto dispatch = win32::ToDispatch(automation::Object(object), info.Get());
  for (int place = 0; place < object->MemberCount(); ++place) {
    std::wstring name = win32::Wide(object->MemberName(place));
    LPOLESTR names[] = {name.data()};
    DISPID described = -1;
    DISPID answered = -2;
    EXPECT_EQ(info->GetIDsOfNames(names, 1, &described), S_OK) << object->MemberName(place);
    EXPECT_EQ(dispatch->GetIDsOfNames(GUID{}, names, 1, 0, &answered), S_OK);
    EXPECT_EQ(described, answered) << object->MemberName(place);
  }
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->cVars + attributes->cFuncs, object->MemberCount());
  info->ReleaseTypeAttr(attributes);
}

/// Calls `member` with its arguments in a call's order, the first ones named by their parameters' ids.
HRESULT Call(IDispatch* object, DISPID member, std::vector<VARIANT> arguments, std::vector<DISPID> names) {
  DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                           static_cast<UINT>(names.size())};
  return object->Invoke(member, GUID{}, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
}

VARIANT Whole(LONG number) { return com_test::Plain(VT_I4, number); }

TEST(EarlyBinding, ArgumentsGoToTheParametersThatAreNamed) {
  const win32::ComApartment apartment;
  const auto record = std::make_shared<serverlink::CTransaction>();
  record->RspArgument.resize(4);
  win32::ComPtr<ITypeInfo> info;
  win32::OwnTypeLibrary(1)->GetTypeInfoOfGuid(DIID__CTransaction, info.Put());
  const auto dispatch = win32::ToDispatch(automation::Object(record), info.Get());

  std::wstring words[] = {L"SetRspArgumentElement", L"value", L"index"};
  LPOLESTR names[] = {words[0].data(), words[1].data(), words[2].data()};
  DISPID ids[3] = {};
  ASSERT_EQ(dispatch->GetIDsOfNames(GUID{}, names, 3, 0, ids), S_OK);
  EXPECT_EQ(Call(dispatch.Get(), ids[0], {Whole(7), Whole(1)}, {ids[1]}), S_OK) << "the index by its place";
  EXPECT_EQ(record->RspArgument, (automation::Bytes{0, 7, 0, 0}));

  const VARIANT missing = com_test::Plain(VT_ERROR, DISP_E_PARAMNOTFOUND);
  const VARIANT null = com_test::Plain(VT_NULL, 0);
  const struct {
    std::vector<VARIANT> arguments;
    std::vector<DISPID> names;
    HRESULT expected;
  } refused[] = {{{Whole(1)}, {ids[1]}, DISP_E_PARAMNOTOPTIONAL},
                 {{Whole(1), Whole(2)}, {9}, DISP_E_PARAMNOTFOUND},
                 {{Whole(1), Whole(2)}, {ids[1], ids[1]}, DISP_E_PARAMNOTFOUND},
                 {{Whole(1), Whole(2)}, {ids[2]}, DISP_E_PARAMNOTFOUND},
                 {{missing, Whole(2)}, {}, DISP_E_PARAMNOTOPTIONAL},
                 {{null, Whole(2)}, {}, DISP_E_TYPEMISMATCH}};
  for (const auto& item : refused) {
    EXPECT_EQ(Call(dispatch.Get(), ids[0], item.arguments, item.names), item.expected) << &item - refused;
  }
  names[1] = words[0].data();
  EXPECT_EQ(dispatch->GetIDsOfNames(GUID{}, names, 3, 0, ids), DISP_E_UNKNOWNNAME);
}

TEST(TypeLibrary, DescribesTheMembersOfBothClassesWithTheirIds) {
  const win32::ComApartment apartment;
  CheckDescription(std::make_shared<serverlink::CTransaction>(), DIID__CTransaction);

  tests::StandIns around;
  const shell::Platform platform = around.Bare();
  const shell::Settings settings;
  plugin::Program program(platform, around.memory, around.desktop, plugin::BuildDescription({}), settings, {},
                          [] {});
  CheckDescription(std::make_shared<plugin::PlugInApi>(program), DIID__OVXPlugInAPI);
}

}  // namespace
