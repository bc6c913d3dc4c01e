// Controls mirror what a person does, once, and show what code sets, which runs nothing.
#include "ui_support.h"

namespace ui_test {
namespace {

// One control of each kind, each counting the runs of its handler.
class Desk : public ui::Window {
 public:
  Desk() : Window("fDesk") {
    option[0].Select();
    list.SetItems({"Off", "Heat", "Cool"});
    list.Select(0);
    button.SetText("Go");
    for (auto* handler : {&text.onChange, &check.onClick, &list.onClick, &button.onClick, &option[0].onClick,
                          &option[1].onClick})
      *handler = [this] { ++changes; };
    SetLayout(ui::Stack({
        ui::Line({ui::Item(caption), ui::Item(text), ui::Item(unit)}),
        ui::Box(group, ui::Stack({ui::Item(check),
                                  ui::Box(inner, ui::Stack({ui::Item(option[0]), ui::Item(option[1])})),
                                  ui::Item(list)})),
        ui::Item(button),
        ui::Item(bar),
    }));
  }

  ui::Label caption{*this, "caption"};
  ui::TextBox text{*this, "text"};
  ui::Label unit{*this, "unit"};
  ui::Frame group{*this, "group"};
  ui::Frame inner{*this, "inner"};
  ui::CheckBox check{*this, "check"};
  ui::OptionGroup<2> option{*this, "option"};
  ui::ListBox list{*this, "list"};
  ui::Button button{*this, "button"};
  ui::ProgressBar bar{*this, "bar"};
  int changes = 0;
};

class UiControls : public UiTest {
 protected:
  UiControls() { Show(desk_); }

