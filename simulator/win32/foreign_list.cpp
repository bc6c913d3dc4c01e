#include "simulator/win32/foreign_list.h"

#include <commctrl.h>

#include <array>

#include "base/error.h"
#include "platform/win32/system/text.h"
#include "simulator/win32/foreign.h"

namespace simhost {
namespace {

constexpr std::size_t kMemory = 8192;
constexpr std::size_t kTextPlace = 1024;  // the structure stands before it
constexpr int kMaxText = 2048;            // characters of a cell that are read

std::string_view TrimEnd(std::string_view text) {
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

}  // namespace

ForeignList::ForeignList(HWND list) : list_(list) {
  if (ClassOf(list) != WC_LISTVIEWW) throw base::Error("\"" + NameOf(list) + "\" is not a list of rows");
  DWORD id = 0;
  GetWindowThreadProcessId(list, &id);
  process_ = win32::Handle(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
  if (process_) memory_ = VirtualAllocEx(process_.Get(), nullptr, kMemory, MEM_COMMIT, PAGE_READWRITE);
  if (!memory_) throw base::Error("the process of \"" + NameOf(list) + "\" cannot be read");
}

ForeignList::~ForeignList() { VirtualFreeEx(process_.Get(), memory_, 0, MEM_RELEASE); }

int ForeignList::Rows() const { return static_cast<int>(Ask(list_, LVM_GETITEMCOUNT)); }

int ForeignList::Columns() const {
  const auto header = reinterpret_cast<HWND>(Ask(list_, LVM_GETHEADER));
  return header ? static_cast<int>(Ask(header, HDM_GETITEMCOUNT)) : 1;
}

std::string ForeignList::Cell(int row, int column) const {
  LVITEMW item{};
  item.iSubItem = column;
  item.cchTextMax = kMaxText;
  auto* text = static_cast<char*>(memory_) + kTextPlace;
  item.pszText = reinterpret_cast<wchar_t*>(text);
  WriteProcessMemory(process_.Get(), memory_, &item, sizeof item, nullptr);
  const LRESULT length =
      Ask(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(memory_));
  std::array<wchar_t, kMaxText> content{};
  ReadProcessMemory(process_.Get(), text, content.data(), sizeof content, nullptr);
  return win32::Utf8({content.data(), static_cast<std::size_t>(length)});
}

bool ForeignList::Selected(int row) const {
  return (Ask(list_, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) & LVIS_SELECTED) != 0;
}

template <class Matches>
int ForeignList::FindCell(Matches matches) const {
  const int rows = Rows();
  const int columns = Columns();
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      if (matches(Cell(row, column))) return row;
    }
  }
  return -1;
}

int ForeignList::FindRow(std::string_view text) const {
  // A page in the list of pages may have a count behind its name.
  return FindCell([&](const std::string& cell) {
    return TrimEnd(cell) == TrimEnd(text) || cell.starts_with(std::string(TrimEnd(text)) + " (");
  });
}

int ForeignList::FindRowContaining(std::string_view text) const {
  return FindCell([&](const std::string& cell) { return cell.find(text) != cell.npos; });
}

POINT ForeignList::PointOn(int row) const {
  Ask(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  RECT area{};
  area.left = LVIR_LABEL;
  WriteProcessMemory(process_.Get(), memory_, &area, sizeof area, nullptr);
  Ask(list_, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(memory_));
  ReadProcessMemory(process_.Get(), memory_, &area, sizeof area, nullptr);
  return {area.left + 5, (area.top + area.bottom) / 2};
}

}  // namespace simhost
