#include "simulator/controls/section.h"

namespace controls {
namespace {

constexpr int kBoxColumns = 7;

std::string Numbered(const char* name, std::size_t number) {
  return std::string(name) + "(" + std::to_string(number) + ")";
}

}  // namespace

Section::Section(const SectionPlan& plan) : Form(plan.formName), plan_(plan) {
  frame_.SetText(plan.caption);
  std::vector<ui::Node> parts;
  if (!plan_.rows.empty()) parts.push_back(plan_.choices.empty() ? BoxGrid() : ChoiceLine());
  if (!plan_.note.empty()) parts.push_back(ui::Item(AddLabel(plan_.note)));
  SetLayout(ui::Box(frame_, ui::Stack(std::move(parts))));
}

ui::Label& Section::AddLabel(const std::string& text) {
  labels_.push_back(std::make_unique<ui::Label>(*this, Numbered("lbl", labels_.size())));
  labels_.back()->SetText(text);
  return *labels_.back();
}

ui::Node Section::BoxGrid() {
  std::vector<ui::TextBox*> boxes;
  for (std::size_t i = 0; i < plan_.rows.size() * plan_.columns.size(); ++i) {
    boxes_.push_back(std::make_unique<ui::TextBox>(*this, Numbered("txt", i)));
    boxes_.back()->SetColumns(kBoxColumns);
    boxes.push_back(boxes_.back().get());
  }
  binding_ = std::make_unique<BoundFields>(std::move(boxes));
  std::vector<ui::Node> blocks;
  const std::size_t count = plan_.rows.size() / plan_.blocks;
  for (std::size_t block = 0; block < plan_.blocks; ++block) {
    if (block > 0) blocks.push_back(ui::Empty());  // a wider gap than between the columns of a block
    blocks.push_back(BlockOf(block * count, count));
  }
  const std::size_t columns = blocks.size();
  return ui::Grid(columns, std::move(blocks));
}

ui::Node Section::BlockOf(std::size_t first, std::size_t count) {
  std::vector<ui::Node> cells;
  if (!plan_.columns.front().title.empty()) {
    cells.push_back(ui::Empty());
    for (const auto& column : plan_.columns) cells.push_back(ui::Item(AddLabel(column.title)));
  }
  for (std::size_t row = first; row < first + count; ++row) {
    cells.push_back(ui::Item(AddLabel(plan_.rows[row])));
    for (std::size_t column = 0; column < plan_.columns.size(); ++column) {
      ui::Label& unit = AddLabel(plan_.columns[column].unit);
      if (plan_.columns[column].unit.empty()) openUnits_.push_back(&unit);
      cells.push_back(ui::Line({ui::Item(*boxes_[column * plan_.rows.size() + row]), ui::Item(unit)}));
    }
  }
  return ui::Grid(1 + plan_.columns.size(), std::move(cells));
}

ui::Node Section::ChoiceLine() {
  list_ = std::make_unique<ui::ListBox>(*this, "lst");
  auto binding = std::make_unique<BoundChoice>(*list_);
  binding->SetChoices(plan_.choices);
  binding_ = std::move(binding);
  return ui::Grid(2, {ui::Item(AddLabel(plan_.rows.front())), ui::Item(*list_)});
}

void Section::Attach(const automation::Object& lonMarkObject) {
  if (binding_) binding_->Attach(PropertyOf(lonMarkObject, plan_.property), "Value", plan_.format);
}

void Section::SetUnit(const std::string& unit) {
  for (ui::Label* label : openUnits_) label->SetText(unit);
}

}  // namespace controls
