#include "plugin/window_agent.h"

#include <windows.h>

#include "platform/win32/system/handle.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/window_agent.h"
#include "ui_support.h"

namespace {

using Found = plugin::CWindowAgent::Found;

constexpr const char* kName = "KV-TARN test: 10.0.0.1\\RTU-1";
constexpr const wchar_t* kPublished = L"TarnTestPublished";
constexpr DWORD kPatience = 20'000;  // milliseconds

win32::Handle Published() { return win32::Handle(CreateEventW(nullptr, TRUE, FALSE, kPublished)); }

struct WindowAgentTest : ui_test::UiTest {
  ~WindowAgentTest() override {
    toolkit_.Discard(window_);
    toolkit_.Discard(progress_);
  }

  void TellAndWait() {
    SetEvent(Published().Get());
    for (const ULONGLONG end = GetTickCount64() + kPatience; GetTickCount64() < end;) Settle();
  }

  win32::PagedMemory memory_;
  win32::NativeDesktop desktop_;
  plugin::CWindowAgent agent_{memory_, desktop_};
  ui::Window window_{"fOpen"};
  ui::Window progress_{"fProgress"};
};

// These run in the second process only, which ends by force.
TEST_F(WindowAgentTest, DISABLED_PublishesAndWaits) {
  Show(window_);
  agent_.WindowHandleInMemory(kName, window_.GetWindowPeer()->Handle());
  window_.SetState(ui::WindowState::kMinimized);
  window_.Hide();
  TellAndWait();
}

TEST_F(WindowAgentTest, DISABLED_LoadsAndWaits) {
  toolkit_.Realize(window_);
  agent_.WindowHandleInMemory(kName, window_.GetWindowPeer()->Handle(),
                              plugin::CWindowAgent::Phase::kLoading);
  Show(progress_);
  TellAndWait();
}

class SecondProcess {
 public:
  explicit SecondProcess(const wchar_t* does) {
    std::wstring line = L"\"" + win32::Wide(win32::ProgramPath()) +
                        L"\" --gtest_also_run_disabled_tests --gtest_filter=*.DISABLED_" + does;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION made = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &made))
      return;
    process_ = win32::Handle(made.hProcess);
    const win32::Handle thread(made.hThread);
  }
  ~SecondProcess() { Kill(); }

  void Kill() {
    if (!process_) return;
    TerminateProcess(process_.Get(), 1);
    WaitForSingleObject(process_.Get(), kPatience);
    process_.Reset();
  }

 private:
  win32::Handle process_;
};

TEST_F(WindowAgentTest, FindsAndRaisesTheWindowOfAnotherProcessUntilThatEnds) {
  EXPECT_EQ(agent_.RaisePublished(kName), Found::kNoWindow);
  const win32::Handle published = Published();
  SecondProcess second(L"PublishesAndWaits");
  ASSERT_EQ(WaitForSingleObject(published.Get(), kPatience), WAIT_OBJECT_0);
  Show(window_);

  ASSERT_EQ(agent_.RaisePublished(kName), Found::kRaised);
  HWND raised = static_cast<HWND>(LongToHandle(agent_.WindowHandle()));
  EXPECT_EQ(ui_test::NameOf(raised), "fOpen");
  EXPECT_NE(raised, toolkit_.HandleOf(window_));
  EXPECT_TRUE(IsWindowVisible(raised)) << "it was hidden";
  EXPECT_FALSE(IsIconic(raised)) << "it was minimised";
  EXPECT_TRUE(RunUntil([&] { return GetForegroundWindow() == raised; }));
  EXPECT_FALSE(GetWindowLongPtrW(raised, GWL_EXSTYLE) & WS_EX_TOPMOST);

  // Somebody keeps the section, and with it what the process that dies has left in it.
  plugin::CWindowAgent keeper(memory_, desktop_);
  ASSERT_TRUE(keeper.OpenAndMapPaged(4, kName));
  EXPECT_EQ(*static_cast<std::int32_t*>(keeper.ViewAddress()), agent_.WindowHandle());
  second.Kill();
  EXPECT_EQ(agent_.RaisePublished(kName), Found::kNoWindow);

  // The handle is used again by a window of somebody else, or by one that is open on something else.
  const std::int32_t mine = window_.GetWindowPeer()->Handle();
  *static_cast<std::int32_t*>(keeper.ViewAddress()) = mine;
  EXPECT_EQ(agent_.RaisePublished(kName), Found::kNoWindow);
  plugin::CWindowAgent elsewhere(memory_, desktop_);
  elsewhere.WindowHandleInMemory("another name", mine);
  EXPECT_EQ(agent_.RaisePublished(kName), Found::kNoWindow);
  elsewhere.Withdraw();
  EXPECT_EQ(agent_.RaisePublished("another name"), Found::kNoWindow);
}

