#include "ui/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>

#include "ui/control.h"
#include "ui/form.h"

namespace {

using ui::Rect;
using ui::Size;

// A dialog unit is two pixels; a control says its size in its text ("40x13").
class PlainMetrics : public ui::Metrics {
 public:
  Size Measure(const ui::Control& control) const override {
    Size size;
    std::sscanf(control.Text().c_str(), "%dx%d", &size.width, &size.height);
    return size;
  }
  int X(int units) const override { return 2 * units; }
  int Y(int units) const override { return 2 * units; }
};

// A form whose controls are made on demand, by size.
class Sheet {
 public:
  ui::Node Part(const char* size) {
    parts_.push_back(std::make_unique<ui::Label>(form_, "part" + std::to_string(parts_.size())));
    parts_.back()->SetText(size);
    return ui::Item(*parts_.back());
  }
  ui::Node Group(const char* caption, ui::Node content) {
    frames_.push_back(std::make_unique<ui::Frame>(form_, "frame" + std::to_string(frames_.size())));
    frames_.back()->SetText(caption);
    return ui::Box(*frames_.back(), std::move(content));
  }

  ui::Form& Form() { return form_; }
  const std::vector<std::unique_ptr<ui::Label>>& Parts() const { return parts_; }
  const std::vector<std::unique_ptr<ui::Frame>>& Frames() const { return frames_; }

