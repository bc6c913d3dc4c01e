// The units of a building: how one is made as it comes from the factory, and how one is taken away. Building
// and Device call it; the store is changed first, so that a store that refuses leaves everything as it was.
// All throw base::Error in words for the person who asked.
#pragma once

#include <string>
#include <string_view>

#include "simulator/core.h"

namespace simulator {

/// Throws when `name` is empty, too long, not to be stored, or that of a unit other than `ownKey`. Names are
/// compared without regard to case; the units that another process has added are listed first.
void CheckUnitName(Core& core, const std::string& name, std::string_view ownKey);

/// A further unit, last in the list: the template's program, version and default values. Blanks around both
/// texts are dropped; the location may be empty and is at most as long as the controller can hold.
void AddUnit(Core& core, std::string_view name, std::string_view location);

/// Takes the unit and all its values away. Refused while a session has it open.
void RemoveUnit(Core& core, std::string_view name);

/// Puts the added units of the store that are not in the list yet at its end.
void ListAddedUnits(Core& core);

}  // namespace simulator
