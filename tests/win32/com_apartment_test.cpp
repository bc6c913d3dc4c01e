#include "com_support.h"
#include "platform/win32/com/apartment.h"
#include "tests/core/fault_of.h"
#include "ui_support.h"

namespace {

using automation::Object;
using com_test::Box;

struct AcrossApartments : ui_test::UiTest {
  win32::ComApartment apartment;
  com_test::OtherApartment other;
  Object object = other.MakeBox();
};

TEST_F(AcrossApartments, TheCalleeMayCallBackWhileTheCallerWaits) {
  int seen = 0;
  apartment.WatchIncoming([&](DWORD) { ++seen; });
  const auto own = std::make_shared<Box>();
  object.Put("Content", "from over there");
  EXPECT_EQ(object.Call("Reach", Object(own)).AsText(), "from over there");
  EXPECT_EQ(own->content.AsText(), "from over there");
  EXPECT_GE(seen, 1) << "incoming calls are seen before they run";
}

TEST_F(AcrossApartments, InputWaitsUntilTheCallHasReturned) {
  ui::Window window("fTest");
  ui::TextBox box(window, "box");
  ui::Button button(window, "button");
  int clicks = 0;
  button.onClick = [&] { ++clicks; };
  window.SetLayout(ui::Stack({ui::Item(box), ui::Item(button)}));
  Show(window);
  PostMessageW(ui_test::Native(box), WM_CHAR, 'x', 1);
  PostMessageW(ui_test::Native(button), WM_KEYDOWN, VK_SPACE, 1);
  PostMessageW(ui_test::Native(button), WM_KEYUP, VK_SPACE, 1);
  InvalidateRect(toolkit_.HandleOf(window), nullptr, TRUE);
  object.Call("Wait", 300);
  EXPECT_EQ(box.Text(), "");
  EXPECT_EQ(clicks, 0);
  EXPECT_FALSE(GetUpdateRect(toolkit_.HandleOf(window), nullptr, FALSE)) << "it was painted";
  Settle();
  EXPECT_EQ(box.Text(), "x");
  EXPECT_EQ(clicks, 1);
  toolkit_.Discard(window);
}

// As with a host that hangs: given up after the patience, then sooner until the host answers again.
TEST_F(AcrossApartments, ACallThatIsNotAnsweredCanBeGivenUp) {
  std::vector<std::chrono::milliseconds> asked;
  int over = 0;
  apartment.WatchPending({[&](std::string_view member, std::chrono::milliseconds elapsed) {
                            EXPECT_EQ(member, "Wait");
                            asked.push_back(elapsed);
                            return true;
                          },
                          [&] { ++over; }});
  const auto codeOfWait = [&](int milliseconds) {
    return tests::CodeOf([&] { object.Call("Wait", milliseconds); });
  };
  constexpr std::uint32_t kCanceled = 0x80010002;
  EXPECT_EQ(codeOfWait(2'000), 0u);
  EXPECT_EQ(codeOfWait(7'000), kCanceled);
  ASSERT_FALSE(asked.empty());
  EXPECT_GE(asked[0], win32::CallWatch::kPatience);
  EXPECT_LE(asked[0], win32::CallWatch::kPatience + std::chrono::milliseconds(1'500));
  const std::size_t count = asked.size();
  EXPECT_EQ(over, 1);
  EXPECT_EQ(codeOfWait(2'000), kCanceled);
  Sleep(2'000);  // where a cancelled call ends at once, its late answer comes to nobody
  object.Put("Content", "answers");
  EXPECT_EQ(object.Text("Content"), "answers");
  EXPECT_EQ(codeOfWait(2'000), 0u);
  EXPECT_EQ(asked.size(), count);
}

TEST_F(AcrossApartments, ASilentHostIsNoticedWithoutTheCallFilterThatAsksABusyOneForTenSeconds) {
  int asked = 0;
  int over = 0;
  apartment.WatchPending({[&](std::string_view, std::chrono::milliseconds) {
                            ++asked;
                            return false;
                          },
                          [&] { ++over; }});
  win32::ComPtr<IMessageFilter> filter;
  CoRegisterMessageFilter(nullptr, filter.Put());
  object.Call("Wait", 6'000);
  win32::ComPtr<IMessageFilter> none;
  CoRegisterMessageFilter(filter.Get(), none.Put());
  EXPECT_GE(asked, 2);
  EXPECT_EQ(over, 1);
  ASSERT_TRUE(filter);
  const DWORD pause = filter->RetryRejectedCall(nullptr, 9'999, SERVERCALL_RETRYLATER);
  EXPECT_TRUE(pause >= 100 && pause <= 1'000) << pause;
  constexpr DWORD kGiveUp = 0xFFFFFFFF;
  EXPECT_EQ(filter->RetryRejectedCall(nullptr, 10'000, SERVERCALL_RETRYLATER), kGiveUp);
}

}  // namespace
