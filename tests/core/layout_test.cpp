#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <span>

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
struct Sheet {
  ui::Node Part(const char* size) {
    parts.push_back(std::make_unique<ui::Label>(form, "part" + std::to_string(parts.size())));
    parts.back()->SetText(size);
    return ui::Item(*parts.back());
  }
  ui::Node Group(const char* caption, ui::Node content) {
    frames.push_back(std::make_unique<ui::Frame>(form, "frame" + std::to_string(frames.size())));
    frames.back()->SetText(caption);
    return ui::Box(*frames.back(), std::move(content));
  }

  ui::Form form{"fSheet"};
  std::vector<std::unique_ptr<ui::Label>> parts;
  std::vector<std::unique_ptr<ui::Frame>> frames;
};

using Build = ui::Node (*)(Sheet& sheet);

// Parts: two headings, then rows of a caption and three pairs of box and unit.
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

// Parts: list, two options, title, location caption and box, page, log, two buttons.
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

bool Inside(const Rect& inner, const Rect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top &&
         inner.left + inner.width <= outer.left + outer.width &&
         inner.top + inner.height <= outer.top + outer.height;
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

bool Holds(const ui::Control& frame, const ui::Control* control) {
  while (control && control != &frame) control = control->GetFrame();
  return control != nullptr;
}

// What must be true of every layout in every area.
TEST(Layout, KeepsControlsApartWholeAndInside) {
  const PlainMetrics metrics;
  const std::pair<const char*, Build> layouts[] = {
      {"tuning page", TuningPage},       {"main window", MainWindow},
      {"nested groups", NestedGroups},   {"growing span", GrowingSpan},
      {"aligned groups", AlignedGroups}, {"nothing", [](Sheet&) { return ui::Empty(); }}};
  for (const auto& [name, build] : layouts) {
    Sheet sheet;
    sheet.form.SetLayout(build(sheet));
    const ui::Node& layout = sheet.form.GetLayout();
    const Size least = ui::MinimumSize(layout, metrics);
    for (const Size extra :
         {Size{0, 0}, Size{1, 1}, Size{333, 0}, Size{0, 333}, Size{500, 400}, Size{-50, -50}}) {
      SCOPED_TRACE(name + (" with " + std::to_string(extra.width)) + "x" + std::to_string(extra.height));
      // An area that is too small counts as the least one.
      const Rect area = {7, 11, least.width + extra.width, least.height + extra.height};
      const Rect used = {7, 11, std::max(area.width, least.width), std::max(area.height, least.height)};
      const std::vector<ui::Placement> placed = ui::Arrange(layout, metrics, area);
      std::vector<ui::Control*> order;
      for (std::size_t i = 0; i < placed.size(); ++i) {
        const auto& [control, rect] = placed[i];
        order.push_back(control);
        const Size wanted = metrics.Measure(*control);
        EXPECT_TRUE(Inside(rect, used)) << control->Name();
        EXPECT_TRUE(rect.width >= wanted.width && rect.height >= wanted.height) << control->Name();
        for (const auto& [other, otherRect] : std::span(placed).subspan(i + 1)) {
          EXPECT_TRUE(Holds(*control, other) ? Inside(otherRect, rect) : !Overlap(rect, otherRect))
              << other->Name() << " and " << control->Name();
        }
      }
      EXPECT_EQ(order, ui::PlacedControls(layout));
      EXPECT_EQ(order.size(), sheet.form.Controls().size());
    }
  }
}

struct Arranged {
  Arranged(Build build, Size extra) {
    const ui::Node layout = build(sheet_);
    const Size least = ui::MinimumSize(layout, metrics_);
    width = least.width + extra.width;
    for (const auto& [control, rect] :
         ui::Arrange(layout, metrics_, {0, 0, width, least.height + extra.height})) {
      rects_[control] = rect;
    }
  }

  Rect Part(std::size_t index) const { return rects_.at(sheet_.parts.at(index).get()); }
  Rect Frame(std::size_t index) const { return rects_.at(sheet_.frames.at(index).get()); }

  int width = 0;

 private:
  PlainMetrics metrics_;
  Sheet sheet_;
  std::map<const ui::Control*, Rect> rects_;
};

TEST(Layout, ColumnsMiddlesAndGroupsAlign) {
  const Arranged page(TuningPage, {100, 0});
  constexpr std::size_t kRow = 7;
  for (std::size_t column = 0; column < kRow; column += 2) {
    EXPECT_EQ(page.Part(3 + column).left, page.Part(3 + kRow + column).left);
  }
  EXPECT_EQ(page.Part(0).left, page.Part(3).left) << "a heading stands over its boxes";
  const auto middle = [&page](std::size_t part) { return 2 * page.Part(part).top + page.Part(part).height; };
  for (const std::size_t part : {2, 4}) EXPECT_NEAR(middle(part), middle(3), 1) << "level with the box";
  const Arranged groups(NestedGroups, {0, 0});
  EXPECT_EQ(groups.Frame(1).top, groups.Frame(2).top);
  EXPECT_EQ(groups.Frame(1).height, groups.Frame(2).height);
  EXPECT_GE(groups.Frame(0).width, 300) << "the widest part of the frame within, its caption";
  const Arranged aligned(AlignedGroups, {50, 0});
  EXPECT_EQ(aligned.Part(1).left, aligned.Part(3).left);
  EXPECT_EQ(aligned.Frame(0).width, aligned.Frame(1).width);
}

TEST(Layout, GrowthGoesWhereItIsWanted) {
  const auto build = [](Sheet& sheet) {
    return ui::Overlay({ui::Grow(sheet.Part("100x50")), sheet.Part("20x10")});
  };
  const Arranged overlay(build, {40, 60});
  EXPECT_EQ(overlay.Part(0), (Rect{0, 0, 140, 110}));
  EXPECT_EQ(overlay.Part(1), (Rect{0, 50, 140, 10})) << "in the middle";
  const Arranged least(MainWindow, {0, 0});
  const Arranged window(MainWindow, {200, 100});
  EXPECT_EQ(window.Part(0).width, least.Part(0).width) << "the list takes nothing of the window's width";
  EXPECT_EQ(window.Part(0).width, window.Frame(0).width) << "but fills its stack";
  EXPECT_EQ(window.Part(0).height, least.Part(0).height + 100);
  EXPECT_EQ(window.Part(6).width, least.Part(6).width + 200);
  EXPECT_EQ(window.Part(6).height, least.Part(6).height + 100);
  EXPECT_EQ(window.Part(5).width, 150) << "a control that does not grow keeps its size";
  const Arranged grid(GrowingSpan, {90, 30});
  EXPECT_EQ(grid.Part(0).width, 10) << "a column that does not grow keeps its width";
  EXPECT_EQ(grid.Part(4).left + grid.Part(4).width, grid.width);
  EXPECT_EQ(window.Part(7).left, 0);
  EXPECT_EQ(window.Part(9).left + 75, window.width) << "the spring pushes the buttons to the right";
}

}  // namespace
