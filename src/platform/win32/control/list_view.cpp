// List views: a table whose rows stay in the description; the native control asks for what it shows. What
// changes in one turn of the loop is mirrored together when the turn is done, and nothing that is done for a
// new row looks at the others: a log may get many rows at once.
#include <algorithm>
#include <utility>

#include "platform/win32/control/kinds.h"
#include "platform/win32/control/list_cells.h"
#include "platform/win32/system/text.h"
#include "platform/win32/window/form_native.h"
#include "platform/win32/window/menu_native.h"
#include "platform/win32/window/window_native.h"

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
  void FontChanged() override;
  LRESULT Notify(NMHDR& header) override;
  void ContextMenu(std::optional<POINT> place) override;

 private:
  ui::ListView& List() const { return static_cast<ui::ListView&>(Control()); }
  Style GetStyle() const override;
  void Created() override;

  void QueueMirror();
  void MirrorContent();
  void MirrorColumns();
  void MirrorRows();
  void ShowPictures();
  void MirrorSelection();
  void FitColumns();
  void ScrollToEnd();
  int ColumnWidth(std::size_t column) const;
  int Widest(std::size_t column) const;
  bool HasPictures() const;
  bool SetWidth(std::size_t column, int width);
  bool FillWidth();
  void TurnTick(int row);
  void TurnTickUnder(const POINT& place);
  std::vector<std::size_t> NativeSelection() const;
  void QueueSelection();
  void TakeSelection();

  std::vector<std::string> shownColumns_;
  int shownGeneration_ = 0;
  int cellChanges_ = 0;
  int fits_ = 0;
  int scrolls_ = 0;
  bool mirroring_ = false;
  bool mirrorQueued_ = false;
  bool selectionQueued_ = false;
  bool selectionTouched_ = false;  // not by code
  std::vector<std::size_t> shownSelection_;
  // Pixels of the longest cell of each column, among the rows measured so far.
  mutable std::vector<int> widest_;
  mutable std::size_t measuredRows_ = 0;
  mutable int measuredGeneration_ = 0;
  ListCells cells_{List()};
};

NativeControl::Style NativeListView::GetStyle() const {
  const DWORD single = List().MultiSelect() ? 0 : LVS_SINGLESEL;
  return {WC_LISTVIEWW,
          LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | WS_TABSTOP | single,
          WS_EX_CLIENTEDGE};
}

void NativeListView::Created() {
  const DWORD boxes = List().Ticks() ? LVS_EX_CHECKBOXES : 0;
  const DWORD look = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP | boxes;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, look, static_cast<LPARAM>(look));
  // A list that owns no rows asks for the check boxes, and leaves it to its owner to turn them over.
  if (boxes) Send(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK);
  MirrorContent();
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
  if (aspect == ui::Aspect::kContent) return QueueMirror();
  if (aspect != ui::Aspect::kText) NativeControl::Mirror(aspect);
}

void NativeListView::QueueMirror() {
  if (std::exchange(mirrorQueued_, true)) return;
  Context().loop.Post(Form().Later([this] {
    mirrorQueued_ = false;
    MirrorContent();
  }));
}

void NativeListView::MirrorContent() {
  mirroring_ = true;
  if (shownColumns_ != List().Columns()) MirrorColumns();
  MirrorRows();
  MirrorSelection();
  if (fits_ != List().Fits()) FitColumns();
  if (scrolls_ != List().Scrolls()) ScrollToEnd();
  mirroring_ = false;
}

void NativeListView::FontChanged() {
  widest_.clear();
  NativeControl::FontChanged();
  if (Window()) FitColumns();
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
  if (std::exchange(cellChanges_, List().CellChanges()) != List().CellChanges())
    InvalidateRect(Window(), nullptr, FALSE);
  if (!replaced && Send(LVM_GETITEMCOUNT) == count) return;
  shownGeneration_ = List().Generation();
  ShowPictures();
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), replaced ? 0 : LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
  if (!replaced) return;
  selectionTouched_ = true;
  InvalidateRect(Window(), nullptr, FALSE);
}

