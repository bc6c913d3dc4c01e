// Keeps a window's place and size between runs, among the tool's own settings of the current user.
#pragma once

#include "base/registry.h"
#include "shell/settings.h"
#include "ui/form.h"

namespace shell {

/// Gives a realised window the place that was kept; without one, or with a damaged one, it stays as it is.
void RestorePlace(ui::Window& window, base::Registry& registry, const Settings& settings);

/// Keeps the place unless the window is minimised or maximised.
void KeepPlace(const ui::Window& window, base::Registry& registry, const Settings& settings);

}  // namespace shell
