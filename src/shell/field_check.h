// The one numeric check behind every text box of the pages, so that all of them answer a wrong entry in the
// same words. Ranges and rules between fields stay with the pages and the host.
#pragma once

#include <string_view>

#include "shell/settings.h"
#include "ui/prompts.h"

namespace shell {

/// Yes for a number in the user's notation; what the program fills in may also be as a host with points wrote
/// it. Otherwise tells the user in a message box and answers no; the caller then puts the focus back into the
/// box.
bool IsValidNumber(ui::Prompts& prompts, const Settings& settings, std::string_view text);

}  // namespace shell
