#include "base/error.h"

#include "base/text.h"

namespace base {
namespace {

std::string Filled(std::string_view text, const std::vector<std::string>& arguments) {
  std::string filled(text);
  for (std::size_t i = 0; i < arguments.size(); ++i)
    filled = ReplaceAll(filled, "%s" + std::to_string(i + 1) + "%", arguments[i]);
  return filled;
}

}  // namespace

WordedError::WordedError(std::string_view text, std::vector<std::string> arguments)
    : Error(Filled(text, arguments)), text_(text), arguments_(std::move(arguments)) {}

}  // namespace base
