#include <gtest/gtest.h>

#include "QVRKvTARNCfg.h"
#include "base/text.h"
#include "platform/win32/apartment.h"
#include "platform/win32/com_server.h"
#include "platform/win32/local_dispatch.h"
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

TEST(TypeLibrary, DescribesTheMembersOfBothClassesWithTheirIds) {
  const win32::ComApartment apartment;
  CheckDescription(std::make_shared<serverlink::CTransaction>(), DIID__CTransaction);

  tests::StandIns around;
  const shell::Platform platform{nullptr,
                                 around.prompts,
                                 around.loop,
                                 around.fileDialog,
                                 around.help,
                                 around.controls,
                                 around.registry,
                                 around.locale,
                                 {},
                                 {}};
  const shell::Settings settings;
  plugin::Program program(platform, around.memory, around.desktop, plugin::BuildDescription({}), settings, {},
                          [] {});
  CheckDescription(std::make_shared<plugin::PlugInApi>(program), DIID__OVXPlugInAPI);
}

}  // namespace
