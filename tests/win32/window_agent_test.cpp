#include "plugin/window_agent.h"

#include <utility>

#include "platform/win32/system/handle.h"
#include "platform/win32/system/window_agent.h"
#include "ui_support.h"

namespace {

using Found = plugin::CWindowAgent::Found;

constexpr const char* kName = "KV-TARN test: 10.0.0.1\\RTU-1";

// What one process finds of another one's window is the business of the end-to-end scripts.
struct WindowAgentTest : ui_test::UiTest {
  HWND Native() const { return toolkit_.HandleOf(window_); }

  win32::PagedMemory memory_;
  win32::NativeDesktop desktop_;
  plugin::CWindowAgent agent_{memory_, desktop_};
  plugin::CWindowAgent seeker_{memory_, desktop_};
  ui::Window window_{"fOpen"};
  ui::Window other_{"fOther"};
};

TEST_F(WindowAgentTest, RaisesAWindowAsLongAsItIsTheOnePublished) {
  Show(window_);
  agent_.WindowHandleInMemory(kName, window_.GetWindowPeer()->Handle());
  Show(other_);
  window_.SetState(ui::WindowState::kMaximized);
  EXPECT_EQ(seeker_.RaisePublished(kName), Found::kRaised);
  EXPECT_TRUE(IsZoomed(Native())) << "a maximised window stays so";
  ShowWindow(Native(), SW_MINIMIZE);
  Settle();
  EXPECT_EQ(window_.State(), ui::WindowState::kMinimized) << "what the person does is known";

  // The handle is used again by another window; then the window is gone, and its section kept by somebody.
  plugin::CWindowAgent keeper(memory_, desktop_);
  ASSERT_TRUE(keeper.OpenAndMapPaged(4, kName));
  auto& published = *static_cast<std::int32_t*>(keeper.ViewAddress());
  const std::int32_t handle = std::exchange(published, other_.GetWindowPeer()->Handle());
  EXPECT_EQ(seeker_.RaisePublished(kName), Found::kNoWindow);
  published = handle;
  toolkit_.Discard(window_);
  EXPECT_EQ(seeker_.RaisePublished(kName), Found::kNoWindow);
}

TEST_F(WindowAgentTest, OfAWindowThatLoadsOnlyTheProgressIsRaised) {
  toolkit_.Realize(window_);
  agent_.WindowHandleInMemory(kName, window_.GetWindowPeer()->Handle(),
                              plugin::CWindowAgent::Phase::kLoading);
  Show(other_);
  ASSERT_EQ(seeker_.RaisePublished(kName), Found::kRaised);
  EXPECT_TRUE(RunUntil([&] { return GetForegroundWindow() == toolkit_.HandleOf(other_); }))
      << "it stands for the progress window of the same thread";
  EXPECT_FALSE(IsWindowVisible(Native()));
  toolkit_.Discard(window_);
}

TEST_F(WindowAgentTest, WhatAHeldUpWindowWaitsForComesToTheFrontInItsPlace) {
  Show(window_);
  agent_.WindowHandleInMemory(kName, window_.GetWindowPeer()->Handle());
  Show(other_);
  window_.SetAcceptsInput(false);
  EXPECT_EQ(seeker_.RaisePublished(kName), Found::kRaised);
  EXPECT_TRUE(RunUntil([&] { return GetForegroundWindow() == toolkit_.HandleOf(other_); }));

  // One dialog over another, as the other process sees them.
  other_.Hide();
  ui::Window below("fBelow");
  ui::Window above("fAbove");
  for (ui::Window* dialog : {&below, &above}) {
    dialog->resizable = false;
    toolkit_.Realize(*dialog);
  }
  below.Show();
  below.SetAcceptsInput(false);
  above.Show();
  EXPECT_EQ(win32::EnabledOver(Native()), toolkit_.HandleOf(above));
  toolkit_.Discard(above);
  toolkit_.Discard(below);
}

TEST_F(WindowAgentTest, TheSystemRefusesWhatCannotBeAndWhatIsForOtherRights) {
  EXPECT_FALSE(agent_.OpenAndMapPaged(0, kName));
  EXPECT_FALSE(agent_.OpenAndMapPaged(-4, kName));
  ASSERT_TRUE(agent_.OpenAndMapPaged(4, kName));
  plugin::CWindowAgent larger(memory_, desktop_);
  EXPECT_FALSE(larger.OpenAndMapPaged(1 << 20, kName)) << "the section there is smaller";
  const win32::Handle event(CreateEventW(nullptr, TRUE, FALSE, L"TarnTestTaken"));
  EXPECT_FALSE(larger.OpenAndMapPaged(4, "TarnTestTaken")) << "something else has the name";

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
  EXPECT_EQ(agent_.RaisePublished(kName), Found::kNoWindow) << "told from none";
}

}  // namespace
