#include "host/device_template.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

#include "base/error.h"
#include "base/text.h"

namespace host {
namespace {

std::optional<int> WholeNumber(std::string_view text) {
  int number = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = fault == std::errc() && end == text.data() + text.size() && number >= 0;
  return whole ? std::optional(number) : std::nullopt;
}

bool MayStandInFileName(char letter) {
  return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') || letter == '-' ||
         letter == '_';
}

}  // namespace

std::pair<int, int> SplitVersion(std::string_view text) {
  const std::vector<std::string> parts = base::Split(base::Trim(text), ".");
  const auto version = WholeNumber(parts[0]);
  const auto revision = parts.size() > 1 ? WholeNumber(parts[1]) : std::nullopt;
  if (version && revision) return {*version, *revision};
  throw base::Error("\"" + std::string(text) + "\" is not a version of the form 2.7.");
}

std::string TemplateName(std::string_view programId, std::string_view version) {
  const std::string identity = base::Upper(programId);
  if (identity.empty() || !std::ranges::all_of(identity, MayStandInFileName)) {
    throw base::Error("\"" + std::string(programId) + "\" cannot be part of a file name.");
  }
  const auto [number, revision] = SplitVersion(version);
  return identity + "_" + std::to_string(number) + "_" + std::to_string(revision);
}

std::string TemplatePath(const std::string& commonFilesFolder, const std::string& name) {
  return commonFilesFolder + "\\Templates\\" + name + ".bin";
}

}  // namespace host
