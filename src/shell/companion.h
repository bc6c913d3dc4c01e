// What a room above the shell adds to the main window: entries of its File menu and a part in its saves. Made
// with the window by the composition of the program and owned by the window.
#pragma once

#include <vector>

#include "ui/control.h"

namespace shell {

class Companion {
 public:
  virtual ~Companion() = default;
  /// In the language in use; asked whenever the menu is built.
  virtual std::vector<ui::MenuItem> FileMenu() = 0;
  /// Another language is in use.
  virtual void InitStrings() = 0;
  /// Before the transaction of a save, with nothing of it written. No cancels the save; the reason has been
  /// logged.
  virtual bool SaveBegins() = 0;
  /// Inside it, when every page has written. No cancels the save; the reason has been logged.
  virtual bool MayCommit() = 0;
  /// The main window goes, and with it whatever this one shows.
  virtual void Hide() = 0;
};

}  // namespace shell
