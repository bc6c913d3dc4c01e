// List views: a table whose rows stay in the description; the native control asks for what it shows, so that
// a row is added without touching the others.
#include <algorithm>
#include <array>

#include "platform/win32/control_kinds.h"
#include "platform/win32/form_native.h"
#include "platform/win32/menu_native.h"
#include "platform/win32/utf.h"
#include "platform/win32/window_native.h"

namespace win32 {
namespace {

constexpr int kCellPadding = 16;   // pixels at 96 dots per inch beside a cell's text
constexpr int kListFrame = 28;     // pixels of a list's border and scroll bar
constexpr int kTableWidth = 420;   // dialog units of a list of several columns
constexpr int kTableHeight = 110;  // dialog units
constexpr int kLeastWidth = 60;
constexpr int kMostWidth = 160;
constexpr int kColumnWidth = 70;

class NativeListView : public NativeControl {
 public:
  using NativeControl::NativeControl;

  ui::Size Measure() const override;
  bool Place(const ui::Rect& rect) override;
  void Mirror(ui::Aspect aspect) override;
  LRESULT Notify(NMHDR& header) override;
  void ContextMenu(std::optional<POINT> place) override;

 private:
  ui::ListView& List() const { return static_cast<ui::ListView&>(Control()); }
  Style GetStyle() const override;
  void Created() override;
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(Window(), message, wParam, lParam);
  }

  void MirrorColumns();
  void MirrorRows();
  void MirrorSelection();
  void FitColumns();
  void ScrollToEnd();
  int ColumnWidth(std::size_t column) const;
  bool HasPictures() const;
  void FillWidth();
  std::vector<std::size_t> NativeSelection() const;
  void GiveCell(LVITEMW& item) const;
  void QueueSelection();
  void TakeSelection();

  std::vector<std::string> shownColumns_;
  int shownGeneration_ = 0;
  int fits_ = 0;
  int scrolls_ = 0;
  bool mirroring_ = false;
  bool selectionQueued_ = false;
  mutable std::array<std::wstring, 4> cells_;  // lent to the native control, which may ask for more meanwhile
  mutable std::size_t nextCell_ = 0;
};

NativeControl::Style NativeListView::GetStyle() const {
  const DWORD single = List().MultiSelect() ? 0 : LVS_SINGLESEL;
  return {WC_LISTVIEWW,
          LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | WS_TABSTOP | single,
          WS_EX_CLIENTEDGE};
}

void NativeListView::Created() {
  const DWORD look = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, look, static_cast<LPARAM>(look));
}

ui::Size NativeListView::Measure() const {
  const int height = Metrics().Y(kTableHeight);
  if (List().Columns().size() > 1) return {Metrics().X(kTableWidth), height};
  const int wanted = ColumnWidth(0) + Metrics().Scale(kListFrame);
  return {std::clamp(wanted, Metrics().X(kLeastWidth), Metrics().X(kMostWidth)), height};
}

bool NativeListView::Place(const ui::Rect& rect) {
  const bool moved = NativeControl::Place(rect);
  if (moved) FillWidth();
  return moved;
}

void NativeListView::Mirror(ui::Aspect aspect) {
  if (aspect == ui::Aspect::kContent) {
    mirroring_ = true;
    if (shownColumns_ != List().Columns()) MirrorColumns();
    MirrorRows();
    MirrorSelection();
    if (fits_ != List().Fits()) FitColumns();
    if (scrolls_ != List().Scrolls()) ScrollToEnd();
    mirroring_ = false;
  }
  if (aspect != ui::Aspect::kText) NativeControl::Mirror(aspect);
}

void NativeListView::MirrorColumns() {
  for (std::size_t i = shownColumns_.size(); i > 0; --i) Send(LVM_DELETECOLUMN, i - 1);
  shownColumns_ = List().Columns();
  for (std::size_t i = 0; i < shownColumns_.size(); ++i) {
    std::wstring title = Wide(shownColumns_[i]);
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = title.data();
    column.cx = std::max(Metrics().X(kColumnWidth), ColumnWidth(i));
    Send(LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
  FillWidth();
}

void NativeListView::MirrorRows() {
  const auto count = static_cast<LRESULT>(List().Rows().size());
  const bool replaced = shownGeneration_ != List().Generation();
  if (!replaced && Send(LVM_GETITEMCOUNT) == count) return;
  shownGeneration_ = List().Generation();
  // The icons only where a row has one: the list would leave room for them everywhere.
  const Pictures& pictures = Images();
  const HIMAGELIST wanted = HasPictures() ? pictures.Levels() : pictures.Spacer();
  if (reinterpret_cast<HIMAGELIST>(Send(LVM_GETIMAGELIST, LVSIL_SMALL)) != wanted) {
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(wanted));
  }
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), replaced ? 0 : LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
  if (replaced) InvalidateRect(Window(), nullptr, FALSE);
}

void NativeListView::MirrorSelection() {
  const std::vector<std::size_t> wanted = List().Selection();
  const std::vector<std::size_t> shown = NativeSelection();
  if (wanted == shown) return;
  LVITEMW item = {};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
  item.state = LVIS_SELECTED | LVIS_FOCUSED;
  for (const std::size_t place : wanted) Send(LVM_SETITEMSTATE, place, reinterpret_cast<LPARAM>(&item));
  if (!wanted.empty()) Send(LVM_ENSUREVISIBLE, wanted.front(), FALSE);
}

