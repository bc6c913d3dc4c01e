// What stands beside a control on its page, read from the layout as a person reads it: group box, row, column
// and the unit behind it. Read by the fields of the pages, and by the field tables of the help.
#pragma once

#include <string>

#include "ui/form.h"

namespace fields {

/// In the language and units that the form shows now, without mnemonic marks. Each part may be empty.
struct Caption {
  std::string frame;       // the innermost group box
  std::string row;         // "Space Temperature"; a caption of the control's own where nothing else names it
  std::string column;      // "Proportional Gain", of a heading of two lines; an own caption behind a row
  std::string unit;        // of a text box
  bool loneFrame = false;  // the only group box of its page says what the page's title says
};

/// Of any control that the layout of its form places.
Caption CaptionOf(const ui::Control& control);
/// Of a group of option buttons as a whole: the buttons' own captions are its choices.
Caption CaptionOfGroup(const ui::OptionButton& first);

/// What stands on the control itself, without the mnemonic mark; nothing on boxes and lists.
std::string OwnCaption(const ui::Control& control);

/// Row and column: "Space Temperature, Proportional Gain".
std::string NameOf(const Caption& caption);
/// The name for messages and lists, which say the page themselves. The group box stands in front of it where
/// it says more than the page and the name do: "Humidity, Setpoint", but "Bypass Time" and "Output 3, Usage".
std::string PathOf(const Caption& caption);

/// A control that shows a value which a person changes.
bool IsValue(const ui::Control& control);

}  // namespace fields
