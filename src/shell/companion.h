// What rooms above the shell add to the main window: entries of its menus, windows of their own that follow
// the pages, a part in its saves. Made with the window by the composition of the program and owned by the
// window.
#pragma once

#include <string>
#include <vector>

#include "ui/menu.h"

namespace shell {

/// A line of a review before a save, in the language in use: something that looks wrong, and where.
struct Warning {
  std::string page, field, text;
};

class Companion {
 public:
  virtual ~Companion() = default;
  /// In the language in use; asked whenever the menu is built.
  virtual std::vector<ui::MenuItem> FileMenu() { return {}; }
  virtual std::vector<ui::MenuItem> ViewMenu() { return {}; }
  /// Another language is in use.
  virtual void InitStrings() {}
  /// A device was loaded; part of the command that loads it.
  virtual void Loaded() {}
  /// Everything was read again because the person wanted it; part of that command.
  virtual void Refreshed() {}
  /// Fields show something else, or are others.
  virtual void Follow() {}
  /// For the person who reviews the changes before a save. They keep nobody from saving.
  virtual std::vector<Warning> Warnings() { return {}; }
  /// Before the transaction of a save, with nothing of it written. No cancels the save; the reason has been
  /// logged.
  virtual bool SaveBegins() { return true; }
  /// Inside it, when every page has written. No cancels the save; the reason has been logged.
  virtual bool MayCommit() { return true; }
  /// The system asks whether the user's session may end. What needs the host is to be done from the loop,
  /// after this call: when the session ends, no call leaves the process any more.
  virtual void SessionMayEnd() {}
  /// The main window goes, and with it whatever this one shows.
  virtual void Hide() {}
};

}  // namespace shell