  bool Marked(const ui::Control& control) const {
    return SendMessageW(Native(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
  }
  int Chosen() const { return static_cast<int>(SendMessageW(Native(desk_.list), CB_GETCURSEL, 0, 0)); }

  Desk desk_;
};

TEST_F(UiControls, WhatAPersonDoesArrivesOnce) {
  const auto state = [this] {
    return desk_.text.Text() + (desk_.check.Checked() ? " ticked " : " ") +
           (desk_.option[1].Selected() ? "second " : "first ") + desk_.list.SelectedText();
  };
  const std::tuple<std::function<void()>, std::string, int> acts[] = {
      {[&] { TypeInto(Native(desk_.text), "21"); }, "21 first Off", 2},
      {[&] { SetTextOf(Native(desk_.text), "7 °C"); }, "7 °C first Off", 1},
      {[&] { SetTextOf(Native(desk_.text), "7 °C"); }, "7 °C first Off", 0},
      {[&] { Click(Native(desk_.check)); }, "7 °C ticked first Off", 1},
      {[&] { Click(Native(desk_.check)); }, "7 °C first Off", 1},
      {[&] { Click(Native(desk_.option[1])); }, "7 °C second Off", 1},
      {[&] { ChooseEntry(Native(desk_.list), 2); }, "7 °C second Cool", 1},
      {[&] { Click(Native(desk_.button)); }, "7 °C second Cool", 1},
  };
  for (const auto& [act, expected, changes] : acts) {
    desk_.changes = 0;
    act();
    Settle();
    EXPECT_EQ(state(), expected);
    EXPECT_EQ(desk_.changes, changes) << "then " << expected;
  }
  EXPECT_FALSE(desk_.option[0].Selected());
  EXPECT_TRUE(faults_.empty());
}

TEST_F(UiControls, WhatCodeSetsIsShownAndRunsNothing) {
  MoveFocus(desk_.button);
  desk_.text.SetText("1,5");
  desk_.caption.SetText("&Gain");
  desk_.check.SetChecked(true);
  desk_.option[1].Select();
  desk_.list.SetItems({"One", "Two", "Three", "Four"});
  desk_.list.Select(3);
  desk_.bar.SetRange(12);
  desk_.bar.SetValue(5);
  desk_.button.SetEnabled(false);
  desk_.unit.SetVisible(false);
  desk_.text.SetReadOnly(true);
  Settle();
  EXPECT_EQ(TextOf(Native(desk_.text)), "1,5");
  EXPECT_EQ(TextOf(Native(desk_.caption)), "&Gain");
  EXPECT_TRUE(Marked(desk_.check));
  EXPECT_FALSE(Marked(desk_.option[0]));
  EXPECT_TRUE(Marked(desk_.option[1]));
  EXPECT_EQ(Chosen(), 3);
  EXPECT_EQ(SendMessageW(Native(desk_.bar), PBM_GETPOS, 0, 0), 5);
  EXPECT_FALSE(IsWindowEnabled(Native(desk_.button)));
  EXPECT_FALSE(IsWindowVisible(Native(desk_.unit)));
  EXPECT_EQ(desk_.changes, 0);
  EXPECT_EQ(desk_.Focused(), nullptr) << "nobody is in the box";
  TypeInto(Native(desk_.text), "9");
  EXPECT_EQ(desk_.text.Text(), "1,5") << "a read-only box takes no typing";
}

TEST_F(UiControls, WhatAHandlerMakesOfAnEntryIsShownAndTheCaretStays) {
  desk_.text.onChange = [&] { desk_.text.SetText(desk_.text.Text() + "!"); };
  TypeInto(Native(desk_.text), "ab");
  EXPECT_EQ(desk_.text.Text(), "ab!!");
  EXPECT_EQ(TextOf(Native(desk_.text)), "ab!!");

  desk_.list.onClick = [&] { desk_.list.Select(0); };
  desk_.option[1].onClick = [&] { desk_.option[0].Select(); };
  desk_.check.onClick = [&] { desk_.check.SetChecked(false); };
  ChooseEntry(Native(desk_.list), 2);
  Click(Native(desk_.option[1]));
  Click(Native(desk_.check));
  EXPECT_EQ(Chosen(), 0);
  EXPECT_TRUE(Marked(desk_.option[0]));
  EXPECT_FALSE(Marked(desk_.option[1]));
  EXPECT_FALSE(Marked(desk_.check));
}

TEST_F(UiControls, KeysInAListChooseOnceWhenThePersonIsDone) {
  using Texts = std::vector<std::string>;
  desk_.cancelButton = &desk_.button;  // not to be pressed by an escape that is the list's
  Texts chosen;
  // A rule refuses "Heat", which stands in the way of "Cool".
  desk_.list.onClick = [&] {
    chosen.push_back(desk_.list.SelectedText());
    if (desk_.list.SelectedText() == "Heat") desk_.list.Select(0);
  };
  const std::tuple<const char*, std::vector<WORD>, Texts, int> cases[] = {
      {"open, given up", {VK_F4, VK_DOWN, VK_DOWN, VK_ESCAPE}, {}, 0},
      {"open, given up by going on", {VK_F4, VK_DOWN, VK_DOWN, VK_TAB}, {}, 0},
      {"open, chosen, refused", {VK_F4, VK_DOWN, VK_RETURN}, {"Heat"}, 0},
      {"closed, still there", {VK_DOWN, VK_DOWN}, {}, 2},
      {"closed, left", {VK_DOWN, VK_DOWN, VK_TAB}, {"Cool"}, 2},
      {"closed, left, refused", {VK_DOWN, VK_TAB}, {"Heat"}, 0},
      {"closed, there and back", {VK_DOWN, VK_DOWN, VK_HOME, VK_TAB}, {}, 0},
      {"closed, given up", {VK_DOWN, VK_DOWN, VK_ESCAPE, VK_TAB}, {}, 0},
      {"closed, then opened and given up", {VK_END, VK_F4, VK_ESCAPE, VK_TAB}, {}, 0},
      {"closed, then opened and chosen", {VK_END, VK_F4, VK_RETURN, VK_TAB}, {"Cool"}, 2},
  };
  for (const auto& [what, keys, expected, shown] : cases) {
    desk_.list.Select(0);
    MoveFocus(desk_.list);
    chosen.clear();
    desk_.changes = 0;
    for (const WORD key : keys) Press(key);
    EXPECT_EQ(chosen, expected) << what;
    EXPECT_EQ(Chosen(), shown) << what;
    EXPECT_EQ(desk_.changes, 0) << what;
    desk_.list.Select(0);
    MoveFocus(desk_.text);
  }
}

TEST_F(UiControls, WhatAListShowsIsTakenBeforeAnythingElseHappens) {
  std::string order;
  desk_.list.onClick = [&] {
    order += "choose " + desk_.list.SelectedText();
    if (desk_.list.SelectedText() == "Heat") desk_.list.Select(0);
  };
  const auto note = [&order](const char* what) { return [&order, what] { order += what; }; };
  desk_.button.onClick = note(", press");
  desk_.defaultButton = &desk_.button;
  desk_.menu = {{"&Refresh\tF5", note(", refresh"), {}, "F5"}};
  toolkit_.Discard(desk_);
  toolkit_.Realize(desk_);
  desk_.Show();
  const HWND window = toolkit_.HandleOf(desk_);
  const std::tuple<WORD, std::function<void()>, std::string> cases[] = {
      {VK_END, [&] { Press(VK_RETURN); }, "choose Cool, press"},
      {VK_END, [&] { Press(VK_F5); }, "choose Cool, refresh"},
      {VK_END, [&] { Click(Native(desk_.button)); }, "choose Cool, press"},
      {VK_END, [&] { SendMessageW(window, WM_CLOSE, 0, 0); }, "choose Cool"},
      {VK_DOWN, [&] { Press(VK_F5); }, "choose Heat"},  // refused: the person thinks again
      {VK_DOWN, [&] { SendMessageW(window, WM_CLOSE, 0, 0); }, "choose Heat"},
  };
  for (const auto& [entry, goOn, expected] : cases) {
    desk_.list.Select(0);
    desk_.Show();
    desk_.BringToFront();
    Settle();
    MoveFocus(desk_.list);
    Press(entry);
    order.clear();
    goOn();
    Settle();
    EXPECT_EQ(order, expected);
  }
  EXPECT_TRUE(desk_.Visible()) << "the window stays when what it shows was refused on closing";
}

TEST_F(UiControls, AListInAForeignWindowDoesNotWait) {
  ui::Window outer("fOuter");
  Show(outer);
  toolkit_.Discard(desk_);
  toolkit_.RealizeInside(desk_, toolkit_.HandleOf(outer));
  Settle();
  MoveFocus(desk_.list);
  Press(VK_END);
  EXPECT_EQ(desk_.list.SelectedText(), "Cool");
  EXPECT_EQ(desk_.changes, 1);
  toolkit_.Discard(desk_);
  toolkit_.Discard(outer);
}

TEST_F(UiControls, AClosedListLeavesTheWheelToOthersAndFollowsTheDensityOfTheScreen) {
  MoveFocus(desk_.list);
  SendMessageW(Native(desk_.list), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
  MoveFocus(desk_.text);
  EXPECT_EQ(Chosen(), 0);
  EXPECT_EQ(desk_.changes, 0);

  const auto height = [this](WPARAM part) {
    return static_cast<int>(SendMessageW(Native(desk_.list), CB_GETITEMHEIGHT, part, 0));
  };
  const int field = height(static_cast<WPARAM>(-1));
  const int entry = height(0);
  ChangeDensity(toolkit_.HandleOf(desk_), 192, RectOf(toolkit_.HandleOf(desk_)));
  EXPECT_GT(height(static_cast<WPARAM>(-1)), field * 3 / 2);
  EXPECT_GT(height(0), entry * 3 / 2);
  const RECT list = RectOf(Native(desk_.list));
  const RECT box = RectOf(Native(desk_.text));
  EXPECT_NEAR(list.bottom - list.top, box.bottom - box.top, 2);
}

TEST_F(UiControls, ArrowKeysStayWithinTheOptions) {
  MoveFocus(desk_.option[1]);
  EXPECT_EQ(desk_.changes, 0) << "the focus alone is no click";
  MoveFocus(desk_.option[0]);
  Press(VK_DOWN);
  EXPECT_EQ(Focused(), "fDesk.option(1)");
  EXPECT_TRUE(desk_.option[1].Selected());
  Press(VK_DOWN);
  EXPECT_EQ(Focused(), "fDesk.option(0)");
  EXPECT_TRUE(desk_.option[0].Selected());
  EXPECT_TRUE(Marked(desk_.option[0]));
}

TEST_F(UiControls, AGroupDisablesAndHidesWhatItHolds) {
  desk_.check.SetEnabled(false);
  desk_.group.SetEnabled(false);
  const ui::Control* held[] = {&desk_.option[0], &desk_.list, &desk_.inner};
  for (const ui::Control* inside : held) {
    EXPECT_FALSE(IsWindowEnabled(Native(*inside))) << inside->Name();
    EXPECT_FALSE(inside->Usable()) << inside->Name();
  }
  EXPECT_TRUE(IsWindowEnabled(Native(desk_.text)));
  ChooseEntry(Native(desk_.list), 1);
  EXPECT_EQ(Chosen(), 0) << "a choice in a disabled group is taken back";

  desk_.group.SetEnabled(true);
  EXPECT_TRUE(IsWindowEnabled(Native(desk_.option[0])));
  EXPECT_FALSE(IsWindowEnabled(Native(desk_.check))) << "what was disabled by itself stays so";

  desk_.inner.SetVisible(false);
  EXPECT_FALSE(IsWindowVisible(Native(desk_.option[1])));
  EXPECT_TRUE(IsWindowVisible(Native(desk_.list)));
}

TEST_F(UiControls, AHandlerMayFailOrDiscardItsWindow) {
  desk_.button.onClick = [] { throw std::runtime_error("the host went away"); };
  Click(Native(desk_.button));
  EXPECT_EQ(faults_, std::vector<std::string>{"the host went away"});
  Click(Native(desk_.check));
  EXPECT_TRUE(desk_.check.Checked());

  desk_.button.onClick = [&] { toolkit_.Discard(desk_); };
  Click(Native(desk_.button));
  Settle();
  EXPECT_EQ(ByName("fDesk"), nullptr);
  EXPECT_EQ(desk_.GetPeer(), nullptr);
  EXPECT_EQ(desk_.GetWindowPeer(), nullptr);
  toolkit_.Realize(desk_);
  EXPECT_EQ(TextOf(Native(desk_.button)), "Go") << "it can be realised again";
}

}  // namespace
}  // namespace ui_test
