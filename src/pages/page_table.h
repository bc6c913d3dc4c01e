// The pages of the tool in the order in which the main window lists them. A page is added here and nowhere
// else.
#pragma once

#include <span>

#include "shell/page.h"

namespace pages {

std::span<const shell::PageEntry> PageTable();

}  // namespace pages
