#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <sddl.h>

#include <set>

#include "QVRKvTARNCfg.h"
#include "base/error.h"
#include "com_support.h"
#include "platform/win32/com/apartment.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/com_server.h"
#include "platform/win32/com/registration.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/registry.h"

namespace {

using base::RegistryRoot;
using com_test::Box;
using com_test::kOtherView;
using com_test::WriteDefault;

constexpr GUID kClassId = {0x2d0f7f53, 0x70a5, 0x4d0c, {0x8a, 0x55, 0x0c, 0x5e, 0x3a, 0x0d, 0x61, 0x9b}};
constexpr int kTypeLibrary = 1;
constexpr GUID kApplicationId = {
    0x2d0f7f54, 0x70a5, 0x4d0c, {0x8a, 0x55, 0x0c, 0x5e, 0x3a, 0x0d, 0x61, 0x9b}};
const std::string kClassKey = "Software\\Classes\\CLSID\\" + win32::GuidText(kClassId);
const std::string kApplicationKey = "Software\\Classes\\AppID\\" + win32::GuidText(kApplicationId);
constexpr bool kIs64 = sizeof(void*) == 8;

std::vector<win32::ServerClass> TestClasses() {
  const auto make = [] { return std::make_shared<Box>(); };
  return {
      {kClassId, {"TarnTest.Box", "TarnTest.OtherBox"}, "Box of the tests", make, {}, false, kApplicationId}};
}

/// As programs find it, for all users or for one.
std::string ClassText(const std::string& key) {
  return win32::DefaultText(win32::RegistryView::kOwn, HKEY_CLASSES_ROOT, key);
}

// Of the tool, whose type library this program carries.
const std::string kInterfaceKey = "Interface\\" + win32::GuidText(DIID__OVXPlugInAPI);
const std::string kLibraryKey = "TypeLib\\" + win32::GuidText(LIBID_QVRKvTARNCfg) + "\\1.0";
const std::string kOwnFileKey = kLibraryKey + (kIs64 ? "\\0\\win64" : "\\0\\win32");
const std::string kOtherFileKey = kLibraryKey + (kIs64 ? "\\0\\win32" : "\\0\\win64");

/// The names of the keys in the places that a server writes to.
std::multiset<std::wstring> ClassKeys(RegistryRoot root) {
  std::multiset<std::wstring> names;
  for (const wchar_t* place :
       {L"Software\\Classes", L"Software\\Classes\\CLSID", L"Software\\Classes\\TypeLib",
        L"Software\\Classes\\Interface", L"Software\\Classes\\AppID"}) {
    win32::RegistryKey key;
    RegOpenKeyExW(win32::HiveOf(root), place, 0, KEY_READ, key.Put());
    wchar_t name[256];
    for (DWORD i = 0, size = 256;
         RegEnumKeyExW(key.Get(), i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0; ++i, size = 256) {
      names.insert(std::wstring(place) + L"\\" + name);
    }
  }
  return names;
}

class Registration : public testing::TestWithParam<RegistryRoot> {
 public:
  std::string Read(const std::string& key, const std::string& name = "") {
    win32::WindowsRegistry registry;
    return base::ReadRegistryString(registry, GetParam(), key, name);
  }
  // The type library is the tool's own: where the tool is registered already, it goes with the first test.
  Registration() { win32::UnregisterServer(TestClasses(), kTypeLibrary); }
  ~Registration() override { win32::UnregisterServer(TestClasses(), kTypeLibrary); }
};

TEST_P(Registration, CanBeWrittenTwiceAndIsUndoneWithoutTrace) {
  const auto before = ClassKeys(GetParam());
  EXPECT_THROW(win32::RegisterServer(TestClasses(), 77), base::Error);
  EXPECT_EQ(ClassKeys(GetParam()), before) << "nothing of a program without its type library";
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), kTypeLibrary));
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), kTypeLibrary));

  EXPECT_EQ(Read(kClassKey + "\\LocalServer32"), '"' + win32::ProgramPath() + '"');
  EXPECT_EQ("TypeLib\\" + Read(kClassKey + "\\TypeLib") + "\\1.0", kLibraryKey);
  EXPECT_EQ(ClassText(kLibraryKey), "KV-TARN Configuration");
  EXPECT_EQ(ClassText(kOwnFileKey), win32::ProgramPath());
  EXPECT_EQ(ClassText(kOtherFileKey), win32::ProgramPath() + "\\2");
  EXPECT_EQ(ClassText(kInterfaceKey + "\\ProxyStubClsid32"), "{00020420-0000-0000-C000-000000000046}");
  EXPECT_EQ(ClassText(kInterfaceKey + "\\TypeLib"), Read(kClassKey + "\\TypeLib"));

  win32::UnregisterServer(TestClasses(), kTypeLibrary);
  EXPECT_EQ(ClassKeys(GetParam()), before);
  win32::UnregisterServer(TestClasses(), kTypeLibrary);  // nothing there: no error
}

