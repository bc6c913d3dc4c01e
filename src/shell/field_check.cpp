#include "shell/field_check.h"

namespace shell {

bool IsValidNumber(ui::Prompts& prompts, const Settings& settings, std::string_view text) {
  if (settings.numbers.IsNumber(text)) return true;
  if (prompts.ProgramFillsIn() && base::ParseEither(settings.numbers, text)) return true;
  // Shown as it stands in every language.
  prompts.Ask({"Invalid value for this field", settings.title, ui::Buttons::kOk, ui::Icon::kInformation});
  return false;
}

}  // namespace shell
