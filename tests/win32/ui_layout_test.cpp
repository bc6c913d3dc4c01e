// A form that is given another layout while it is on the screen, as the alarms page does when a refresh finds
// records with other fields.
#include "ui_support.h"

namespace ui_test {
namespace {

class Sheet : public ui::Window {
 public:
  Sheet() : Window("fLayoutSheet") {
    SetLayout(ui::Item(area));
    page.SetLayout(ui::Line({ui::Item(first), ui::Item(second)}));
    area.Embed(page);
    area.Show(page);
  }
  ~Sheet() override { area.Clear(); }

  ui::Form page{"fLayoutPage"};
  ui::TextBox first{page, "first"};
  ui::TextBox second{page, "second"};
  ui::PageArea area{*this, "area"};
};

class UiLayout : public UiTest {
 protected:
  Sheet sheet_;
};

TEST_F(UiLayout, AnotherLayoutIsArrangedAtOnce) {
  Show(sheet_);
  EXPECT_LT(RectOf(Native(sheet_.first)).left, RectOf(Native(sheet_.second)).left);
  sheet_.page.SetLayout(ui::Stack({ui::Item(sheet_.second), ui::Item(sheet_.first)}));
  Settle();
  EXPECT_EQ(RectOf(Native(sheet_.first)).left, RectOf(Native(sheet_.second)).left);
  EXPECT_GT(RectOf(Native(sheet_.first)).top, RectOf(Native(sheet_.second)).top);
}

}  // namespace
}  // namespace ui_test
