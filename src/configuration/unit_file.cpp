#include "configuration/unit_file.h"

#include <algorithm>
#include <ctime>
#include <system_error>

#include "base/error.h"
#include "base/files.h"
#include "configuration/backups.h"

namespace configuration {

std::filesystem::path UnitFile::Path() const {
  return Backups(settings_.documentsFolder).Folder(kind_, unit_.networkName, unit_.deviceName) /
         (std::string("unit") + kFileEnding);
}

Sections UnitFile::Read() const {
  std::error_code ignored;
  if (settings_.documentsFolder.empty() || !std::filesystem::exists(Path(), ignored)) return {};
  const std::string text = base::ReadFile(Path(), kLargestFile);
  try {
    return configuration::Read(text, {}).sections;
  } catch (const base::WordedError&) {
    throw base::WordedError("%s1% is damaged. Correct the file or remove it.", {base::PathText(Path())});
  }
}

void UnitFile::Write(const Sections& sections) const {
  if (std::ranges::all_of(sections, [](const auto& section) { return section.second.empty(); })) {
    std::error_code ignored;  // whoever reads the list again finds that it says nothing
    std::filesystem::remove(Path(), ignored);
    return;
  }
  base::ReplaceFile(Path(), configuration::Write({HeadNow(settings_, unit_), {}, sections}));
}

void UnitFile::Keep(std::string_view section, std::vector<Line> lines) const {
  Sections sections = Read();
  sections[std::string(section)] = std::move(lines);
  Write(sections);
}

Head HeadNow(const shell::Settings& settings, const host::SessionRequest& unit) {
  Head head;
  head.toolVersion = settings.version;
  head.network = unit.networkName;
  head.device = unit.deviceName;
  head.time = UtcText(std::time(nullptr));
  head.user = settings.userName;
  return head;
}

}  // namespace configuration
