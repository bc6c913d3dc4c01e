// Controls mirror both ways: what a person does arrives in the description once, what code sets never comes
// back.
#include "ui_support.h"
// After windows.h, which it needs.
#include <commctrl.h>

namespace ui_test {
namespace {

// One control of each kind, each counting the runs of its handler.
class Desk : public ui::Window {
 public:
  Desk() : Window("fDesk") {
    SetTitle("Desk");
    caption.SetText("&Value");
    group.SetText("Group");
    inner.SetText("Inner group");
    check.SetText("Check");
    option[0].SetText("First");
    option[1].SetText("Second");
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
  const struct {
    const char* act;
    std::function<void()> run;
    std::function<bool()> arrived;
    int changes;
  } acts[] = {
      {"type", [&] { TypeInto(Native(desk_.text), "21"); }, [&] { return desk_.text.Text() == "21"; }, 2},
      {"replace", [&] { SetTextOf(Native(desk_.text), "7 °C"); }, [&] { return desk_.text.Text() == "7 °C"; },
       1},
      {"the same text", [&] { SetTextOf(Native(desk_.text), "7 °C"); }, [] { return true; }, 0},
      {"tick", [&] { Click(Native(desk_.check)); }, [&] { return desk_.check.Checked(); }, 1},
      {"untick", [&] { Click(Native(desk_.check)); }, [&] { return !desk_.check.Checked(); }, 1},
      {"option", [&] { Click(Native(desk_.option[1])); }, [&] { return desk_.option[1].Selected(); }, 1},
      {"choose", [&] { ChooseEntry(Native(desk_.list), 2); },
       [&] { return desk_.list.SelectedText() == "Cool"; }, 1},
      {"press", [&] { Click(Native(desk_.button)); }, [] { return true; }, 1},
  };
  for (const auto& act : acts) {
    desk_.changes = 0;
    act.run();
    Settle();
    EXPECT_TRUE(act.arrived()) << act.act;
    EXPECT_EQ(desk_.changes, act.changes) << act.act;
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

TEST_F(UiControls, TheCaretStaysWhereAPersonTypes) {
  desk_.text.onChange = [&] { desk_.text.SetText(desk_.text.Text() + "!"); };
  TypeInto(Native(desk_.text), "ab");
  EXPECT_EQ(desk_.text.Text(), "ab!!");
  EXPECT_EQ(TextOf(Native(desk_.text)), "ab!!");
}

TEST_F(UiControls, ARefusedChoiceIsTakenBackOnTheScreen) {
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
  for (const ui::Control* inside :
       {static_cast<ui::Control*>(&desk_.option[0]), static_cast<ui::Control*>(&desk_.list),
        static_cast<ui::Control*>(&desk_.inner)}) {
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

TEST_F(UiControls, AFailingHandlerIsReportedAndTheWindowLives) {
  desk_.button.onClick = [] { throw std::runtime_error("the host went away"); };
  Click(Native(desk_.button));
  EXPECT_EQ(faults_, std::vector<std::string>{"the host went away"});
  Click(Native(desk_.check));
  EXPECT_TRUE(desk_.check.Checked());
}

TEST_F(UiControls, AHandlerMayDiscardItsWindow) {
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
