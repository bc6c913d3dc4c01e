#include <array>

#include "base/text.h"
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
          TitleOf(input.pages, value.page),
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
  const auto said = [&](const char* what, const std::string& group, const std::string& row,
                        const std::vector<std::string>& pieces) {
    csv.Add(Cells{input.snapshot.head.device, input.strings.GetStrings(what), group, row, "",
                  base::Join(pieces, "; "), "", "", "", ""});
  };
  for (const auto& [fact, value] : Facts(input)) said("As-left record", "", fact, {value});
  for (const AdviceLine& line : input.advice.value_or(std::vector<AdviceLine>())) {
    const std::string state = input.strings.GetStrings(line.who.empty() ? "Open" : "Accepted");
    std::vector<std::string> pieces = {state};
    if (!line.who.empty()) pieces.insert(pieces.end(), {line.who, TimeOf(line.when), line.reason});
    said("Advice", SeverityOf(input, line), line.text, pieces);
  }
  for (const Line& check : input.checks) {
    said("Check-out of the outputs", OutputOf(input, check), input.strings.GetStrings(TextOf(check, "step")),
         {input.strings.GetStrings(TextOf(check, "result")), TextOf(check, "remark"), TextOf(check, "who"),
          TimeOf(TextOf(check, "when"))});
  }
  for (const Value& value : input.snapshot.values) csv.Add(LineOf(input, value));
  return csv.Text();
}

}  // namespace configuration
