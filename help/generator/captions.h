// What stands beside a control on its page: the words that name it and the unit behind it, read from the
// layout as a person reads it: group box, row, column, own caption. Used by the field tables of the help.
#pragma once

#include <string>

#include "ui/form.h"

namespace help {

struct Caption {
  std::string frame;  // of the innermost group box; may be empty
  std::string name;   // "Space Temperature, Proportional, Gain"
  std::string unit;   // of a text box; may be empty
};

/// A control that a person acts on, other than a list of rows.
bool IsField(const ui::Control& control);

/// As the form shows it now, in its present language and units, without mnemonic marks.
Caption CaptionOf(const ui::Form& form, const ui::Control& control);

}  // namespace help
