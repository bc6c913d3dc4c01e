#include "help/generator/language.h"

#include <fmt/format.h>

#include <algorithm>

namespace help {
namespace {

// clang-format off
constexpr Language kLanguages[] = {
    {"English", "en", "0x409 English (United States)", "Help", "Field", "Accepts", "Meaning",
     "{} to {}", "on or off", "one of the group", '.'},
    {"French", "fr", "0x40C French (France)", "Aide", "Champ", "Valeurs", "Signification",
     "{} à {}", "oui ou non", "un du groupe", ','},
    {"German", "de", "0x407 German (Germany)", "Hilfe", "Feld", "Werte", "Bedeutung",
     "{} bis {}", "ein oder aus", "eines der Gruppe", ','},
    {"Spanish", "es", "0xC0A Spanish (Spain)", "Ayuda", "Campo", "Valores", "Significado",
     "{} a {}", "sí o no", "uno del grupo", ','},
};
// clang-format on

}  // namespace

std::span<const Language> Languages() { return kLanguages; }

std::string RangeText(const Language& language, std::string_view lowest, std::string_view highest) {
  std::string text = fmt::format(fmt::runtime(language.range), lowest, highest);
  std::ranges::replace(text, '.', language.decimalSeparator);
  return text;
}

}  // namespace help
