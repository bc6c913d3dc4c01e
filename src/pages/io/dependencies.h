// Which controls of other pages can be used follows from the functions that are assigned to outputs and
// inputs at this moment. Each such page decides for itself when it is asked; those whose conditions are
// simple take them from one table of groups of controls.
#pragma once

#include "shell/page.h"

namespace pages {

/// Asks all pages that follow the functions. Run after filling and after each accepted change of the outputs
/// page; the inputs page runs it too, for the conditions that look at inputs. A page that is not loaded is
/// not asked.
void CheckOutputDependencies(const shell::PageContext& context);

/// Enables the controls of one page by the table.
void EnableDependentControls(const shell::PageContext& context, const shell::ISubForm& page);

}  // namespace pages
