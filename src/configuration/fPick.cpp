#include "configuration/fPick.h"

namespace configuration {

fPick::fPick(const shell::Platform& platform, const shell::Settings& settings, const shell::Strings& strings)
    : Dialog("fPick", platform, settings), strings_(strings) {
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
  lvwRows.onOpen = [this] { cmdOK.Click(); };
  lvwRows.onSelection = [this] { cmdOK.SetEnabled(!lvwRows.Selection().empty()); };
  cmdOK.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
  SetLayout(ui::Stack({
      ui::Item(lblText),
      ui::Grow(ui::Item(lvwRows)),
      ui::GrowX(ui::Line({ui::GrowX(ui::Empty()), ui::Item(cmdOK), ui::Item(cmdCancel)})),
  }));
}

std::optional<std::size_t> fPick::Ask(const Table& table) {
  SetTitle(table.title);
  lblText.SetText(table.text);
  lvwRows.SetColumns(table.columns);
  std::vector<ui::ListView::Row> rows;
  for (const auto& cells : table.rows) rows.push_back({std::to_string(rows.size()), cells});
  lvwRows.SetRows(std::move(rows));
  if (!table.rows.empty()) lvwRows.SetSelection({0});
  lvwRows.FitColumns();
  cmdOK.SetText(table.button);
  cmdOK.SetEnabled(!table.rows.empty());
  cmdCancel.SetText(strings_.GetStrings("Cancel"));
  if (!Run(lvwRows) || lvwRows.Selection().empty()) return std::nullopt;
  return lvwRows.Selection().front();
}

}  // namespace configuration