// The icons only where a row has one: the list would leave room for them everywhere.
void NativeListView::ShowPictures() {
  const Pictures& pictures = Images();
  const HIMAGELIST wanted = HasPictures() ? pictures.Levels() : pictures.Spacer();
  if (reinterpret_cast<HIMAGELIST>(Send(LVM_GETIMAGELIST, LVSIL_SMALL)) != wanted)
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(wanted));
}

void NativeListView::MirrorSelection() {
  if (selectionQueued_) return;  // the person's own is taken first
  const std::vector<std::size_t>& wanted = List().Selection();
  if (!std::exchange(selectionTouched_, false) && wanted == shownSelection_) return;
  shownSelection_ = wanted;
  if (wanted == NativeSelection()) return;
  LVITEMW item = {};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
  item.state = LVIS_SELECTED | LVIS_FOCUSED;
  for (const std::size_t place : wanted) Send(LVM_SETITEMSTATE, place, reinterpret_cast<LPARAM>(&item));
  if (!wanted.empty()) Send(LVM_ENSUREVISIBLE, wanted.front(), FALSE);
}

void NativeListView::FitColumns() {
  fits_ = List().Fits();
  bool changed = false;
  for (std::size_t i = 0; i + 1 < shownColumns_.size(); ++i) changed |= SetWidth(i, ColumnWidth(i));
  changed |= FillWidth();
  // A cell that was cut off would keep its dots.
  if (changed) InvalidateRect(Window(), nullptr, TRUE);
}

// Setting a width paints everything anew, also the one that the column has.
bool NativeListView::SetWidth(std::size_t column, int width) {
  if (Send(LVM_GETCOLUMNWIDTH, column) == width) return false;
  Send(LVM_SETCOLUMNWIDTH, column, width);
  return true;
}

void NativeListView::ScrollToEnd() {
  scrolls_ = List().Scrolls();
  if (!List().Rows().empty()) Send(LVM_ENSUREVISIBLE, List().Rows().size() - 1, FALSE);
}

int NativeListView::ColumnWidth(std::size_t column) const {
  const int title = column < List().Columns().size() ? Metrics().Width(Wide(List().Columns()[column])) : 0;
  const int room = column == 0 ? Metrics().Width(Wide(List().Room())) : 0;
  return std::max(title, Widest(column) + room) + Metrics().Scale(kCellPadding) +
         (column == 0 && HasPictures() ? Images().Width() : 0) +
         (column == 0 && List().Ticks() ? Images().Width() : 0);
}

int NativeListView::Widest(std::size_t column) const {
  const auto& rows = List().Rows();
  const std::size_t columns = std::max<std::size_t>(List().Columns().size(), 1);
  if (widest_.size() != columns || measuredGeneration_ != List().Generation()) {
    widest_.assign(columns, 0);
    measuredRows_ = 0;
    measuredGeneration_ = List().Generation();
  }
  for (; measuredRows_ < rows.size(); ++measuredRows_) {
    const auto& cells = rows[measuredRows_].cells;
    const auto* before = measuredRows_ > 0 ? &rows[measuredRows_ - 1].cells : nullptr;
    for (std::size_t i = 0; i < std::min(cells.size(), widest_.size()); ++i) {
      // The routine, the location and the date of messages that come together are the same.
      if (before && i < before->size() && (*before)[i] == cells[i]) continue;
      widest_[i] = std::max(widest_[i], Metrics().Width(Wide(cells[i])));
    }
  }
  return column < widest_.size() ? widest_[column] : 0;
}

bool NativeListView::HasPictures() const {
  return std::ranges::any_of(List().Rows(), [](const ui::ListView::Row& row) { return row.icon != 0; });
}

