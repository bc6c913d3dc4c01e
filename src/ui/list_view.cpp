#include "ui/list_view.h"

#include <algorithm>

namespace ui {

void ListView::SetColumns(std::vector<std::string> columns) {
  columns_ = std::move(columns);
  Changed(Aspect::kContent);
}

void ListView::SetRows(std::vector<Row> rows) {
  rows_ = std::move(rows);
  selection_.clear();
  ++generation_;
  Changed(Aspect::kContent);
}

void ListView::AddRow(Row row) {
  rows_.push_back(std::move(row));
  Changed(Aspect::kContent);
}

void ListView::SetCell(std::size_t row, std::size_t column, std::string_view text) {
  std::string& cell = rows_.at(row).cells.at(column);
  if (cell == text) return;
  cell = text;
  ++cellChanges_;
  Changed(Aspect::kContent);
}

void ListView::SetTick(std::size_t row, Tick tick) {
  if (std::exchange(rows_.at(row).tick, tick) == tick) return;
  ++cellChanges_;
  Changed(Aspect::kContent);
}

void ListView::SetSelection(std::vector<std::size_t> places) {
  std::erase_if(places, [this](std::size_t place) { return place >= rows_.size(); });
  std::ranges::sort(places);
  if (selection_ == places) return;
  selection_ = std::move(places);
  Changed(Aspect::kContent);
}

void ListView::FitColumns() {
  ++fits_;
  Changed(Aspect::kContent);
}

void ListView::ScrollToEnd() {
  ++scrolls_;
  Changed(Aspect::kContent);
}

bool ListView::TurnTick(std::size_t place) {
  if (!Usable() || place >= rows_.size() || rows_[place].tick == Tick::kNone) return false;
  SetTick(place, rows_[place].tick == Tick::kOn ? Tick::kOff : Tick::kOn);
  if (onTick) onTick(place);
  return true;
}

bool ListView::Choose(std::size_t place) {
  if (!Usable() || place >= rows_.size()) return false;
  SetSelection({place});
  if (onSelect) onSelect(place);
  if (onSelection) onSelection();
  return true;
}

bool ListView::ChooseRows(const std::vector<std::size_t>& places) {
  if (places.size() == 1) return Choose(places.front());
  if (!Usable()) return false;
  SetSelection(places);
  if (onSelection) onSelection();
  return true;
}

bool ListView::Open() {
  if (!Usable() || selection_.empty() || !onOpen) return false;
  onOpen();
  return true;
}

}  // namespace ui