 private:
  ui::Form form_{"fSheet"};
  std::vector<std::unique_ptr<ui::Label>> parts_;
  std::vector<std::unique_ptr<ui::Frame>> frames_;
};

struct Case {
  const char* name;
  ui::Node (*build)(Sheet& sheet);
};

ui::Node TuningPage(Sheet& sheet) {
  std::vector<ui::Node> cells = {ui::Empty(), sheet.Part("60x13"), ui::Span(2, sheet.Part("120x13"))};
  for (int row = 0; row < 3; ++row) {
    cells.push_back(sheet.Part("90x13"));
    for (int column = 0; column < 3; ++column) {
      cells.push_back(ui::Line({sheet.Part("40x21"), sheet.Part(column == 1 ? "15x13" : "30x13")}));
    }
  }
  return ui::Stack({sheet.Group("50x13", ui::Grid(4, std::move(cells))), sheet.Part("200x17")});
}

ui::Node MainWindow(Sheet& sheet) {
  auto list =
      ui::GrowY(ui::Stack({ui::GrowX(ui::GrowY(sheet.Part("100x150"))),
                           sheet.Group("120x13", ui::Stack({sheet.Part("50x17"), sheet.Part("60x17")}))}));
  auto page = ui::Grow(
      ui::Stack({ui::Line({ui::GrowX(sheet.Part("80x20")), sheet.Part("45x13"), sheet.Part("150x21")}),
                 ui::Grow(sheet.Part("300x200"))}));
  return ui::Stack(
      {ui::Grow(ui::Line({std::move(list), std::move(page)})),
       ui::Line({sheet.Part("90x23"), ui::GrowX(ui::Empty()), sheet.Part("75x23"), sheet.Part("75x23")})});
}

ui::Node NestedGroups(Sheet& sheet) {
  auto inner = sheet.Group("300x13", ui::Grid(2, {sheet.Part("40x13"), ui::GrowX(sheet.Part("40x21")),
                                                  ui::Span(2, ui::GrowX(sheet.Part("50x21")))}));
  auto outer = sheet.Group("30x13", ui::Stack({sheet.Part("60x17"), std::move(inner)}));
  return ui::Line({std::move(outer), sheet.Group("30x13", sheet.Part("20x13")), sheet.Part("75x23")});
}

ui::Node GrowingSpan(Sheet& sheet) {
  return ui::Grid(3, {sheet.Part("10x13"), sheet.Part("20x13"), sheet.Part("30x13"),
                      ui::Span(2, ui::GrowX(sheet.Part("200x21"))), ui::Grow(sheet.Part("10x40"))});
}

// Parts: two cells of the first group, three of the second.
ui::Node AlignedGroups(Sheet& sheet) {
  auto above = sheet.Group("30x13", ui::Grid(2, {sheet.Part("90x13"), sheet.Part("40x21")}));
  auto below =
      sheet.Group("30x13", ui::Grid(3, {sheet.Part("20x13"), sheet.Part("150x21"), sheet.Part("60x13")}));
  return ui::AlignGrids(ui::Stack({std::move(above), std::move(below)}));
}

const Case kCases[] = {
    {"tuning page", TuningPage},
    {"main window", MainWindow},
    {"nested groups", NestedGroups},
    {"growing span", GrowingSpan},
    {"aligned groups", AlignedGroups},
    {"one control", [](Sheet& sheet) { return sheet.Part("10x10"); }},
    {"nothing", [](Sheet&) { return ui::Empty(); }},
};

bool Inside(const Rect& inner, const Rect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top &&
         inner.left + inner.width <= outer.left + outer.width &&
         inner.top + inner.height <= outer.top + outer.height;
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

bool Holds(const ui::Control& frame, const ui::Control& control) {
  for (const ui::Frame* around = control.GetFrame(); around; around = around->GetFrame()) {
    if (around == &frame) return true;
  }
  return false;
}

// What must be true of every layout in every area.
TEST(Layout, KeepsControlsApartWholeAndInside) {
  const PlainMetrics metrics;
  for (const Case& test : kCases) {
    Sheet sheet;
    sheet.Form().SetLayout(test.build(sheet));
    const ui::Node& layout = sheet.Form().GetLayout();
    const Size least = ui::MinimumSize(layout, metrics);
    for (const Size extra :
         {Size{0, 0}, Size{1, 1}, Size{333, 0}, Size{0, 333}, Size{500, 400}, Size{-50, -50}}) {
      SCOPED_TRACE(std::string(test.name) + " with " + std::to_string(extra.width) + "x" +
                   std::to_string(extra.height));
      // An area that is too small counts as the least one.
      const Rect area = {7, 11, least.width + extra.width, least.height + extra.height};
      const Rect used = {7, 11, least.width + std::max(0, extra.width),
                         least.height + std::max(0, extra.height)};
      const std::vector<ui::Placement> placed = ui::Arrange(layout, metrics, area);

      std::vector<ui::Control*> order;
      for (const auto& [control, rect] : placed) order.push_back(control);
      EXPECT_EQ(order, ui::PlacedControls(layout));
      EXPECT_EQ(order.size(), sheet.Form().Controls().size());

      for (std::size_t i = 0; i < placed.size(); ++i) {
        const auto& [control, rect] = placed[i];
        EXPECT_TRUE(Inside(rect, used)) << control->Name();
        const Size wanted = metrics.Measure(*control);
        EXPECT_GE(rect.width, wanted.width) << control->Name();
        EXPECT_GE(rect.height, wanted.height) << control->Name();
        for (std::size_t j = i + 1; j < placed.size(); ++j) {
          const auto& [other, otherRect] = placed[j];
          if (Holds(*control, *other)) {
            EXPECT_TRUE(Inside(otherRect, rect)) << other->Name() << " in " << control->Name();
          } else {
            EXPECT_FALSE(Overlap(rect, otherRect)) << other->Name() << " on " << control->Name();
          }
        }
      }
    }
  }
}

class Arranged {
 public:
  Arranged(ui::Node (*build)(Sheet& sheet), Size extra) {
    sheet_.Form().SetLayout(build(sheet_));
    const ui::Node& layout = sheet_.Form().GetLayout();
    const Size least = ui::MinimumSize(layout, metrics_);
    width_ = least.width + extra.width;
    for (const auto& [control, rect] :
         ui::Arrange(layout, metrics_, {0, 0, width_, least.height + extra.height})) {
      rects_[control] = rect;
    }
  }

  int Width() const { return width_; }
  Rect Part(std::size_t index) const { return rects_.at(sheet_.Parts().at(index).get()); }
  Rect Frame(std::size_t index) const { return rects_.at(sheet_.Frames().at(index).get()); }

 private:
  PlainMetrics metrics_;
  Sheet sheet_;
  int width_ = 0;
  std::map<const ui::Control*, Rect> rects_;
};

TEST(Layout, WhatGrowsInAnOverlayFillsItAndTheRestKeepsToTheMiddle) {
  const auto build = [](Sheet& sheet) {
    return ui::Overlay({ui::Grow(sheet.Part("100x50")), sheet.Part("20x10")});
  };
  const Arranged overlay(build, {40, 60});
  EXPECT_EQ(overlay.Part(0), (Rect{0, 0, 140, 110}));
  EXPECT_EQ(overlay.Part(1), (Rect{0, 50, 140, 10}));
}

TEST(Layout, GridColumnsAndMiddlesAlign) {
  const Arranged page(TuningPage, {100, 0});
  // Parts: two headings, then rows of a caption and three pairs of box and unit.
  constexpr std::size_t kRow = 7;
  for (std::size_t column = 0; column < kRow; column += 2) {
    EXPECT_EQ(page.Part(3 + column).left, page.Part(3 + kRow + column).left);
  }
  EXPECT_EQ(page.Part(0).left, page.Part(3).left) << "a heading stands over its boxes";
  EXPECT_EQ(page.Part(1).left, page.Part(5).left) << "a spanning heading starts over its first column";
  const auto middle = [](const Rect& rect) { return 2 * rect.top + rect.height; };
  EXPECT_NEAR(middle(page.Part(2)), middle(page.Part(3)), 1) << "a caption is level with its box";
  EXPECT_NEAR(middle(page.Part(3)), middle(page.Part(4)), 1) << "a unit is level with its box";
}

TEST(Layout, GrowthGoesWhereItIsWanted) {
  const Arranged least(MainWindow, {0, 0});
  const Arranged window(MainWindow, {200, 100});
  // Parts: list, two options, title, location caption and box, page, log, two buttons.
  const Rect list = window.Part(0);
  EXPECT_EQ(list.width, least.Part(0).width)
      << "the list fills its stack but takes nothing of the window's width";
  EXPECT_EQ(list.width, window.Frame(0).width);
  EXPECT_EQ(list.height, least.Part(0).height + 100);
  EXPECT_EQ(window.Part(6).width, least.Part(6).width + 200);
  EXPECT_EQ(window.Part(6).height, least.Part(6).height + 100);
  EXPECT_EQ(window.Part(5).width, 150) << "a control that does not grow keeps its size";
  EXPECT_EQ(window.Part(5).left + 150, window.Width());
  EXPECT_EQ(window.Part(7).left, 0);
  EXPECT_EQ(window.Part(9).left + 75, window.Width()) << "the spring pushes the buttons to the right";
}

TEST(Layout, GroupBoxesBesideEachOtherAreEquallyTall) {
  const Arranged groups(NestedGroups, {0, 0});
  EXPECT_EQ(groups.Frame(1).top, groups.Frame(2).top);
  EXPECT_EQ(groups.Frame(1).height, groups.Frame(2).height);
  // The inner frame's caption is its widest part, and the outer frame is wide enough for it.
  EXPECT_GE(groups.Frame(0).width, 300);
}

TEST(Layout, ColumnsRunOnThroughAlignedGroups) {
  const Arranged groups(AlignedGroups, {50, 0});
  EXPECT_EQ(groups.Part(1).left, groups.Part(3).left);
  EXPECT_EQ(groups.Frame(0).width, groups.Frame(1).width);
  const Arranged apart(
      [](Sheet& sheet) {
        ui::Node node = AlignedGroups(sheet);
        node.aligned = false;
        return node;
      },
      {50, 0});
  EXPECT_GT(apart.Part(1).left, apart.Part(3).left) << "only where it is asked for";
}

TEST(Layout, OneColumnGrowsUnderASpanningCell) {
  const Arranged grid(GrowingSpan, {90, 30});
  EXPECT_EQ(grid.Part(0).width, 10);
  EXPECT_GE(grid.Part(3).width, 200 + 45 - 1);
  EXPECT_EQ(grid.Part(4).left + grid.Part(4).width, grid.Width());
  EXPECT_EQ(grid.Part(4).height, 40 + 30);
}

}  // namespace
