#include "host/device_template.h"

#include <algorithm>
#include <charconv>

#include "base/error.h"
#include "base/text.h"

namespace host {
namespace {

int WholeNumber(std::string_view text, std::string_view version) {
  int number = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (fault == std::errc() && end == text.data() + text.size() && number >= 0) return number;
  throw base::Error("\"" + std::string(version) + "\" is not a version of the form 2.7.");
}

bool MayStandInFileName(char letter) {
  return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') || letter == '-' ||
         letter == '_';
}

}  // namespace

std::pair<int, int> SplitVersion(std::string_view text) {
  const auto point = text.find('.');
  if (point == std::string_view::npos)
    throw base::Error("\"" + std::string(text) + "\" is not a version of the form 2.7.");
  return {WholeNumber(text.substr(0, point), text), WholeNumber(text.substr(point + 1), text)};
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
