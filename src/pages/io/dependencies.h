// Which controls of other pages can be used follows from the functions that are assigned to outputs and
// inputs at this moment. One table pairs groups of controls with conditions; pages that are not loaded are
// simply not asked.
#pragma once

#include "shell/page.h"

namespace pages {

/// Run after filling and after each accepted change of the outputs page; the inputs page runs it too, for the
/// conditions that look at inputs.
void CheckOutputDependencies(const shell::PageContext& context);

/// The same for one page, for its filling and whenever it comes into view.
void EnableDependentControls(const shell::PageContext& context, const shell::ISubForm& page);

}  // namespace pages
