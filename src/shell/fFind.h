// Finding a field: what is typed is looked for in the captions of all fields and in the names that the device
// has for them; every word has to be there, accents and case do not matter. Owned by the main window, which
// goes to the field.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "shell/changes.h"
#include "shell/tool_window.h"

namespace shell {

class fFind final : public ToolWindow {
 public:
  fFind(const Platform& platform, const Settings& settings, const Strings& strings, const PageSet& pages,
        const Changes& changes);

  std::function<void(const fields::Field&)> onGoTo;

  void InitStrings();
  void ShowMe();
  /// Fields or their contents are others; harmless while the window is not visible.
  void Follow();

 private:
  struct Line {
    const fields::Field* field;
    std::string page, path, words;
  };

  void ReadFields();
  void ShowFound();
  void GoTo();

  const PageSet& pages_;
  const Changes& changes_;
  std::vector<Line> lines_;
  std::vector<const fields::Field*> found_;
  int generation_ = -1;  // of the fields that were read

  ui::Label lblFind{*this, "lblFind"};
  ui::TextBox txtFind{*this, "txtFind"};
  ui::ListView lvwFound{*this, "lvwFound"};
  ui::Button cmdGoTo{*this, "cmdGoTo"};
  ui::Button cmdClose{*this, "cmdClose"};
};

}  // namespace shell
