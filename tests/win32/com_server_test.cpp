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

/// A client on another thread, so that its calls come in as from another process: makes an object of each
/// program id, waits for Continue and asks the last one for its content.
class Client {
 public:
  explicit Client(std::vector<std::string> programIds)
      : end_(std::async(std::launch::async, [this, ids = std::move(programIds)] { return Run(ids); })) {}

  bool Holds() const { return WaitForSingleObject(holds_.Get(), 0) == WAIT_OBJECT_0; }
  std::string Continue() {
    SetEvent(mayContinue_.Get());
    RunUntil([&] { return end_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    return end_.get();
  }

 private:
  std::string Run(const std::vector<std::string>& programIds) {
    const win32::ComApartment apartment;
    try {
      std::vector<automation::Object> held;
      for (const auto& programId : programIds) held.push_back(win32::CreateObject(programId));
      held.back().Put("Content", "held");
      SetEvent(holds_.Get());
      WaitForSingleObject(mayContinue_.Get(), 10'000);
      return held.back().Text("Content");
    } catch (const automation::Error&) {
      return "refused";
    }
  }

  win32::Handle holds_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  win32::Handle mayContinue_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  std::future<std::string> end_;
};

TEST(ComServer, CountsTheObjectsThatCallersHold) {
  const win32::ComApartment apartment;
  win32::RegisterServer(TestClasses(), 0);
  int released = 0;
  win32::ComServer server(TestClasses(), {false, 0, [&] { ++released; }});
  Client client({"TarnTest.Box", "TarnTest.OtherBox"});
  EXPECT_TRUE(RunUntil([&] { return client.Holds(); }));
  EXPECT_EQ(server.Outstanding(), 2);
  EXPECT_EQ(released, 0);
  EXPECT_EQ(client.Continue(), "held");
  EXPECT_EQ(server.Outstanding(), 0);
  EXPECT_EQ(released, 1);
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
  Client client({"TarnTest.Box"});
  EXPECT_TRUE(RunUntil([&] { return client.Holds(); }));
  server.reset();
  // The system may still be handing the object out; it lets go when that is done.
  EXPECT_TRUE(RunUntil([&] { return made.expired(); }));
  EXPECT_EQ(client.Continue(), "refused");
  win32::UnregisterServer(TestClasses(), 0);
}

TEST(Process, TheActivationSwitchIsTheFirstWordOnly) {
  for (const char* tail : {" -Embedding", "/embedding"})
    EXPECT_TRUE(win32::StartedByActivation(tail)) << tail;
  for (const char* tail : {"", " /regplugin", "/regplugin -Embedding", "-Embeddings"}) {
    EXPECT_FALSE(win32::StartedByActivation(tail)) << tail;
  }
}

}  // namespace
