// Windows and the loop: sizes, closing, states, menus and their keys, timers and posted work.
#include <array>
#include <set>

#include "platform/win32/system/own_window.h"
#include "ui_support.h"

namespace ui_test {
namespace {

class Sheet : public ui::Window {
 public:
  Sheet() : Window("fSheet") {
    caption.SetText("Short");
    unit.SetText("sec");
    SetLayout(ui::Stack({ui::Line({ui::Item(caption), ui::Item(box), ui::Item(unit)}),
                         ui::Line({ui::GrowX(ui::Empty()), ui::Item(button)})}));
  }

  ui::Label caption{*this, "caption"};
  ui::TextBox box{*this, "box"};
  ui::Label unit{*this, "unit"};
  ui::Button button{*this, "button"};
};

class UnshownWindow : public UiTest {
 protected:
  UnshownWindow() {
    dialog_.resizable = false;
    dialog_.SetLayout(ui::Item(inDialog_));
  }

  HWND Frame() const { return toolkit_.HandleOf(sheet_); }
  bool Topmost() const { return (GetWindowLongPtrW(Frame(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }
  RECT Client() const {
    RECT rect = {};
    GetClientRect(Frame(), &rect);
    MapWindowPoints(Frame(), nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
  }

  Sheet sheet_;
  ui::Window dialog_{"fDialog"};
  ui::TextBox inDialog_{dialog_, "box"};
};

class UiWindow : public UnshownWindow {
 protected:
  UiWindow() { Show(sheet_); }
};

TEST_F(UnshownWindow, ItsNameIsNotLeftBehindInTheSession) {
  // The names are known to the whole session; this one no other process has used.
  const std::string name =
      "f" + std::to_string(GetCurrentProcessId()) + "x" + std::to_string(GetTickCount64());
  ui::Window other(name);
  const auto known = [&] { return GlobalFindAtomW(win32::Wide(name).c_str()) != 0; };
  for (const bool abrupt : {false, true}) {
    toolkit_.Realize(other);
    EXPECT_TRUE(known());
    if (abrupt) win32::WindowName::GiveAllBack();
    if (!abrupt) toolkit_.Discard(other);
    EXPECT_FALSE(known());
  }
  toolkit_.Discard(other);
}

TEST_F(UnshownWindow, AMissingIconFileGivesNoStrangeIcon) {
  sheet_.iconFile = "C:\\nowhere\\icon.ico";
  Show(sheet_);
  EXPECT_EQ(SendMessageW(Frame(), WM_GETICON, ICON_BIG, 0), 0);  // this program has none of its own
}

TEST_F(UiWindow, ALongerCaptionMakesRoomForItself) {
  const RECT before = RectOf(Frame());
  const RECT box = RectOf(Native(sheet_.box));
  sheet_.caption.SetText("A caption in a language that is fond of considerably longer words");
  sheet_.unit.SetText("Sekunden");
  EXPECT_EQ(RectOf(Native(sheet_.box)).left, box.left) << "not before the present call is done";
  Settle();
  const RECT after = RectOf(Frame());
  EXPECT_GT(after.right - after.left, before.right - before.left);
  EXPECT_LE(RectOf(Native(sheet_.caption)).right, RectOf(Native(sheet_.box)).left);
  EXPECT_LE(RectOf(Native(sheet_.box)).right, RectOf(Native(sheet_.unit)).left);
  EXPECT_LE(RectOf(Native(sheet_.unit)).right, Client().right);
  const LONG wide = RectOf(Native(sheet_.unit)).right;
  sheet_.unit.SetRoom("sec\nSekunden");
  sheet_.unit.SetText("sec");
  Settle();
  EXPECT_EQ(RectOf(Native(sheet_.unit)).right, wide) << "for the longest of what it may show";
}

TEST_F(UnshownWindow, AFrameThatGrowsLeavesNothingOfItsFormerBorder) {
  ui::Window framed("fFramed");
  ui::Frame frame(framed, "frame");
  ui::Label label(framed, "label");
  label.SetText("Short");
  framed.SetLayout(ui::Line({ui::Box(frame, ui::Stack({ui::Item(label)})), ui::GrowX(ui::Empty())}));
  Show(framed);
  framed.Resize(400, 200);  // so that the window itself need not grow
  Settle();
  HWND window = GetParent(Native(frame));
  RECT border = RectOf(Native(frame));
  MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&border), 2);
  // Along a line through the frame, below the label.
  const auto colours = [&] {
    Settle();
    UpdateWindow(window);
    const HDC screen = GetDC(window);
    std::set<COLORREF> found;
    for (int x = border.left + 4; x < border.right + 4; ++x)
      found.insert(GetPixel(screen, x, border.bottom - 6));
    ReleaseDC(window, screen);
    return found.size();
  };
  EXPECT_GT(colours(), 1u) << "the border";
  label.SetText("A longer label");
  EXPECT_EQ(colours(), 1u);
  toolkit_.Discard(framed);
}

TEST_F(UiWindow, EachWindowHasTheDensityOfItsOwnScreen) {
  ui::Window later("fLater");
  ui::TextBox inLater(later, "box");
  later.resizable = false;
  later.SetLayout(ui::Item(inLater));
  const auto width = [](HWND window) { return RectOf(window).right - RectOf(window).left; };
  Show(dialog_);
  HWND frame = toolkit_.HandleOf(dialog_);
  const LONG wide = width(frame);
  const LONG box = width(Native(inDialog_));
  const RECT others = RectOf(Native(sheet_.box));
  const int dpi = static_cast<int>(GetDpiForWindow(frame));
  // As when it was put over a window on a screen of that density: its size is doubled already.
  ChangeDensity(frame, 2 * dpi, {20, 30, 20 + 4 * wide, 300});
  EXPECT_NEAR(width(Native(inDialog_)), 2 * box, 8);
  EXPECT_LE(width(frame), 2 * wide);
  EXPECT_TRUE(EqualRect(&others, std::array{RectOf(Native(sheet_.box))}.data()));
  Show(later);
  EXPECT_EQ(width(Native(inLater)), box);

  const RECT window = RectOf(Frame());
  ChangeDensity(Frame(), 2 * dpi, {20, 30, 20 + 2 * width(Frame()), 30 + 2 * (window.bottom - window.top)});
  EXPECT_EQ(RectOf(Frame()).left, 20);
  EXPECT_LE(RectOf(Native(sheet_.button)).bottom, Client().bottom);
  ChangeDensity(Frame(), dpi, window);
  EXPECT_TRUE(EqualRect(&others, std::array{RectOf(Native(sheet_.box))}.data())) << "and back";
  toolkit_.Discard(later);
}

TEST_F(UiWindow, AnotherFontOfTheSystemIsTakenUp) {
  const RECT before = RectOf(Native(sheet_.box));
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  const auto use = [&](LONG height) {
    metrics.lfMessageFont.lfHeight = height;
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics,
                          SPIF_UPDATEINIFILE | SPIF_SENDCHANGE);
    Settle();
  };
  const LONG height = metrics.lfMessageFont.lfHeight;
  use(2 * height);
  const RECT larger = RectOf(Native(sheet_.box));
  use(height);
  EXPECT_GT(larger.bottom - larger.top, before.bottom - before.top + 5);
  EXPECT_GT(larger.right - larger.left, before.right - before.left + 20);
  EXPECT_TRUE(EqualRect(&before, std::array{RectOf(Native(sheet_.box))}.data()));
}

// As a tip or an assistive program does, which then relies on hearing of the control's end.
TEST_F(UiWindow, WhoStandsBeforeAControlHearsOfColoursAndOfItsEnd) {
  std::vector<UINT> heard;
  Watch(Native(sheet_.box), [&](UINT message, LPARAM) {
    if (message == WM_SYSCOLORCHANGE || message == WM_NCDESTROY) heard.push_back(message);
  });
  SendMessageW(Frame(), WM_SYSCOLORCHANGE, 0, 0);  // the common controls hear it from their window
  toolkit_.Discard(sheet_);
  EXPECT_EQ(heard, (std::vector<UINT>{WM_SYSCOLORCHANGE, WM_NCDESTROY}));
}

TEST_F(UiWindow, AWindowComesToTheFrontThroughTheTopmostBand) {
  ui::Window other("fOther");
  Show(other);
  EXPECT_FALSE(Topmost());
  Settle();                 // the window manager has shown both
  bool wasTopmost = false;  // it may be active, and so leave the band, before the call returns
  Watch(Frame(), [&](UINT message, LPARAM position) {
    if (message == WM_WINDOWPOSCHANGING)
      wasTopmost |= reinterpret_cast<WINDOWPOS*>(position)->hwndInsertAfter == HWND_TOPMOST;
  });
  sheet_.BringToFront();
  EXPECT_TRUE(wasTopmost);
  EXPECT_TRUE(RunUntil([&] { return !Topmost(); }));
  EXPECT_TRUE(RunUntil([&] { return GetActiveWindow() == Frame(); }));
  toolkit_.Discard(other);
}

TEST_F(UiWindow, TheSessionEndsUnlessTheWindowSaysWhyNot) {
  std::string reason = "Values are being written.";
  int ended = 0;
  sheet_.onQueryEnd = [&] { return reason; };
  sheet_.onSessionEnd = [&] { ++ended; };
  EXPECT_FALSE(SendMessageW(Frame(), WM_QUERYENDSESSION, 0, 0));
  SendMessageW(Frame(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(ended, 0);
  reason.clear();
  EXPECT_TRUE(SendMessageW(Frame(), WM_QUERYENDSESSION, 0, 0));
  SendMessageW(Frame(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(ended, 1);
}

TEST_F(UiWindow, SizesStayBetweenTheLeastAndTheScreen) {
  const ui::Bounds first = sheet_.GetBounds();
  sheet_.Resize(10, 10);
  EXPECT_EQ(sheet_.GetBounds().width, first.width);
  MINMAXINFO limits = {};
  SendMessageW(Frame(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_EQ(limits.ptMinTrackSize.x, first.width);
  EXPECT_EQ(limits.ptMinTrackSize.y, first.height);

  sheet_.Resize(first.width + 150, first.height + 40);
  Settle();
  EXPECT_EQ(sheet_.GetBounds().width, first.width + 150);
  EXPECT_NEAR(RectOf(Native(sheet_.button)).right, Client().right, 25) << "the spring follows the window";
  sheet_.Resize(100000, 100000);
  RECT work = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  EXPECT_LE(sheet_.GetBounds().width, work.right - work.left);
  sheet_.Move(33, 44);
  EXPECT_EQ(sheet_.GetBounds().left, 33);
  EXPECT_EQ(sheet_.GetBounds().top, 44);
}

TEST_F(UiWindow, ClosingAsksFirst) {
  bool mayClose = false;
  int asked = 0;
  int closed = 0;
  sheet_.onQueryClose = [&] {
    // A second request while the first one is being answered is no second question.
    SendMessageW(Frame(), WM_CLOSE, 0, 0);
    ++asked;
    return mayClose;
  };
  sheet_.onClosed = [&] { ++closed; };
  SendMessageW(Frame(), WM_CLOSE, 0, 0);
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(IsWindowVisible(Frame()));
  mayClose = true;
  SendMessageW(Frame(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(IsWindowVisible(Frame()));
  EXPECT_FALSE(sheet_.Visible());
  EXPECT_EQ(closed, 1);
}

TEST_F(UnshownWindow, ActivationIsToldAndMayMoveOrCloseTheWindow) {
  int activations = 0;
  sheet_.onActivate = [&] {
    ++activations;
    EXPECT_TRUE(Topmost());
    sheet_.LeaveTopmost();
    EXPECT_FALSE(Topmost());
    sheet_.Hide();
  };
  toolkit_.Realize(sheet_);
  SetWindowPos(Frame(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  sheet_.Show();
  EXPECT_EQ(activations, 0) << "never from inside Show";
  EXPECT_TRUE(RunUntil([&] { return activations == 1 && !IsWindowVisible(Frame()); }));
  toolkit_.Discard(sheet_);
}

TEST_F(UiWindow, ADialogStandsOverItsBusyWindowAndGivesWayToIt) {
  MoveFocus(sheet_.box);
  sheet_.SetAcceptsInput(false);
  Show(dialog_);
  EXPECT_EQ(GetWindow(toolkit_.HandleOf(dialog_), GW_OWNER), Frame());
  EXPECT_ANY_THROW(dialog_.SetState(ui::WindowState::kMaximized)) << "its size is fixed";
  loop_.Post([&] { dialog_.Close(); });
  loop_.RunUntil([&] { return !dialog_.Visible(); });
  EXPECT_EQ(GetActiveWindow(), Frame());
  sheet_.SetAcceptsInput(true);
  Settle();
  EXPECT_EQ(Focused(), "fSheet.box");

  dialog_.Show();
  toolkit_.Discard(sheet_);
  EXPECT_TRUE(IsWindow(toolkit_.HandleOf(dialog_))) << "a dialog outlives the window it stood over";
}

TEST_F(UnshownWindow, MenuKeysAndEntriesRunTheirCommands) {
  std::vector<std::string> ran;
  const auto run = [&](const char* what) { return [&ran, what] { ran.emplace_back(what); }; };
  sheet_.menu = {{"&File",
                  {},
                  {{"&Apply\tCtrl+S", run("apply"), {}, "Ctrl+S"},
                   {"", {}, {}},
                   {"&More", {}, {{"Deep", run("deep"), {}}}}}},
                 {"&Refresh\tF5", run("refresh"), {}, "F5"}};
  Show(sheet_);
  MoveFocus(sheet_.box);
  Press(VK_F5);
  Press('S');
  Press(VK_F6);
  Hold(VK_CONTROL, true);
  Press('S');
  Hold(VK_CONTROL, false);
  const HMENU more = GetSubMenu(GetSubMenu(GetMenu(Frame()), 0), 2);
  SendMessageW(Frame(), WM_COMMAND, GetMenuItemID(more, 0), 0);
  EXPECT_EQ(ran, (std::vector<std::string>{"refresh", "apply", "deep"}));

  // New captions come with the next arrangement, and never into an open menu.
  ran.clear();
  sheet_.menu = {{"&Actualiser\tF5", run("old"), {}, "F5"}};
  sheet_.caption.SetText("Court");
  Settle();
  const HMENU shown = GetMenu(Frame());
  EXPECT_EQ(GetMenuItemCount(shown), 1);
  SendMessageW(Frame(), WM_ENTERMENULOOP, FALSE, 0);
  sheet_.menu = {{"&Aktualisieren\tF6", run("refresh"), {}, "F6"}};
  SendMessageW(Frame(), WM_INITMENU, reinterpret_cast<WPARAM>(shown), 0);
  sheet_.caption.SetText("Kurz");
  Settle();
  EXPECT_EQ(GetMenu(Frame()), shown);
  SendMessageW(Frame(), WM_EXITMENULOOP, FALSE, 0);
  EXPECT_NE(GetMenu(Frame()), shown);
  Press(VK_F5);
  Press(VK_F6);
  sheet_.SetAcceptsInput(false);
  SendMessageW(Frame(), WM_COMMAND, GetMenuItemID(GetMenu(Frame()), 0), 0);
  EXPECT_EQ(ran, std::vector<std::string>{"refresh"});
}

class UiLoop : public UiTest {};

TEST_F(UiLoop, PostedWorkRunsLaterInItsOrderAndWithoutEndHoldsUpNoTurn) {
  std::string order;
  loop_.Post([&] {
    order += "1";
    loop_.Post([&] { order += "3"; });
  });
  loop_.Post([] { throw std::runtime_error("posted work failed"); });
  loop_.Post([&] { order += "2"; });
  EXPECT_EQ(order, "");
  EXPECT_TRUE(RunUntil([&] { return order == "123"; })) << order;
  EXPECT_EQ(faults_, std::vector<std::string>{"posted work failed"});

  std::function<void()> again = [&] { loop_.Post(again); };
  again();
  loop_.Turn();
  again = [] {};
}

TEST_F(UiLoop, ATimerTicksUntilItIsStopped) {
  int ticks = 0;
  ui::Timer timer(loop_, std::chrono::milliseconds(10));
  timer.onTick = [&] {
    if (++ticks == 3) timer.Stop();
  };
  timer.Start();
  EXPECT_TRUE(RunUntil([&] { return ticks == 3; }));
  Sleep(50);
  Settle();
  EXPECT_EQ(ticks, 3);
  auto dying = std::make_unique<ui::Timer>(loop_, std::chrono::milliseconds(10));
  dying->onTick = [&] {
    dying.reset();
    ++ticks;
  };
  dying->Start();
  EXPECT_TRUE(RunUntil([&] { return ticks == 4; })) << "a timer may be destroyed by its own tick";
}

TEST_F(UiLoop, QuitEndsTheLoopAlsoFromInsideATurn) {
  loop_.Post([&] {
    loop_.Quit();
    loop_.Turn();
    loop_.RunUntil([] { return false; });
  });
  EXPECT_EQ(loop_.Run(), 0);
}

}  // namespace
}  // namespace ui_test
