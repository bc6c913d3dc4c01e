#include <gtest/gtest.h>

#include <future>
#include <set>

#include "base/error.h"
#include "base/text.h"
#include "com_support.h"
#include "platform/win32/apartment.h"
#include "platform/win32/com_object.h"
#include "platform/win32/com_server.h"
#include "platform/win32/process.h"
#include "platform/win32/registration.h"
#include "platform/win32/registry.h"

namespace {

using base::RegistryRoot;
using com_test::Box;

constexpr GUID kClassId = {0x2d0f7f53, 0x70a5, 0x4d0c, {0x8a, 0x55, 0x0c, 0x5e, 0x3a, 0x0d, 0x61, 0x9b}};
constexpr const char* kClassKey = "Software\\Classes\\CLSID\\{2D0F7F53-70A5-4D0C-8A55-0C5E3A0D619B}";
constexpr int kTypeLibrary = 1;

std::vector<win32::ServerClass> TestClasses() {
  return {{kClassId, {"TarnTest.Box", "TarnTest.OtherBox"}, "Box of the tests", [] {
             return std::make_shared<Box>();
           }}};
}

HKEY Hive(RegistryRoot root) {
  return root == RegistryRoot::kLocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

/// The names of the keys in the places that a server writes to.
std::multiset<std::wstring> ClassKeys(RegistryRoot root) {
  std::multiset<std::wstring> names;
  for (const wchar_t* place :
       {L"Software\\Classes", L"Software\\Classes\\CLSID", L"Software\\Classes\\TypeLib"}) {
    win32::RegistryKey key;
    if (RegOpenKeyExW(Hive(root), place, 0, KEY_READ, key.Put()) != ERROR_SUCCESS) continue;
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
  std::string Read(const std::string& key) {
    win32::WindowsRegistry registry;
    return base::ReadRegistryString(registry, GetParam(), key, "");
  }
  // The type library is the tool's own: where the tool is registered already, it goes with the first test.
  Registration() { win32::UnregisterServer(TestClasses(), kTypeLibrary); }
  ~Registration() override { win32::UnregisterServer(TestClasses(), kTypeLibrary); }
};

TEST_P(Registration, CanBeWrittenTwiceAndIsUndoneWithoutTrace) {
  const auto before = ClassKeys(GetParam());
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), kTypeLibrary));
  ASSERT_TRUE(win32::RegisterServerIn(GetParam(), TestClasses(), kTypeLibrary));

  const std::string classKey = kClassKey;
  EXPECT_EQ(Read(classKey + "\\LocalServer32"), '"' + win32::ProgramPath() + '"');
  EXPECT_EQ(Read(classKey + "\\ProgID"), "TarnTest.Box");
  for (const char* programId : {"TarnTest.Box", "TarnTest.OtherBox"}) {
    EXPECT_TRUE(classKey.ends_with(Read("Software\\Classes\\" + std::string(programId) + "\\CLSID")))
        << programId;
  }
  const std::string library = "Software\\Classes\\TypeLib\\" + Read(classKey + "\\TypeLib") + "\\1.0";
  EXPECT_EQ(Read(library), "KV-TARN Configuration");
  EXPECT_EQ(Read(library + (sizeof(void*) == 8 ? "\\0\\win64" : "\\0\\win32")), win32::ProgramPath());

  win32::UnregisterServer(TestClasses(), kTypeLibrary);
  EXPECT_EQ(ClassKeys(GetParam()), before);
  win32::UnregisterServer(TestClasses(), kTypeLibrary);  // nothing there: no error
}

INSTANTIATE_TEST_SUITE_P(ForAllUsersAndForOne, Registration,
                         testing::Values(RegistryRoot::kLocalMachine, RegistryRoot::kCurrentUser));

TEST(RegistrationErrors, AProgramWithoutItsTypeLibraryIsNotRegistered) {
  const auto before = ClassKeys(RegistryRoot::kLocalMachine);
  EXPECT_THROW(win32::RegisterServer(TestClasses(), 77), base::Error);
  EXPECT_EQ(ClassKeys(RegistryRoot::kLocalMachine), before);
}

/// Runs the queue until `done` or for five seconds.
bool RunUntil(const std::function<bool()>& done) {
  for (int i = 0; i < 500 && !done(); ++i) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  return done();
}

TEST(ComServer, CountsTheObjectsThatCallersHold) {
  const win32::ComApartment apartment;
  win32::RegisterServer(TestClasses(), 0);
  int released = 0;
  win32::ComServer server(TestClasses(), {false, 0, [&] { ++released; }});

  // The client sits on another thread, so its calls come in as from another process.
  const win32::Handle mayRelease(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  auto client = std::async(std::launch::async, [&]() -> std::string {
    const win32::ComApartment ownApartment;
    try {
      const automation::Object first = win32::CreateObject("TarnTest.Box");
      const automation::Object second = win32::CreateObject("TarnTest.OtherBox");
      second.Put("Content", "held");
      WaitForSingleObject(mayRelease.Get(), 10'000);
      return second.Text("Content");
    } catch (const automation::Error& error) {
      return error.Description();
    }
  });
  EXPECT_TRUE(RunUntil([&] { return server.Outstanding() == 2; }));
  EXPECT_EQ(released, 0);
  SetEvent(mayRelease.Get());
  EXPECT_TRUE(RunUntil([&] { return released > 0; }));
  EXPECT_EQ(server.Outstanding(), 0);
  EXPECT_EQ(released, 1);
  RunUntil([&] { return client.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
  EXPECT_EQ(client.get(), "held");
  win32::UnregisterServer(TestClasses(), 0);
}

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
  const win32::Handle held(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const win32::Handle serverEnded(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  auto client = std::async(std::launch::async, [&] {
    const win32::ComApartment ownApartment;
    try {
      const automation::Object box = win32::CreateObject("TarnTest.Box");
      SetEvent(held.Get());
      WaitForSingleObject(serverEnded.Get(), 10'000);
      return box.Text("Content");
    } catch (const automation::Error&) {
      return std::string("refused");
    }
  });
  EXPECT_TRUE(RunUntil([&] { return WaitForSingleObject(held.Get(), 0) == WAIT_OBJECT_0; }));
  server.reset();
  // The system may still be handing the object out; it lets go when that is done.
  EXPECT_TRUE(RunUntil([&] { return made.expired(); }));
  SetEvent(serverEnded.Get());
  RunUntil([&] { return client.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
  EXPECT_EQ(client.get(), "refused");
  win32::UnregisterServer(TestClasses(), 0);
}

TEST(Process, TheActivationSwitchIsTheFirstWordOnly) {
  const struct {
    const char* commandTail;
    bool activation;
  } cases[] = {{" -Embedding", true},
               {"/embedding", true},
               {"", false},
               {" /regplugin", false},
               {"/regplugin -Embedding", false},
               {"-Embeddings", false}};
  for (const auto& test : cases) {
    EXPECT_EQ(win32::StartedByActivation(test.commandTail), test.activation) << test.commandTail;
  }
}

}  // namespace
