// A list view of another process, read through memory that is borrowed in that process. Used by the script
// commands.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "platform/win32/system/handle.h"

namespace simhost {

class ForeignList {
 public:
  /// Throws base::Error when `list` is no list view or its process cannot be opened.
  explicit ForeignList(HWND list);
  ~ForeignList();

  int Rows() const;
  int Columns() const;
  std::string Cell(int row, int column) const;
  bool Selected(int row) const;
  /// Place of the first row with a cell that equals `text`, blanks at its end aside, or -1.
  int FindRow(std::string_view text) const;
  /// Place of the first row with a cell that contains `text`, or -1.
  int FindRowContaining(std::string_view text) const;
  /// Scrolls the row into view and gives a point of its first cell, in client coordinates.
  POINT PointOn(int row) const;

 private:
  template <class Matches>
  int FindCell(Matches matches) const;

  HWND list_;
  win32::Handle process_;
  void* memory_ = nullptr;
};

}  // namespace simhost
