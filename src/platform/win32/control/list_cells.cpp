#include "platform/win32/control/list_cells.h"

#include <string_view>

#include "platform/win32/system/text.h"
#include "platform/win32/window/pictures.h"

namespace win32 {
namespace {

constexpr int kTextIndent = 6;  // pixels before the text of a cell, as the native control leaves them
constexpr std::size_t kLongestCell = 259;

void DrawWhole(const NMLVCUSTOMDRAW& drawn, const std::string& cell, int indent) {
  const HWND view = drawn.nmcd.hdr.hwndFrom;
  const HDC context = drawn.nmcd.hdc;
  const WPARAM row = drawn.nmcd.dwItemSpec;
  RECT area = {LVIR_LABEL, drawn.iSubItem, 0, 0};
  SendMessageW(view, LVM_GETSUBITEMRECT, row, reinterpret_cast<LPARAM>(&area));
  const bool selected = SendMessageW(view, LVM_GETITEMSTATE, row, LVIS_SELECTED) != 0;
  const bool focused = GetFocus() == view;
  const int back = !selected ? COLOR_WINDOW : focused ? COLOR_HIGHLIGHT : COLOR_BTNFACE;
  const int front = !selected ? COLOR_WINDOWTEXT : focused ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT;
  FillRect(context, &area, GetSysColorBrush(back));
  InflateRect(&area, -indent, 0);
  SetTextColor(context, GetSysColor(front));
  SetBkMode(context, TRANSPARENT);
  const std::wstring text = Wide(cell);
  DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &area,
            DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace

void ListCells::Give(LVITEMW& item) {
  const auto& rows = list_.Rows();
  if (item.iItem < 0 || static_cast<std::size_t>(item.iItem) >= rows.size()) return;
  const ui::ListView::Row& row = rows[static_cast<std::size_t>(item.iItem)];
  const auto column = static_cast<std::size_t>(item.iSubItem);
  if (item.mask & LVIF_TEXT) {
    std::wstring& cell = lent_[next_++ % lent_.size()];
    cell = column < row.cells.size() ? Wide(row.cells[column]) : std::wstring();
    item.pszText = cell.data();
  }
  // State images: 0 none, 1 an empty check box, 2 a ticked one.
  if (item.mask & LVIF_STATE && column == 0) item.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(row.tick));
  if (item.mask & LVIF_IMAGE) item.iImage = column == 0 ? Pictures::LevelPlace(row.icon) : -1;
}

// A person types the beginning of a row; the documentation has the search begin with the row that is named.
LRESULT ListCells::Find(const NMLVFINDITEMW& wanted) const {
  const auto& rows = list_.Rows();
  if (rows.empty() || !(wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !wanted.lvfi.psz) return -1;
  const std::wstring_view typed = wanted.lvfi.psz;
  const std::size_t first = wanted.iStart < 0 ? 0 : static_cast<std::size_t>(wanted.iStart) % rows.size();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t place = (first + i) % rows.size();
    if (place < first && !(wanted.lvfi.flags & LVFI_WRAP)) return -1;
    const std::wstring text = rows[place].cells.empty() ? std::wstring() : Wide(rows[place].cells.front());
    const std::size_t length = wanted.lvfi.flags & LVFI_PARTIAL ? typed.size() : text.size();
    const std::wstring_view begin = std::wstring_view(text).substr(0, length);
    if (CompareStringOrdinal(begin.data(), static_cast<int>(begin.size()), typed.data(),
                             static_cast<int>(typed.size()), TRUE) == CSTR_EQUAL) {
      return static_cast<LRESULT>(place);
    }
  }
  return -1;
}

const std::string* ListCells::LongCell(std::size_t row, std::size_t column) const {
  const auto& rows = list_.Rows();
  if (row >= rows.size() || column == 0 || column >= rows[row].cells.size()) return nullptr;
  const std::string& cell = rows[row].cells[column];
  return cell.size() > kLongestCell ? &cell : nullptr;
}

// The native control shows of a cell only what the documentation of LVITEM names, its first 259 characters; a
// longer one is drawn here. In the first column the picture would be lost with it.
LRESULT ListCells::Draw(const NMLVCUSTOMDRAW& drawn, const FontMetrics& metrics) const {
  switch (drawn.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
    case CDDS_ITEMPREPAINT:
      return CDRF_NOTIFYSUBITEMDRAW;  // CDRF_NOTIFYITEMDRAW is the same number
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
      break;
    default:
      return CDRF_DODEFAULT;
  }
  const std::string* cell = LongCell(drawn.nmcd.dwItemSpec, static_cast<std::size_t>(drawn.iSubItem));
  if (!cell) return CDRF_DODEFAULT;
  DrawWhole(drawn, *cell, metrics.Scale(kTextIndent));
  return CDRF_SKIPDEFAULT;
}

}  // namespace win32
