#include "advice/field_contents.h"

namespace advice {
namespace {

/// What the pages know of the hardware before its settings are read.
struct Known {
  std::string_view page, control;
  const std::string& (shell::SelectedTypes::*type)(std::size_t index) const;
};
constexpr Known kKnown[] = {
    {"fHardwareInput", "UCPTsensorType(", &shell::SelectedTypes::GetSensorType},
    {"fControlOutput", "UCPThardwareSignalType(", &shell::SelectedTypes::GetSignalType},
};

}  // namespace

FieldContents::FieldContents(const std::vector<const fields::Field*>& fields,
                             const shell::SelectedTypes& selections)
    : selections_(selections) {
  for (const fields::Field* field : fields) fields_.emplace(Name(field->page, field->name), field);
}

std::optional<std::string> FieldContents::operator()(std::string_view page, std::string_view control) const {
  const auto found = fields_.find(Name(page, control));
  const fields::Field* field = found == fields_.end() ? nullptr : found->second;
  auto known = HardwareType(page, control);
  // A type that was taken and is not saved goes before what the page has read.
  if (known && !(field && field->content() != field->held())) return known;
  return field ? std::optional(field->content()) : std::nullopt;
}

std::optional<std::string> FieldContents::HardwareType(std::string_view page,
                                                       std::string_view control) const {
  for (const auto& [ofPage, beginning, type] : kKnown) {
    if (page != ofPage || !control.starts_with(beginning)) continue;
    const std::string& known = (selections_.*type)(static_cast<std::size_t>(control[beginning.size()] - '0'));
    return known.empty() ? std::nullopt : std::optional(known);
  }
  return std::nullopt;
}

}  // namespace advice