void NativeListView::FitColumns() {
  fits_ = List().Fits();
  for (std::size_t i = 0; i < shownColumns_.size(); ++i) Send(LVM_SETCOLUMNWIDTH, i, ColumnWidth(i));
  FillWidth();
  // A cell that was cut off would keep its dots.
  InvalidateRect(Window(), nullptr, TRUE);
}

void NativeListView::ScrollToEnd() {
  scrolls_ = List().Scrolls();
  if (!List().Rows().empty()) Send(LVM_ENSUREVISIBLE, List().Rows().size() - 1, FALSE);
}

int NativeListView::ColumnWidth(std::size_t column) const {
  int width = column < List().Columns().size() ? Metrics().Width(Wide(List().Columns()[column])) : 0;
  for (const ui::ListView::Row& row : List().Rows()) {
    if (column < row.cells.size()) width = std::max(width, Metrics().Width(Wide(row.cells[column])));
  }
  return width + Metrics().Scale(kCellPadding) + (column == 0 && HasPictures() ? Images().Width() : 0);
}

bool NativeListView::HasPictures() const {
  return std::ranges::any_of(List().Rows(), [](const ui::ListView::Row& row) { return row.icon != 0; });
}

// The last column takes the width that the others leave.
void NativeListView::FillWidth() {
  if (shownColumns_.empty()) return;
  RECT client = {};
  GetClientRect(Window(), &client);
  const std::size_t last = shownColumns_.size() - 1;
  int left = client.right;
  for (std::size_t i = 0; i < last; ++i) left -= static_cast<int>(Send(LVM_GETCOLUMNWIDTH, i));
  if (left >= ColumnWidth(last)) Send(LVM_SETCOLUMNWIDTH, last, left);
}

std::vector<std::size_t> NativeListView::NativeSelection() const {
  std::vector<std::size_t> places;
  for (LRESULT i = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED); i >= 0;
       i = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(i), LVNI_SELECTED)) {
    places.push_back(static_cast<std::size_t>(i));
  }
  return places;
}

LRESULT NativeListView::Notify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveCell(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      break;
    case LVN_ITEMCHANGED:
    case LVN_ODSTATECHANGED:
    case NM_CLICK:
    case NM_RCLICK:
      if (!mirroring_) QueueSelection();
      break;
    default:
      break;
  }
  return 0;
}

void NativeListView::GiveCell(LVITEMW& item) const {
  const auto& rows = List().Rows();
  if (item.iItem < 0 || static_cast<std::size_t>(item.iItem) >= rows.size()) return;
  const ui::ListView::Row& row = rows[static_cast<std::size_t>(item.iItem)];
  const auto column = static_cast<std::size_t>(item.iSubItem);
  if (item.mask & LVIF_TEXT) {
    std::wstring& cell = cells_[nextCell_++ % cells_.size()];
    cell = column < row.cells.size() ? Wide(row.cells[column]) : std::wstring();
    item.pszText = cell.data();
  }
  if (item.mask & LVIF_IMAGE) item.iImage = column == 0 ? Pictures::LevelPlace(row.icon) : -1;
}

// Not from inside the notification: the check of a text box that was just left comes first, and a selection
// of many rows tells each one.
void NativeListView::QueueSelection() {
  if (selectionQueued_) return;
  selectionQueued_ = true;
  const int refusals = Form().Top().Focus().Refusals();
  Context().loop.Post([this, refusals, weak = Form().weak_from_this()] {
    const auto form = weak.lock();
    if (!form) return;
    selectionQueued_ = false;
    if (!form->Alive()) return;
    const auto top = form->Top().shared_from_this();
    if (top->Focus().Settle() && form->Alive() && top->Focus().Refusals() == refusals) TakeSelection();
    if (form->Alive()) Mirror(ui::Aspect::kContent);
  });
}

void NativeListView::TakeSelection() {
  const std::vector<std::size_t> places = NativeSelection();
  if (places == List().Selection() || !List().Usable()) return;
  // A click beside the rows leaves a single selection as it is.
  if (places.empty() && !List().MultiSelect()) return;
  if (places.size() == 1) {
    Context().loop.Guard([&] { List().Choose(places.front()); });
  } else {
    List().SetSelection(places);
  }
}

void NativeListView::ContextMenu(std::optional<POINT> place) {
  if (List().popup.empty() || !List().Usable()) return;
  if (selectionQueued_) TakeSelection();
  POINT point = place.value_or(POINT{});
  if (!place) {
    const LRESULT focused = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    RECT row = {LVIR_LABEL, 0, 0, 0};
    if (focused >= 0) Send(LVM_GETITEMRECT, static_cast<WPARAM>(focused), reinterpret_cast<LPARAM>(&row));
    point = {row.left, row.bottom};
    ClientToScreen(Window(), &point);
  }
  const NativeMenu menu(List().popup, NativeMenu::Shape::kPopup);
  const auto form = Form().shared_from_this();
  const int id = TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, point.x, point.y, 0,
                                Form().Top().Window(), nullptr);
  const auto handler = menu.Find(id);
  if (handler && form->Alive()) Act(handler);
}

}  // namespace

std::unique_ptr<NativeControl> MakeListView(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeListView>(form, control);
}

}  // namespace win32
