#include <array>

#include "configuration/csv.h"
#include "configuration/record_parts.h"

namespace configuration {
namespace {

using namespace record;

constexpr const char* kHeadings[] = {"Device", "Page", "Group", "Row",        "Column",
                                     "Value",  "Unit", "Used",  "Page class", "Control"};
using Cells = std::array<std::string, std::size(kHeadings)>;

Cells LineOf(const RecordInput& input, const Value& value) {
  const fields::Caption& caption = value.caption;
  return {input.snapshot.head.device,
          TitleOf(input, value.page),
          caption.frame,
          caption.row,
          caption.column,
          value.shown,
          value.kind == fields::Kind::kText ? caption.unit : std::string(),
          input.strings.GetStrings(value.used ? "Yes" : "No"),
          value.page,
          value.control};
}

}  // namespace

std::string WriteRecordCsv(const RecordInput& input) {
  Csv csv(input.numbers);
  Cells headings;
  for (std::size_t i = 0; i < headings.size(); ++i) headings[i] = input.strings.GetStrings(kHeadings[i]);
  csv.Add(headings);
  const std::string record = input.strings.GetStrings("As-left record");
  for (const auto& [fact, value] : Facts(input))
    csv.Add(Cells{input.snapshot.head.device, record, "", fact, "", value, "", "", "", ""});
  for (const Value& value : input.snapshot.values) csv.Add(LineOf(input, value));
  return csv.Text();
}

}  // namespace configuration
