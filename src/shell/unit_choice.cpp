#include "shell/unit_choice.h"

namespace shell {
namespace {

constexpr const char* kKey = "SOFTWARE\\LonWorks\\Plugins";
constexpr const char* kName = "Measure";

}  // namespace

bool ReadUnitChoice(base::Registry& registry, base::Locale& locale, const base::Numbers& numbers,
                    bool present) {
  const std::string text = base::ReadRegistryString(registry, base::RegistryRoot::kCurrentUser, kKey, kName);
  if (text.empty()) return locale.GetLocaleString(base::kLocaleMeasure) != "0";
  const auto number = numbers.Parse(text);
  if (number == 0.0) return false;
  if (number == 1.0) return true;
  return present;
}

void StoreUnitChoice(base::Registry& registry, bool isImperial) {
  base::WriteRegistryString(registry, base::RegistryRoot::kCurrentUser, kKey, kName, isImperial ? "1" : "0");
}

}  // namespace shell
