#include "ui/layout.h"

#include <algorithm>
#include <span>
#include <unordered_map>
#include <utility>

#include "ui/control.h"

namespace ui {
namespace {

// Distances in dialog units, after the platform's guidelines for dialog layout.
constexpr int kItemGap = 3;    // between a box and its unit
constexpr int kColumnGap = 8;  // between the columns of a grid
constexpr int kRowGap = 4;
constexpr int kFrameSide = 7;
constexpr int kFrameTop = 12;
constexpr int kFrameBottom = 7;

Node Composite(Node::Type type, std::vector<Node> children) {
  Node node;
  node.type = type;
  node.children = std::move(children);
  // What grows across a line or stack only fills it.
  for (const Node& child : node.children) {
    node.growX |= child.growX && type != Node::Type::kStack;
    node.growY |= child.growY && type != Node::Type::kLine;
  }
  return node;
}

struct Cell {
  const Node* node;
  std::size_t row;
  std::size_t column;
};

std::vector<Cell> CellsOf(const Node& grid) {
  std::vector<Cell> cells;
  std::size_t row = 0;
  std::size_t column = 0;
  for (const Node& child : grid.children) {
    if (column + child.span > grid.columns) {
      ++row;
      column = 0;
    }
    cells.push_back({&child, row, column});
    column += child.span;
  }
  return cells;
}

void CollectGrids(const Node& node, std::vector<const Node*>& grids) {
  if (node.type == Node::Type::kGrid) return grids.push_back(&node);
  for (const Node& child : node.children) CollectGrids(child, grids);
}

struct Track {
  int size = 0;
  bool grows = false;
};

/// Where the track behind the first `count` begins.
int Offset(const std::vector<Track>& tracks, std::size_t count, int gap) {
  int offset = 0;
  for (const Track& track : std::span(tracks).first(count)) offset += track.size + gap;
  return offset;
}

int Total(const std::vector<Track>& tracks, int gap) {
  return tracks.empty() ? 0 : Offset(tracks, tracks.size(), gap) - gap;
}

// Gives the surplus to the growing tracks in equal parts.
void Spread(std::vector<Track>& tracks, int surplus) {
  auto growing = static_cast<int>(std::ranges::count_if(tracks, &Track::grows));
  for (Track& track : tracks) {
    if (!track.grows || surplus <= 0) continue;
    const int share = surplus / growing--;
    track.size += share;
    surplus -= share;
  }
}

// A control keeps its size; a group takes all the room of its place and starts at its top left.
bool FillsHeight(const Node& node) { return node.growY || node.type != Node::Type::kItem; }
bool FillsWidth(const Node& node) { return node.growX || node.type != Node::Type::kItem; }

class Engine {
 public:
  explicit Engine(const Metrics& metrics) : metrics_(metrics) {}

  Size Measure(const Node& node) const;
  void Place(const Node& node, Rect area);
  std::vector<Placement> TakePlacements() { return std::move(placements_); }

 private:
  struct Tracks {
    std::vector<Track> columns;
    std::vector<Track> rows;
  };

  Size Compute(const Node& node) const;
  int Gap(const Node& node) const {
    return node.type == Node::Type::kLine ? metrics_.X(kItemGap) : metrics_.Y(kRowGap);
  }
  std::vector<Track> AxisTracks(const Node& node) const;
  Tracks GridTracks(const Node& grid) const;
  void ShareColumns(const Node& around) const;
  void PlaceLine(const Node& node, Rect area);
  void PlaceStack(const Node& node, Rect area);
  void PlaceGrid(const Node& node, Rect area);
  void PlaceBox(const Node& node, Rect area);

