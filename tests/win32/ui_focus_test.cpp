// The way of the keyboard focus, and pages that scroll to it or are arranged anew.
#include <thread>

#include "platform/win32/window/dialogs.h"
#include "ui_support.h"

namespace ui_test {
namespace {

class Page : public ui::Form {
 public:
  Page(const char* name, int rows) : Form(name) {
    std::vector<ui::Node> cells;
    for (int i = 0; i < rows; ++i) {
      boxes.push_back(std::make_unique<ui::TextBox>(*this, "txt(" + std::to_string(i) + ")"));
      cells.push_back(ui::Item(*boxes.back()));
    }
    SetLayout(ui::Stack(std::move(cells)));
  }

  std::vector<std::unique_ptr<ui::TextBox>> boxes;
};

class Dialog : public ui::Window {
 public:
  Dialog() : Window("fDialog") {
    option[1].Select();
    list.SetColumns({"Menu"});
    list.SetRows({{"a", {"First"}, 0}, {"b", {"Second"}, 0}});
    list.SetSelection({0});
    defaultButton = &ok;
    cancelButton = &cancel;
    ok.onClick = [this] { events.emplace_back("ok"); };
    cancel.onClick = [this] { events.emplace_back("cancel"); };
    list.onSelect = [this](std::size_t place) { events.push_back("row " + std::to_string(place)); };
    first.onFocus = [this] { events.emplace_back("enter first"); };
    second.onFocus = [this] { events.emplace_back("enter second"); };
    first.onLeave = [this] {
      events.emplace_back("leave first");
      return first.Text() != "x";
    };
    area.Embed(page);
    area.Show(page);
    SetLayout(ui::Stack({ui::Item(list), ui::Item(first), ui::Item(second), ui::Item(option[0]),
                         ui::Item(option[1]), ui::Grow(ui::Item(area)),
                         ui::Line({ui::Item(ok), ui::Item(cancel)})}));
  }

  std::vector<std::string> TakeEvents() { return std::exchange(events, {}); }

  std::vector<std::string> events;
  Page page{"fPage", 2};
  ui::ListView list{*this, "list"};
  ui::TextBox first{*this, "first"};
  ui::TextBox second{*this, "second"};
  ui::OptionGroup<2> option{*this, "option"};
  ui::PageArea area{*this, "area"};
  ui::Button ok{*this, "ok"};
  ui::Button cancel{*this, "cancel"};
};

using Events = std::vector<std::string>;

class UiFocus : public UiTest {
 protected:
  UiFocus() {
    Show(dialog_);
    MoveFocus(dialog_.first);
    dialog_.TakeEvents();
  }

