// Where each function of an input or output has its place on the drawing of a unit, and its caption there.
#pragma once

#include <array>
#include <string_view>

namespace configuration::record {

enum class Place {
  kOutdoor,
  kDamper,
  kReturn,
  kMixed,
  kWater,
  kCooling,
  kHeating,
  kDehumidifier,
  kHumidifier,
  kFan,
  kFanState,
  kBypass,
  kSupply,
  kSpace,
  kContacts,
};
inline constexpr std::size_t kPlaces = 15;

/// In the order of Place; English.
inline constexpr std::array<const char*, kPlaces> kPlaceTitles = {
    "Outdoor air", "Fresh air damper", "Return air",   "Mixed air",  "Water",
    "Cooling",     "Heating",          "Dehumidifier", "Humidifier", "Fan",
    "Fan state",   "Bypass damper",    "Supply air",   "Space",      "Contacts and switches"};

struct FunctionPlace {
  std::string_view function;  // as the device names it
  Place place;
  const char* caption;  // English; need not repeat the place
};

/// The row of an input's or output's function in any case of letters; nothing for an unknown one.
const FunctionPlace* PlaceOf(std::string_view function);

/// Whether a function is none: the terminal is not assigned.
bool IsUnassigned(std::string_view function);

}  // namespace configuration::record
