// The icons of windows, and the small pictures of lists and buttons, made of the system's own icons in the
// size that a screen asks for. One for each density of screen that a window of the tool stood on.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <array>
#include <map>
#include <string>

#include "platform/win32/system/handle.h"

namespace win32 {

using ImageList = Owner<HIMAGELIST, Calls<ImageList_Destroy>>;
using IconHandle = Owner<HICON, Calls<DestroyIcon>>;

class Pictures {
 public:
  struct WindowIcons {
    IconHandle large;
    IconHandle small;
  };

  /// For screens of `dpi` dots per inch.
  explicit Pictures(int dpi);

  /// The icons in a file, read once; those of this program where the file has none.
  const WindowIcons& Window(const std::string& file);

  /// Icons of message levels, for list views.
  HIMAGELIST Levels() const { return levels_.Get(); }
  /// No icons, but the row height that goes with them.
  HIMAGELIST Spacer() const { return spacer_.Get(); }
  /// Place in Levels of a message level; -1 for level 0, which shows none. An unknown level is an error.
  static int LevelPlace(int level);

  /// A list of one picture for a button: 1 log, 2 error, 3 warning; null for any other number.
  HIMAGELIST Button(int picture) const;

  int Width() const { return width_; }

 private:
  int System(int metric) const { return GetSystemMetricsForDpi(metric, static_cast<UINT>(dpi_)); }

  std::map<std::string, WindowIcons> windowIcons_;  // by file
  int dpi_;
  int width_;
  int height_;
  ImageList levels_;
  ImageList spacer_;
  std::array<ImageList, 3> buttons_;
};

}  // namespace win32