  Dialog dialog_;
};

TEST_F(UiFocus, ARefusedEntryGetsTheFocusBackAndIsSelected) {
  win32::MessagePrompts prompts(toolkit_);
  dialog_.first.onLeave = [&] {
    dialog_.events.emplace_back("leave first");
    prompts.Ask({"Invalid value for this field", "Dialog", ui::Buttons::kOk, ui::Icon::kInformation});
    return false;
  };
  TypeInto(GetFocus(), "x1");
  WhenDialogOpens([](HWND box) { PostMessageW(box, WM_COMMAND, IDOK, 0); });
  SetFocus(Native(dialog_.second));
  EXPECT_TRUE(dialog_.events.empty()) << "never inside the change of the focus";
  ASSERT_TRUE(RunUntil([&] { return Focused() == "fDialog.first" && !dialog_.events.empty(); }));
  Settle();
  EXPECT_EQ(dialog_.TakeEvents(), Events{"leave first"});
  EXPECT_EQ(SendMessageW(GetFocus(), EM_GETSEL, 0, 0), MAKELRESULT(0, 2));
}

TEST_F(UiFocus, ARefusedEntryHoldsBackWhatWasClicked) {
  const std::pair<const char*, std::function<void()>> acts[] = {
      {"button", [&] { Click(Native(dialog_.ok)); }},
      {"option", [&] { Click(Native(dialog_.option[0])); }},
      {"row",
       [&] {
         SetFocus(Native(dialog_.list));
         SelectRow(Native(dialog_.list), 1);
       }},
  };
  TypeInto(GetFocus(), "x");
  for (const auto& [name, act] : acts) {
    act();
    Settle();
    EXPECT_EQ(dialog_.TakeEvents(), Events{"leave first"}) << name;
    EXPECT_EQ(Focused(), "fDialog.first") << name;
  }
  EXPECT_TRUE(dialog_.option[1].Selected());
  EXPECT_EQ(dialog_.list.Selection(), std::vector<std::size_t>{0});
  EXPECT_EQ(SendMessageW(Native(dialog_.list), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 0);
}

TEST_F(UiFocus, CancellingAndOtherWindowsAskForNoBetterEntry) {
  ui::Window other("fOther");
  ui::TextBox box(other, "box");
  other.SetLayout(ui::Item(box));
  TypeInto(GetFocus(), "x");
  Show(other);
  EXPECT_TRUE(dialog_.events.empty()) << "another window";
  // On a busy machine the window manager may still hand the other one the focus that it asked for when it was
  // shown.
  ASSERT_TRUE(RunUntil([&] {
    if (Focused() != "fDialog.first") dialog_.BringToFront();
    Settle();
    return Focused() == "fDialog.first";
  }));
  EXPECT_TRUE(dialog_.events.empty()) << "coming back is no second entering";

  MoveFocus(dialog_.cancel);
  Click(Native(dialog_.cancel));
  EXPECT_EQ(dialog_.TakeEvents(), Events{"cancel"});
  MoveFocus(dialog_.second);
  EXPECT_EQ(dialog_.TakeEvents(), Events{"leave first"}) << "the check is only put off";
  TypeInto(Native(dialog_.first), "5");
  MoveFocus(dialog_.second);
  EXPECT_EQ(dialog_.TakeEvents(), (Events{"leave first", "enter second"})) << "accepted";
  toolkit_.Discard(other);
}

// COM refuses calls to other processes while another program waits in SendMessage.
TEST_F(UiFocus, WhatAnotherProgramSendsIsDoneOnceItNoLongerWaits) {
  const auto note = [this](const char* what) {
    const bool waits = (InSendMessageEx(nullptr) & (ISMEX_SEND | ISMEX_REPLIED)) == ISMEX_SEND;
    dialog_.events.push_back(std::string(what) + (waits ? " inside" : ""));
  };
  dialog_.ok.onClick = [&] { note("ok"); };
  dialog_.cancel.onClick = [&] { note("cancel"); };
  dialog_.option[0].onClick = [&] { note("option"); };
  dialog_.onQueryClose = [&] {
    note("close");
    return false;
  };
  const std::vector<std::pair<HWND, UINT>> sent = {{Native(dialog_.option[0]), BM_CLICK},
                                                   {Native(dialog_.ok), BM_CLICK},
                                                   {Native(dialog_.cancel), BM_CLICK},
                                                   {toolkit_.HandleOf(dialog_), WM_CLOSE}};
  std::jthread other([&sent] {
    for (const auto& [window, message] : sent) SendMessageW(window, message, 0, 0);
  });
  // The window manager may have made another window the active one, and the box was left then.
  const auto events = [this] {
    std::erase(dialog_.events, "leave first");
    return dialog_.events;
  };
  EXPECT_TRUE(RunUntil([&] { return events().size() >= 4; }));
  EXPECT_EQ(events(), (Events{"option", "ok", "cancel", "close"}));
  EXPECT_TRUE(dialog_.option[0].Selected());
}

TEST_F(UiFocus, TabGoesThroughTheLayoutAndEnterAndEscapePressTheButtons) {
  dialog_.second.SetEnabled(false);
  MoveFocus(dialog_.list);
  const Events expected = {"fDialog.first", "fDialog.option(1)", "fPage.txt(0)", "fPage.txt(1)",
                           "fDialog.ok",    "fDialog.cancel",    "fDialog.list"};
  for (const std::string& name : expected) {
    Press(VK_TAB);
    EXPECT_EQ(Focused(), name);
  }

  MoveFocus(*dialog_.page.boxes[1]);
  dialog_.TakeEvents();
  Press(VK_RETURN);
  Press(VK_ESCAPE);
  EXPECT_EQ(dialog_.TakeEvents(), (Events{"ok", "cancel"}));
  dialog_.ok.SetEnabled(false);
  Press(VK_RETURN);
  EXPECT_TRUE(dialog_.TakeEvents().empty());

  // Another one, and none.
  dialog_.ok.SetEnabled(true);
  dialog_.defaultButton = &dialog_.cancel;
  Press(VK_RETURN);
  EXPECT_EQ(dialog_.TakeEvents(), Events{"cancel"});
  dialog_.defaultButton = nullptr;
  Press(VK_RETURN);
  EXPECT_TRUE(dialog_.TakeEvents().empty());
}

TEST_F(UiFocus, ABusyWindowTakesNothingAndGivesTheFocusBack) {
  dialog_.SetAcceptsInput(false);
  dialog_.SetAcceptsInput(true);
  EXPECT_EQ(Focused(), "fDialog.first");
  dialog_.SetAcceptsInput(false);
  EXPECT_FALSE(IsWindowEnabled(toolkit_.HandleOf(dialog_)));
  SetTextOf(Native(dialog_.first), "99");
  Click(Native(dialog_.ok));
  ChooseEntry(Native(dialog_.ok), 0);
  PostMessageW(toolkit_.HandleOf(dialog_), WM_CLOSE, 0, 0);
  Settle();
  EXPECT_EQ(dialog_.first.Text(), "");
  EXPECT_EQ(TextOf(Native(dialog_.first)), "");
  EXPECT_TRUE(dialog_.Visible());

  // A page may ask for the focus meanwhile, for example for the entry that was refused by a save.
  dialog_.page.boxes[1]->Focus();
  dialog_.SetAcceptsInput(true);
  Settle();
  EXPECT_EQ(Focused(), "fPage.txt(1)");
  EXPECT_EQ(dialog_.TakeEvents(), Events{"leave first"});
}

// As the alarms page does when a refresh finds records with other fields.
TEST_F(UiFocus, AnotherLayoutIsArrangedAtOnce) {
  const auto box = [this](std::size_t i) { return RectOf(Native(*dialog_.page.boxes[i])); };
  EXPECT_LT(box(0).top, box(1).top);
  dialog_.page.SetLayout(ui::Line({ui::Item(*dialog_.page.boxes[1]), ui::Item(*dialog_.page.boxes[0])}));
  Settle();
  EXPECT_EQ(box(0).top, box(1).top);
  EXPECT_GT(box(0).left, box(1).left);
}

TEST_F(UiFocus, APageTallerThanTheScreenScrollsToTheFocus) {
  Page tall("fTall", 120);
  dialog_.area.Embed(tall);
  dialog_.area.Show(tall);
  Settle();
  RECT work = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const RECT window = RectOf(toolkit_.HandleOf(dialog_));
  EXPECT_LE(window.bottom - window.top, work.bottom - work.top);
  const RECT area = RectOf(Native(dialog_.area));
  for (const std::size_t row : {std::size_t{119}, std::size_t{60}, std::size_t{0}}) {
    MoveFocus(*tall.boxes[row]);
    const RECT box = RectOf(Native(*tall.boxes[row]));
    EXPECT_GE(box.top, area.top) << row;
    EXPECT_LE(box.bottom, area.bottom) << row;
  }
  // The wheel scrolls the page also over a box, which has no use for it.
  HWND first = Native(*tall.boxes[0]);
  const LONG before = RectOf(first).top;
  SendMessageW(first, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
  EXPECT_LT(RectOf(first).top, before);
  SendMessageW(first, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
  EXPECT_EQ(RectOf(first).top, before);
  dialog_.area.Show(dialog_.page);
  EXPECT_FALSE(IsWindowVisible(Native(*tall.boxes[0])));
  EXPECT_TRUE(IsWindowVisible(Native(*dialog_.page.boxes[0])));
  dialog_.area.Clear();
  EXPECT_EQ(ByName("fTall.txt(119)"), nullptr);
}

}  // namespace
}  // namespace ui_test