  const Metrics& metrics_;
  mutable std::unordered_map<const Node*, Size>
      sizes_;  // every level asks for the sizes of all levels below it
  mutable std::unordered_map<const Node*, std::vector<int>> sharedWidths_;  // of the columns of aligned grids
  std::vector<Placement> placements_;
};

std::vector<Track> Engine::AxisTracks(const Node& node) const {
  const bool across = node.type == Node::Type::kLine;
  std::vector<Track> tracks;
  for (const Node& child : node.children) {
    const Size size = Measure(child);
    tracks.push_back(across ? Track{size.width, child.growX} : Track{size.height, child.growY});
  }
  return tracks;
}

Engine::Tracks Engine::GridTracks(const Node& grid) const {
  Tracks tracks;
  tracks.columns.resize(grid.columns);
  const std::vector<Cell> cells = CellsOf(grid);
  const int gap = metrics_.X(kColumnGap);
  for (const bool spanning : {false, true}) {
    for (const auto& [node, row, column] : cells) {
      if ((node->span > 1) != spanning) continue;
      if (row >= tracks.rows.size()) tracks.rows.resize(row + 1);
      const Size size = Measure(*node);
      tracks.rows[row].size = std::max(tracks.rows[row].size, size.height);
      tracks.rows[row].grows |= node->growY;
      int before = gap * static_cast<int>(node->span - 1);
      for (std::size_t i = 0; i + 1 < node->span; ++i) before += tracks.columns[column + i].size;
      Track& last = tracks.columns[column + node->span - 1];
      last.size = std::max(last.size, size.width - before);
      if (!node->growX) continue;
      // Of the columns under a growing spanning cell one has to grow; the last one unless another does
      // already.
      const auto under = std::span(tracks.columns).subspan(column, node->span);
      if (std::ranges::none_of(under, &Track::grows)) last.grows = true;
    }
  }
  const auto shared = sharedWidths_.find(&grid);
  for (std::size_t i = 0; shared != sharedWidths_.end() && i < grid.columns; ++i) {
    tracks.columns[i].size = std::max(tracks.columns[i].size, shared->second[i]);
  }
  return tracks;
}

void Engine::ShareColumns(const Node& around) const {
  std::vector<const Node*> grids;
  CollectGrids(around, grids);
  std::vector<int> widths;
  for (const Node* grid : grids) {
    const std::vector<Track> columns = GridTracks(*grid).columns;
    widths.resize(std::max(widths.size(), columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i) widths[i] = std::max(widths[i], columns[i].size);
  }
  for (const Node* grid : grids) sharedWidths_[grid] = widths;
}

Size Engine::Measure(const Node& node) const {
  const auto known = sizes_.find(&node);
  return known != sizes_.end() ? known->second : sizes_[&node] = Compute(node);
}

Size Engine::Compute(const Node& node) const {
  if (node.aligned) ShareColumns(node);  // before anything within is measured
  switch (node.type) {
    case Node::Type::kEmpty:
      return {};
    case Node::Type::kItem:
      return metrics_.Measure(*node.control);
    case Node::Type::kGrid: {
      const Tracks tracks = GridTracks(node);
      return {Total(tracks.columns, metrics_.X(kColumnGap)), Total(tracks.rows, metrics_.Y(kRowGap))};
    }
    case Node::Type::kBox: {
      const Size content = Measure(node.children.front());
      const Size caption = metrics_.Measure(*node.control);
      return {std::max(content.width, caption.width) + 2 * metrics_.X(kFrameSide),
              content.height + metrics_.Y(kFrameTop + kFrameBottom)};
    }
    case Node::Type::kLine:
    case Node::Type::kStack:
    case Node::Type::kOverlay:
      break;
  }
  Size size;
  for (const Node& child : node.children) {
    const Size part = Measure(child);
    size.width = std::max(size.width, part.width);
    size.height = std::max(size.height, part.height);
  }
  if (node.type == Node::Type::kOverlay) return size;
  const int along = Total(AxisTracks(node), Gap(node));
  (node.type == Node::Type::kLine ? size.width : size.height) = along;
  return size;
}

void Engine::Place(const Node& node, Rect area) {
  switch (node.type) {
    case Node::Type::kEmpty:
      return;
    case Node::Type::kItem:
      placements_.push_back({node.control, area});
      return;
    case Node::Type::kLine:
      return PlaceLine(node, area);
    case Node::Type::kStack:
      return PlaceStack(node, area);
    case Node::Type::kGrid:
      return PlaceGrid(node, area);
    case Node::Type::kBox:
      return PlaceBox(node, area);
    case Node::Type::kOverlay:
      for (const Node& child : node.children) {
        const int height = child.growY ? area.height : Measure(child).height;
        Place(child, {area.left, area.top + (area.height - height) / 2, area.width, height});
      }
      return;
  }
}

void Engine::PlaceLine(const Node& node, Rect area) {
  std::vector<Track> tracks = AxisTracks(node);
  Spread(tracks, area.width - Total(tracks, Gap(node)));
  int left = area.left;
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    const Node& child = node.children[i];
    const int height = FillsHeight(child) ? area.height : Measure(child).height;
    Place(child, {left, area.top + (area.height - height) / 2, tracks[i].size, height});
    left += tracks[i].size + Gap(node);
  }
}

void Engine::PlaceStack(const Node& node, Rect area) {
  std::vector<Track> tracks = AxisTracks(node);
  Spread(tracks, area.height - Total(tracks, Gap(node)));
  int top = area.top;
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    const Node& child = node.children[i];
    Place(child, {area.left, top, FillsWidth(child) ? area.width : Measure(child).width, tracks[i].size});
    top += tracks[i].size + Gap(node);
  }
}

void Engine::PlaceGrid(const Node& node, Rect area) {
  Tracks tracks = GridTracks(node);
  const int columnGap = metrics_.X(kColumnGap);
  const int rowGap = metrics_.Y(kRowGap);
  Spread(tracks.columns, area.width - Total(tracks.columns, columnGap));
  Spread(tracks.rows, area.height - Total(tracks.rows, rowGap));
  for (const auto& [cell, row, column] : CellsOf(node)) {
    const int left = Offset(tracks.columns, column, columnGap);
    const int width = Offset(tracks.columns, column + cell->span, columnGap) - columnGap - left;
    const Size wanted = Measure(*cell);
    const int height = FillsHeight(*cell) ? tracks.rows[row].size : wanted.height;
    const int top = area.top + Offset(tracks.rows, row, rowGap) + (tracks.rows[row].size - height) / 2;
    Place(*cell, {area.left + left, top, FillsWidth(*cell) ? width : wanted.width, height});
  }
}

void Engine::PlaceBox(const Node& node, Rect area) {
  placements_.push_back({node.control, area});
  const int side = metrics_.X(kFrameSide);
  const int top = metrics_.Y(kFrameTop);
  Place(node.children.front(), {area.left + side, area.top + top, area.width - 2 * side,
                                area.height - top - metrics_.Y(kFrameBottom)});
}

void Collect(const Node& node, std::vector<Control*>& controls) {
  if (node.control) controls.push_back(node.control);
  for (const Node& child : node.children) Collect(child, controls);
}

}  // namespace