TEST_P(Registration, AServiceStartsTheToolBeforeThePersonAtTheComputer) {
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), 0));
  for (const std::string& key : {kClassKey, std::string("Software\\Classes\\AppID\\win32_tests.exe")})
    EXPECT_EQ(Read(key, "AppID"), win32::GuidText(kApplicationId)) << key;
  EXPECT_EQ(Read(kApplicationKey, "RunAs"), "Interactive User");
  for (const wchar_t* name : {L"LaunchPermission", L"AccessPermission"}) {
    BYTE permission[400];
    DWORD size = sizeof permission;
    ASSERT_EQ(RegGetValueW(win32::HiveOf(GetParam()), win32::Wide(kApplicationKey).c_str(), name,
                           RRF_RT_REG_BINARY, nullptr, permission, &size),
              ERROR_SUCCESS);
    wchar_t* written = nullptr;
    ASSERT_TRUE(ConvertSecurityDescriptorToStringSecurityDescriptorW(
        permission, SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &written, nullptr));
    const std::wstring rights = written;
    LocalFree(written);
    for (const wchar_t* group : {L";;;IU)", L";;;SU)", L";;;SY)"})
      EXPECT_NE(rights.find(group), rights.npos) << win32::Utf8(rights);
    for (const wchar_t* group : {L";;;AU)", L";;;WD)", L";;;NU)"})
      EXPECT_EQ(rights.find(group), rights.npos) << "nobody from elsewhere";
  }
}

// The keys of the other width's program, as that program would write them.
class BothWidths : public Registration {
 public:
  ~BothWidths() override {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, win32::Wide(kClassKey).c_str());
    win32::RegistryKey other;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", 0, KEY_ALL_ACCESS | kOtherView,
                  other.Put());
    RegDeleteTreeW(other.Get(), win32::Wide(win32::GuidText(kClassId)).c_str());
    UnRegisterTypeLib(LIBID_QVRKvTARNCfg, 1, 0, LOCALE_NEUTRAL, kIs64 ? SYS_WIN32 : SYS_WIN64);
  }

  const std::string server = kClassKey + "\\LocalServer32";
  const std::string otherFile = win32::ProgramFolder() + "\\generated\\QVRKvTARNCfg.other.tlb";
};

TEST_P(BothWidths, RemovingOneLeavesTheOther) {
  WriteDefault(kOtherView, server, "\"C:\\x86\\tool.exe\"");
  WriteDefault(0, "Software\\Classes\\" + kOtherFileKey, otherFile);
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), kTypeLibrary));
  EXPECT_EQ(ClassText(kOtherFileKey), otherFile);

  win32::UnregisterServer(TestClasses(), kTypeLibrary);
  EXPECT_EQ(Read(server), "\"C:\\x86\\tool.exe\"") << "of the other view";
  EXPECT_FALSE(win32::HasKey(win32::RegistryView::kOwn, HKEY_LOCAL_MACHINE, kClassKey));
  EXPECT_EQ(ClassText("TarnTest.Box\\CLSID"), win32::GuidText(kClassId));
  EXPECT_EQ(ClassText(kOwnFileKey), "");
  EXPECT_EQ(ClassText(kOtherFileKey), otherFile);
  EXPECT_NE(ClassText(kInterfaceKey + "\\ProxyStubClsid32"), "") << "the other program's clients need it";
}

TEST_P(BothWidths, AnotherCopyOfTheProgramKeepsItsRegistration) {
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), 0));
  WriteDefault(0, server, "\"C:\\newer\\tool.exe\"");
  win32::UnregisterServer(TestClasses(), 0);
  EXPECT_EQ(Read(server), "\"C:\\newer\\tool.exe\"");
  EXPECT_EQ(ClassText("TarnTest.OtherBox\\CLSID"), win32::GuidText(kClassId));
}

TEST_P(BothWidths, AProgramIdThatAnotherProgramTookIsLeftToIt) {
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), 0));
  const std::string others = "{00020420-0000-0000-C000-000000000046}";
  WriteDefault(0, "Software\\Classes\\TarnTest.Box\\CLSID", others);
  for (const char* when : {"registered", "not registered"}) {
    win32::UnregisterServer(TestClasses(), 0);
    EXPECT_EQ(ClassText("TarnTest.Box\\CLSID"), others) << when;
    EXPECT_EQ(ClassText("TarnTest.OtherBox\\CLSID"), "") << when;
  }
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\TarnTest.Box");
}

// What is registered for one user does not share keys with the machine's.
INSTANTIATE_TEST_SUITE_P(ForAllUsers, BothWidths, testing::Values(RegistryRoot::kLocalMachine));

INSTANTIATE_TEST_SUITE_P(ForAllUsersAndForOne, Registration,
                         testing::Values(RegistryRoot::kLocalMachine, RegistryRoot::kCurrentUser));

// Processes that end with their last object are seen by the end-to-end scripts.
TEST(ComServer, ObjectsEndWithTheServerAlsoWhenACallerHoldsThem) {
  const win32::ComApartment apartment;
  win32::RegisterServer(TestClasses(), 0);
  std::weak_ptr<Box> made;
  auto classes = TestClasses();
  classes[0].make = [&] {
    auto box = std::make_shared<Box>();
    made = box;
    return box;
  };
  auto server = std::make_unique<win32::ComServer>(classes, win32::ComServer::Options{false, 0, {}});
  com_test::OtherApartment caller;
  automation::Object held;
  caller.Run([&] {
    held = win32::CreateObject("TarnTest.OtherBox");
    held.Put("Content", "held");
  });
  EXPECT_EQ(server->Outstanding(), 1);
  EXPECT_FALSE(made.expired());
  server.reset();
  caller.Run([&] {
    EXPECT_THROW(held.Text("Content"), automation::Error);
    held = {};
  });
  EXPECT_TRUE(made.expired());
  win32::UnregisterServer(TestClasses(), 0);
}

TEST(Process, TheActivationSwitchIsTheFirstWordOnly) {
  for (const char* tail : {" -Embedding", "/embedding"})
    EXPECT_TRUE(win32::StartedByActivation(tail)) << tail;
  for (const char* tail : {"", " /regplugin", "/regplugin -Embedding", "-Embeddings"})
    EXPECT_FALSE(win32::StartedByActivation(tail)) << tail;
}

}  // namespace
