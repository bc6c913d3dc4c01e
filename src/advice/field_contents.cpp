#include "advice/field_contents.h"

namespace advice {
namespace {

constexpr std::string_view kInputsPage = "fHardwareInput", kSensorType = "UCPTsensorType(";

std::string Key(std::string_view page, std::string_view control) {
  return std::string(page).append(1, '.').append(control);
}

}  // namespace

FieldContents::FieldContents(const std::vector<const fields::Field*>& fields,
                             const shell::SelectedTypes& selections)
    : selections_(selections) {
  for (const fields::Field* field : fields) fields_.emplace(Key(field->page, field->name), field);
}

std::optional<std::string> FieldContents::operator()(std::string_view page, std::string_view control) const {
  const auto found = fields_.find(Key(page, control));
  const fields::Field* field = found == fields_.end() ? nullptr : found->second;
  const bool sensor = page == kInputsPage && control.starts_with(kSensorType);
  // A type that was taken and is not saved goes before what the page has read.
  if (sensor && !(field && field->content() != field->held())) return SensorType(control);
  return field ? std::optional(field->content()) : std::nullopt;
}

std::optional<std::string> FieldContents::SensorType(std::string_view control) const {
  const auto input = static_cast<std::size_t>(control[kSensorType.size()] - '0');
  const std::string& type = selections_.GetSensorType(input);
  return type.empty() ? std::nullopt : std::optional(type);
}

}  // namespace advice
