#include "shell/page.h"

#include <cstdio>

#include "logger/message_logger.h"

namespace shell {

std::string DescribeError(const std::exception& error) {
  const auto* failure = dynamic_cast<const automation::Error*>(&error);
  if (!failure) return error.what();
  char number[16];
  std::snprintf(number, sizeof number, "0x%08X", static_cast<unsigned>(failure->Code()));
  std::string text = failure->Description();
  if (text.find(number) != std::string::npos) return text;
  text += std::string(" (error ") + number;
  if (!failure->Source().empty()) text += ", " + failure->Source();
  return text + ")";
}

std::string NamedFault(std::string_view property, const std::string& description) {
  const std::string name(property);
  return description.find(name) == std::string::npos ? name + ": " + description : description;
}

void ReportError(const PageContext& context, std::string_view routine, std::string_view location,
                 const std::exception& error) {
  context.flags.errorOccurred = true;
  context.flags.writeError = true;
  context.messages.AddMessage(DescribeError(error), routine, location, logger::kError);
}

}  // namespace shell
