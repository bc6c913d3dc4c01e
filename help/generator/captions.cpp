#include "help/generator/captions.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace help {
namespace {

using ui::Node;

std::string Plain(const std::string& text) {
  return std::string(base::Trim(base::ReplaceAll(text, "&", "")));
}

bool IsLabel(const Node& node) { return node.control && node.control->GetKind() == ui::Kind::kLabel; }

bool Holds(const Node& node, const ui::Control& control) {
  if (node.control == &control) return true;
  return std::ranges::any_of(node.children, [&](const Node& child) { return Holds(child, control); });
}

bool HoldsVisibleField(const Node& node) {
  if (node.control && IsField(*node.control) && node.control->Visible()) return true;
  return std::ranges::any_of(node.children, HoldsVisibleField);
}

struct Cell {
  const Node* node;
  std::size_t row;
  std::size_t first;  // columns
  std::size_t last;

  bool Over(const Cell& other) const { return row < other.row && first <= other.last && other.first <= last; }
};

std::vector<Cell> CellsOf(const Node& grid) {
  std::vector<Cell> cells;
  std::size_t column = 0;
  std::size_t row = 0;
  for (const Node& child : grid.children) {
    cells.push_back({&child, row, column, column + child.span - 1});
    column += child.span;
    if (column < grid.columns) continue;
    column = 0;
    ++row;
  }
  return cells;
}

class Reader {
 public:
  explicit Reader(const ui::Control& control) : control_(control) {}

  void Read(const Node& node) {
    for (std::size_t i = 0; i < node.children.size(); ++i) {
      if (!Holds(node.children[i], control_)) continue;
      if (node.type == Node::Type::kLine) ReadLine(node.children, i);
      if (node.type == Node::Type::kGrid) ReadGrid(node, i);
      return Read(node.children[i]);
    }
  }

  std::string Name() const {
    std::string all;
    for (const std::string& part : parts_) all += (all.empty() ? "" : ", ") + part;
    return all;
  }
  const std::string& Unit() const { return unit_; }

 private:
  void Add(const ui::Control* label) {
    const std::string text = Plain(label->Text());
    if (!text.empty()) parts_.push_back(text);
  }

  // A label right behind a text box is its unit, all others name what follows them.
  void ReadLine(const std::vector<Node>& items, std::size_t place) {
    std::size_t first = place;
    while (first > 0 && IsLabel(items[first - 1])) --first;
    if (first > 0 && first < place) ++first;
    for (std::size_t i = first; i < place; ++i) Add(items[i].control);
    if (items[place].control == &control_ && place + 1 < items.size() && IsLabel(items[place + 1]))
      unit_ = Plain(items[place + 1].control->Text());
  }

  void ReadGrid(const Node& grid, std::size_t place) {
    const std::vector<Cell> cells = CellsOf(grid);
    const Cell& own = cells[place];
    // The labels before the cell; where there is another field before it, those at the start of the row.
    std::size_t end = place;
    std::size_t first = end;
    while (first > 0 && cells[first - 1].row == own.row && NamesRow(cells, cells[first - 1])) --first;
    if (first == end) {
      while (first > 0 && cells[first - 1].row == own.row) --first;
      end = first;
      while (end < place && IsLabel(*cells[end].node)) ++end;
    }
    for (std::size_t i = first; i < end; ++i) Add(cells[i].node->control);
    for (const Cell& above : cells) {
      if (above.Over(own) && IsLabel(*above.node) && IsHeading(cells, above.row)) Add(above.node->control);
    }
  }

  // A label below a heading shows a value, but for the first of its row.
  static bool NamesRow(const std::vector<Cell>& cells, const Cell& cell) {
    if (!IsLabel(*cell.node) || cell.first == 0) return IsLabel(*cell.node);
    return std::ranges::none_of(cells, [&](const Cell& above) {
      return above.Over(cell) && IsLabel(*above.node) && IsHeading(cells, above.row);
    });
  }

  static bool IsHeading(const std::vector<Cell>& cells, std::size_t row) {
    return std::ranges::none_of(
        cells, [row](const Cell& cell) { return cell.row == row && HoldsVisibleField(*cell.node); });
  }

  const ui::Control& control_;
  std::vector<std::string> parts_;
  std::string unit_;
};

}  // namespace

bool IsField(const ui::Control& control) {
  switch (control.GetKind()) {
    case ui::Kind::kTextBox:
    case ui::Kind::kCheckBox:
    case ui::Kind::kOptionButton:
    case ui::Kind::kListBox:
    case ui::Kind::kButton:
      return true;
    default:
      return false;
  }
}

Caption CaptionOf(const ui::Form& form, const ui::Control& control) {
  Reader reader(control);
  reader.Read(form.GetLayout());
  Caption caption{"", reader.Name(), reader.Unit()};
  const ui::Frame* frame = control.GetFrame();
  if (frame) caption.frame = Plain(frame->Text());
  const bool ownText = control.GetKind() != ui::Kind::kTextBox && control.GetKind() != ui::Kind::kListBox;
  const std::string own = ownText ? Plain(control.Text()) : "";
  if (!own.empty()) caption.name += (caption.name.empty() ? "" : ", ") + own;
  return caption;
}

}  // namespace help