Node Item(Control& control) {
  Node node;
  node.type = Node::Type::kItem;
  node.control = &control;
  return node;
}

Node Line(std::vector<Node> children) { return Composite(Node::Type::kLine, std::move(children)); }
Node Stack(std::vector<Node> children) { return Composite(Node::Type::kStack, std::move(children)); }

Node Overlay(std::vector<Node> children) { return Composite(Node::Type::kOverlay, std::move(children)); }

Node Grid(std::size_t columns, std::vector<Node> cells) {
  Node node = Composite(Node::Type::kGrid, std::move(cells));
  node.columns = columns;
  return node;
}

Node Box(Frame& frame, Node content) {
  std::vector<Node> children;
  children.push_back(std::move(content));
  Node node = Composite(Node::Type::kBox, std::move(children));
  node.control = &frame;
  return node;
}

Node Span(std::size_t columns, Node node) {
  node.span = columns;
  return node;
}

Node AlignGrids(Node node) {
  node.aligned = true;
  return node;
}

Node GrowX(Node node) {
  node.growX = true;
  return node;
}

Node GrowY(Node node) {
  node.growY = true;
  return node;
}

Node Grow(Node node) { return GrowX(GrowY(std::move(node))); }

Size MinimumSize(const Node& node, const Metrics& metrics) { return Engine(metrics).Measure(node); }

std::vector<Placement> Arrange(const Node& node, const Metrics& metrics, Rect area) {
  Engine engine(metrics);
  const Size least = engine.Measure(node);
  area.width = std::max(area.width, least.width);
  area.height = std::max(area.height, least.height);
  engine.Place(node, area);
  return engine.TakePlacements();
}

std::vector<Control*> PlacedControls(const Node& node) {
  std::vector<Control*> controls;
  Collect(node, controls);
  return controls;
}

}  // namespace ui
