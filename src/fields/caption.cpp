#include "fields/caption.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace fields {
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

// A value, or a button that acts on the values of its row.
bool HoldsVisibleField(const Node& node) {
  if (node.control && (IsValue(*node.control) || node.control->GetKind() == ui::Kind::kButton) &&
      node.control->Visible())
    return true;
  return std::ranges::any_of(node.children, HoldsVisibleField);
}

std::size_t Frames(const Node& node) {
  std::size_t count = node.type == Node::Type::kBox ? 1 : 0;
  for (const Node& child : node.children) count += Frames(child);
  return count;
}

void Append(std::string& text, std::string_view separator, std::string_view part) {
  if (part.empty()) return;
  if (!text.empty()) text += separator;
  text += part;
}

struct Cell {
  const Node* node;
  std::size_t row;
  std::size_t first;  // columns
  std::size_t last;
  bool heading;  // a label in a row without fields

  bool Heads(const Cell& other) const {
    return heading && row < other.row && first <= other.last && other.first <= last;
  }
};

std::vector<Cell> CellsOf(const Node& grid) {
  std::vector<Cell> cells;
  std::size_t column = 0;
  std::size_t row = 0;
  for (const Node& child : grid.children) {
    cells.push_back({&child, row, column, column + child.span - 1, false});
    column += child.span;
    if (column < grid.columns) continue;
    column = 0;
    ++row;
  }
  std::vector<bool> fields(row + 1);
  for (const Cell& cell : cells) fields[cell.row] = fields[cell.row] || HoldsVisibleField(*cell.node);
  for (Cell& cell : cells) cell.heading = IsLabel(*cell.node) && !fields[cell.row];
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

  Caption TakeCaption() { return std::move(caption_); }

 private:
  void AddToRow(const Node& label) { Append(caption_.row, ", ", Plain(label.control->Text())); }

  // A label right behind a text box is its unit, all others name what follows them.
  void ReadLine(const std::vector<Node>& items, std::size_t place) {
    std::size_t first = place;
    while (first > 0 && IsLabel(items[first - 1])) --first;
    if (first > 0 && first < place) ++first;
    for (std::size_t i = first; i < place; ++i) AddToRow(items[i]);
    if (items[place].control == &control_ && place + 1 < items.size() && IsLabel(items[place + 1]))
      caption_.unit = Plain(items[place + 1].control->Text());
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
    for (std::size_t i = first; i < end; ++i) AddToRow(*cells[i].node);
    for (const Cell& above : cells) {
      if (above.Heads(own)) Append(caption_.column, " ", Plain(above.node->control->Text()));
    }
  }

  // A label below a heading shows a value, but for the first of its row.
  static bool NamesRow(const std::vector<Cell>& cells, const Cell& cell) {
    if (!IsLabel(*cell.node) || cell.first == 0) return IsLabel(*cell.node);
    return std::ranges::none_of(cells, [&](const Cell& above) { return above.Heads(cell); });
  }

  const ui::Control& control_;
  Caption caption_;
};

Caption SurroundingsOf(const ui::Control& control) {
  const Node& layout = control.GetForm().GetLayout();
  Reader reader(control);
  reader.Read(layout);
  Caption caption = reader.TakeCaption();
  if (const ui::Frame* frame = control.GetFrame()) {
    caption.frame = Plain(frame->Text());
    caption.loneFrame = Frames(layout) == 1;
  }
  return caption;
}

bool Repeats(const std::string& name, const std::string& frame) {
  return base::Lower(name).find(base::Lower(frame)) != std::string::npos;
}

}  // namespace

bool IsValue(const ui::Control& control) {
  constexpr ui::Kind kValues[] = {ui::Kind::kTextBox, ui::Kind::kCheckBox, ui::Kind::kOptionButton,
                                  ui::Kind::kListBox};
  return std::ranges::find(kValues, control.GetKind()) != std::end(kValues);
}

std::string OwnCaption(const ui::Control& control) {
  constexpr ui::Kind kCaptioned[] = {ui::Kind::kCheckBox, ui::Kind::kOptionButton, ui::Kind::kButton};
  const bool captioned = std::ranges::find(kCaptioned, control.GetKind()) != std::end(kCaptioned);
  return captioned ? Plain(control.Text()) : std::string();
}

Caption CaptionOf(const ui::Control& control) {
  Caption caption = SurroundingsOf(control);
  Append(caption.row.empty() ? caption.row : caption.column, ", ", OwnCaption(control));
  return caption;
}

Caption CaptionOfGroup(const ui::OptionButton& first) { return SurroundingsOf(first); }

std::string NameOf(const Caption& caption) {
  std::string name = caption.row;
  Append(name, ", ", caption.column);
  return name;
}

std::string PathOf(const Caption& caption) {
  std::string name = NameOf(caption);
  if (name.empty()) return caption.frame;
  if (caption.loneFrame || Repeats(name, caption.frame)) return name;
  std::string path = caption.frame;
  Append(path, ", ", name);
  return path;
}

}  // namespace fields
