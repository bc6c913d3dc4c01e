// The units of a network as a whole: File > Copy to units. Stands beside the main window that owns it, and
// takes the values of the unit in view from the desk.
#pragma once

#include <vector>

#include "fleet/fCopy.h"

namespace fleet {

class Fleet final : public shell::Companion {
 public:
  Fleet(shell::fMain& main, configuration::Desk& desk, const shell::Platform& platform,
        const shell::Settings& settings, const shell::Strings& strings)
      : desk_(desk), strings_(strings), copy_(main, desk, platform, settings, strings) {}

  std::vector<ui::MenuItem> FileMenu() override {
    return {{strings_.GetStrings("Cop&y to units..."),
             [this] { desk_.Do("CopyToUnits", [this] { copy_.ShowUnits(); }); },
             {}}};
  }
  void InitStrings() override { copy_.InitStrings(); }
  void Hide() override { copy_.Hide(); }

  fCopy& CopyWindow() { return copy_; }

 private:
  configuration::Desk& desk_;
  const shell::Strings& strings_;
  fCopy copy_;
};

}  // namespace fleet