TEST_F(WindowAgentTest, OfAWindowThatLoadsOnlyTheProgressIsRaised) {
  const win32::Handle published = Published();
  SecondProcess second(L"LoadsAndWaits");
  ASSERT_EQ(WaitForSingleObject(published.Get(), kPatience), WAIT_OBJECT_0);
  Show(window_);
  ASSERT_EQ(agent_.RaisePublished(kName), Found::kRaised);
  EXPECT_TRUE(RunUntil([] { return ui_test::NameOf(GetForegroundWindow()) == "fProgress"; }));
  EXPECT_FALSE(IsWindowVisible(static_cast<HWND>(LongToHandle(agent_.WindowHandle()))));
}

TEST_F(WindowAgentTest, TheSystemRefusesWhatCannotBe) {
  EXPECT_FALSE(agent_.OpenAndMapPaged(0, kName));
  EXPECT_FALSE(agent_.OpenAndMapPaged(-4, kName));
  ASSERT_TRUE(agent_.OpenAndMapPaged(4, kName));
  plugin::CWindowAgent larger(memory_, desktop_);
  EXPECT_FALSE(larger.OpenAndMapPaged(1 << 20, kName)) << "the section there is smaller";
  const win32::Handle event(CreateEventW(nullptr, TRUE, FALSE, L"TarnTestTaken"));
  EXPECT_FALSE(larger.OpenAndMapPaged(4, "TarnTestTaken")) << "something else has the name";
}

TEST_F(WindowAgentTest, ASectionForOtherRightsIsToldFromNone) {
  SECURITY_DESCRIPTOR nobody = {};
  InitializeSecurityDescriptor(&nobody, SECURITY_DESCRIPTOR_REVISION);
  ACL none = {};
  InitializeAcl(&none, sizeof none, ACL_REVISION);
  SetSecurityDescriptorDacl(&nobody, TRUE, &none, FALSE);
  SECURITY_ATTRIBUTES attributes = {sizeof attributes, &nobody, FALSE};
  const win32::Handle section(
      CreateFileMappingW(INVALID_HANDLE_VALUE, &attributes, PAGE_READWRITE, 0, 4, L"TarnTestOfOthers"));
  ASSERT_TRUE(section);
  EXPECT_EQ(agent_.RaisePublished("TarnTestOfOthers"), Found::kOtherRights);
  EXPECT_EQ(agent_.RaisePublished(kName), Found::kNoWindow);
}

TEST_F(WindowAgentTest, AMaximisedWindowStaysSo) {
  Show(window_);
  window_.SetState(ui::WindowState::kMaximized);
  agent_.WindowHandleInMemory(kName, window_.GetWindowPeer()->Handle());
  plugin::CWindowAgent seeker(memory_, desktop_);
  EXPECT_EQ(seeker.RaisePublished(kName), Found::kRaised);
  EXPECT_EQ(window_.State(), ui::WindowState::kMaximized);
}

}  // namespace
