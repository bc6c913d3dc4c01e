#include <gtest/gtest.h>

#include "QVRKvTARNCfg.h"
#include "base/text.h"
#include "hosting/plugin_api.h"
#include "platform/win32/apartment.h"
#include "platform/win32/com_server.h"
#include "platform/win32/desktop_windows.h"
#include "platform/win32/file_dialog.h"
#include "platform/win32/help_viewer.h"
#include "platform/win32/local_dispatch.h"
#include "platform/win32/locale.h"
#include "platform/win32/message_loop.h"
#include "platform/win32/prompts.h"
#include "platform/win32/registry.h"
#include "platform/win32/shared_memory.h"
#include "platform/win32/toolkit.h"
#include "serverlink/transaction.h"

namespace {

struct NoControls : ui::ControlHost {
  automation::Object Create(ui::ControlSite&, const std::string&,
                            std::function<void(const std::string&)>) override {
    return {};
  }
  void Check(const std::string&) override {}
  void Destroy(ui::ControlSite&) override {}
};

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

TEST(Transaction, TheTypeLibraryDescribesItsMembersWithTheirIds) {
  const win32::ComApartment apartment;
  CheckDescription(std::make_shared<serverlink::CTransaction>(), DIID__CTransaction);
}

TEST(PlugInApi, TheTypeLibraryDescribesItsMembersWithTheirIds) {
  const win32::ComApartment apartment;
  win32::MessageLoop loop([](const std::string&) {});
  win32::NativeToolkit toolkit(loop);
  win32::MessagePrompts prompts(toolkit);
  win32::SaveDialog fileDialog(toolkit);
  win32::HtmlHelpViewer help;
  NoControls controls;
  win32::WindowsRegistry registry;
  win32::WindowsLocale locale;
  const shell::Platform platform{nullptr,  prompts,  loop,   fileDialog, help,
                                 controls, registry, locale, {},         {}};
  int quits = 0;
  shell::Settings settings;
  win32::PagedMemory memory;
  win32::NativeDesktop desktop;
  hosting::Program program(platform, memory, desktop, hosting::BuildDescription({}), settings, {},
                           [&] { ++quits; });
  CheckDescription(std::make_shared<hosting::PlugInApi>(program), DIID__OVXPlugInAPI);
}

}  // namespace