// The last column takes the width that the others leave, at least its own.
bool NativeListView::FillWidth() {
  if (shownColumns_.empty()) return false;
  const std::size_t last = shownColumns_.size() - 1;
  int left = ClientRect(Window()).right;
  for (std::size_t i = 0; i < last; ++i) left -= static_cast<int>(Send(LVM_GETCOLUMNWIDTH, i));
  return SetWidth(last, std::max(left, ColumnWidth(last)));
}

std::vector<std::size_t> NativeListView::NativeSelection() const {
  std::vector<std::size_t> places;
  const auto count = static_cast<std::size_t>(Send(LVM_GETSELECTEDCOUNT));
  for (LRESULT i = -1; places.size() < count;) {
    i = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(i), LVNI_SELECTED);
    if (i < 0) break;
    places.push_back(static_cast<std::size_t>(i));
  }
  return places;
}

LRESULT NativeListView::Notify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      cells_.Give(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case LVN_ODFINDITEMW:
      return cells_.Find(reinterpret_cast<const NMLVFINDITEMW&>(header));
    case NM_CUSTOMDRAW:
      return cells_.Draw(reinterpret_cast<const NMLVCUSTOMDRAW&>(header), Metrics());
    case LVN_ITEMACTIVATE:
      Act([this] { List().Open(); });
      return 0;
    case NM_CLICK:
      TurnTickUnder(reinterpret_cast<const NMITEMACTIVATE&>(header).ptAction);
      [[fallthrough]];
    case LVN_ITEMCHANGED:
    case LVN_ODSTATECHANGED:
    case NM_RCLICK:
      if (!mirroring_) QueueSelection();
      return 0;
    case LVN_KEYDOWN:
      if (reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_SPACE)
        TurnTick(static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED)));
      return 0;
    default:
      return 0;
  }
}

void NativeListView::TurnTick(int row) {
  if (!List().Ticks() || row < 0) return;
  Act([this, row] { List().TurnTick(static_cast<std::size_t>(row)); });
}

void NativeListView::TurnTickUnder(const POINT& place) {
  LVHITTESTINFO hit = {};
  hit.pt = place;
  Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  if (hit.flags & LVHT_ONITEMSTATEICON && !(hit.flags & LVHT_ONITEMLABEL)) TurnTick(hit.iItem);
}

// Not from inside the notification: the check of a text box that was just left comes first, and a selection
// of many rows tells each one.
void NativeListView::QueueSelection() {
  selectionTouched_ = true;
  if (std::exchange(selectionQueued_, true)) return;
  Context().loop.Post(Form().Later([this, refusals = Form().Top().Focus().Refusals()] {
    selectionQueued_ = false;
    FocusKeeper& focus = Form().Top().Focus();
    if (focus.Settle() && Form().Alive() && focus.Refusals() == refusals) TakeSelection();
    if (Form().Alive()) Mirror(ui::Aspect::kContent);
  }));
}

void NativeListView::TakeSelection() {
  const std::vector<std::size_t> places = NativeSelection();
  if (places == List().Selection() || !List().Usable()) return;
  // A click beside the rows leaves a single selection as it is.
  if (places.empty() && !List().MultiSelect()) return;
  Context().loop.Guard([&] { List().ChooseRows(places); });
}

void NativeListView::ContextMenu(std::optional<POINT> place) {
  if (List().popup.empty() || !List().Usable()) return;
  if (selectionQueued_) TakeSelection();
  const LRESULT focused = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
  RECT row = {LVIR_LABEL, 0, 0, 0};
  if (focused >= 0) Send(LVM_GETITEMRECT, static_cast<WPARAM>(focused), reinterpret_cast<LPARAM>(&row));
  if (const auto handler = Track(List().popup, place, row)) Act(handler);
}

}  // namespace

std::unique_ptr<NativeControl> MakeListView(NativeForm& form, ui::Control& control) {
  return std::make_unique<NativeListView>(form, control);
}

}  // namespace win32
