// Where controls stand, described without coordinates: lines, stacks, grids and group boxes. A page states
// its layout once; Arrange turns it into rectangles with the measures of the font in use, so it follows
// longer translations, other fonts and screen densities. The order of the description is the tab order.
#pragma once

#include <cstddef>
#include <vector>

namespace ui {

class Control;
class Frame;

struct Size {
  int width = 0;
  int height = 0;

  bool operator==(const Size&) const = default;
};

struct Rect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const Rect&) const = default;
};

/// One place of a layout; made by the functions below.
struct Node {
  enum class Type { kEmpty, kItem, kLine, kStack, kGrid, kBox, kOverlay };

  Type type = Type::kEmpty;
  Control* control = nullptr;  // of an item; the frame of a box
  std::vector<Node> children;
  std::size_t columns = 0;  // of a grid
  std::size_t span = 1;     // columns of the grid that a cell takes
  bool growX = false;       // takes what width is left over
  bool growY = false;       // takes what height is left over
  bool aligned = false;     // the grids within share their column widths
};

Node Item(Control& control);
/// Left to right; controls on one middle line, groups from the top and group boxes equally tall.
Node Line(std::vector<Node> children);
/// Top to bottom; groups, boxes and growing controls take the full width.
Node Stack(std::vector<Node> children);
/// Rows of `columns` cells, column widths shared by all rows. A spanning cell counts for its columns.
Node Grid(std::size_t columns, std::vector<Node> cells);
/// A group box around `content`.
Node Box(Frame& frame, Node content);
/// All children in the same place, for controls of which one is visible at a time.
Node Overlay(std::vector<Node> children);
/// An empty cell, or with Grow a spring that pushes its neighbours apart.
inline Node Empty() { return {}; }
Node Span(std::size_t columns, Node node);
/// Gives all grids within, as in group boxes above one another, the same column widths.
Node AlignGrids(Node node);
/// Growth along a line or a stack, and of a cell of a grid, makes the whole grow; growth across only fills
/// it.
Node GrowX(Node node);
Node GrowY(Node node);
Node Grow(Node node);

/// The measures of a font and of the controls in it. A port: implemented by the renderer.
class Metrics {
 public:
  virtual ~Metrics() = default;
  /// The size that a control wants, in pixels.
  virtual Size Measure(const Control& control) const = 0;
  /// Pixels of a distance given in dialog units (a quarter of an average character's width, an eighth of its
  /// height).
  virtual int X(int units) const = 0;
  virtual int Y(int units) const = 0;
};

struct Placement {
  Control* control;
  Rect rect;
};

/// The smallest area that shows everything.
Size MinimumSize(const Node& node, const Metrics& metrics);

/// Rectangles of all controls in the order of the description. A frame comes before what it holds. An area
/// smaller than the minimum is treated as the minimum. Controls that are not visible keep their place.
std::vector<Placement> Arrange(const Node& node, const Metrics& metrics, Rect area);

/// All controls of a layout in order (each should be there exactly once).
std::vector<Control*> PlacedControls(const Node& node);

}  // namespace ui
