#include "host/device_template.h"

#include <algorithm>
#include <vector>

#include "base/error.h"
#include "base/numbers.h"
#include "base/text.h"

namespace host {
namespace {

bool MayStandInFileName(char letter) {
  return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') || letter == '-' ||
         letter == '_';
}

}  // namespace

std::pair<int, int> SplitVersion(std::string_view text) {
  const std::vector<std::string> parts = base::Split(base::Trim(text), ".");
  const int version = base::ParseWhole<int>(parts[0]).value_or(-1);
  const int revision = parts.size() > 1 ? base::ParseWhole<int>(parts[1]).value_or(-1) : -1;
  if (version >= 0 && revision >= 0) return {version, revision};
  throw base::Error("\"" + std::string(text) + "\" is not a version of the form 2.7.");
}

std::string TemplateName(std::string_view programId, std::string_view version) {
  const std::string identity = base::Upper(programId);
  if (identity.empty() || !std::ranges::all_of(identity, MayStandInFileName))
    throw base::Error("\"" + std::string(programId) + "\" cannot be part of a file name.");
  const auto [number, revision] = SplitVersion(version);
  return identity + "_" + std::to_string(number) + "_" + std::to_string(revision);
}

std::string TemplatePath(const std::string& commonFilesFolder, const std::string& name) {
  return commonFilesFolder + "\\Templates\\" + name + ".bin";
}

}  // namespace host
