#include "configuration/fPick.h"

namespace configuration {

fPick::fPick(const shell::Platform& platform, const shell::Settings& settings, const shell::Strings& strings)
    : Question("fPick", platform, settings, strings) {
  lvwRows.onOpen = [this] { cmdOK.Click(); };
  lvwRows.onSelection = [this] { cmdOK.SetEnabled(!lvwRows.Selection().empty()); };
  SetLayout(ui::Stack({
      ui::Item(lblText),
      ui::Grow(ui::Item(lvwRows)),
      Buttons(),
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
  cmdCancel.SetText(Text("Cancel"));
  if (!Run(lvwRows) || lvwRows.Selection().empty()) return std::nullopt;
  return lvwRows.Selection().front();
}

}  // namespace configuration
