// A list of rows with columns; rows may have a picture and a check box. Owned by a form, as any control.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ui/control.h"
#include "ui/menu.h"

namespace ui {

class ListView : public Control {
 public:
  enum class Tick { kNone, kOff, kOn };  // kNone: the row has no check box

  /// `icon` is a message level (64 information, 48 exclamation, 16 error) or 0 for none.
  struct Row {
    std::string key;
    std::vector<std::string> cells;
    int icon = 0;
    Tick tick = Tick::kNone;
  };

  ListView(Form& form, std::string name) : Control(form, Kind::kListView, std::move(name)) {}

  /// Runs when a person selects a row; the argument is its place.
  std::function<void(std::size_t)> onSelect;
  /// Runs when a person selects other rows.
  std::function<void()> onSelection;
  /// Runs when a person opens a row, by a double click or the Enter key.
  std::function<void()> onOpen;
  /// Runs when a person turns the check box of a row over, by a click or with the space bar.
  std::function<void(std::size_t)> onTick;
  std::vector<MenuItem> popup;

  const std::vector<std::string>& Columns() const { return columns_; }
  void SetColumns(std::vector<std::string> columns);
  const std::vector<Row>& Rows() const { return rows_; }
  void SetRows(std::vector<Row> rows);
  void AddRow(Row row);
  /// Shows another text in a cell; selection and rows stay.
  void SetCell(std::size_t row, std::size_t column, std::string_view text);

  /// Rows may have check boxes; set before the window is first shown.
  bool Ticks() const { return ticks_; }
  void SetTicks(bool ticks) { ticks_ = ticks; }
  void SetTick(std::size_t row, Tick tick);

  bool MultiSelect() const { return multiSelect_; }
  void SetMultiSelect(bool multiSelect) { multiSelect_ = multiSelect; }
  /// Places of the selected rows, ascending.
  const std::vector<std::size_t>& Selection() const { return selection_; }
  void SetSelection(std::vector<std::size_t> places);
  /// Makes every column as wide as its longest cell or title.
  void FitColumns();
  /// Brings the last row into view.
  void ScrollToEnd();
  /// Count the calls of FitColumns, ScrollToEnd, SetRows and SetCell, for the renderer.
  int Fits() const { return fits_; }
  int Scrolls() const { return scrolls_; }
  int Generation() const { return generation_; }
  int CellChanges() const { return cellChanges_; }

  /// A person's click on a check box; on one row; selecting several, or none; and opening the selected ones.
  bool TurnTick(std::size_t place);
  bool Choose(std::size_t place);
  bool ChooseRows(const std::vector<std::size_t>& places);
  bool Open();

 private:
  std::vector<std::string> columns_;
  std::vector<Row> rows_;
  std::vector<std::size_t> selection_;
  bool multiSelect_ = false;
  bool ticks_ = false;
  int fits_ = 0;
  int scrolls_ = 0;
  int generation_ = 0;
  int cellChanges_ = 0;
};

}  // namespace ui
