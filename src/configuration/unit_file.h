// What is kept of one unit beside its backups, in a file of the user that is replaced as a whole: what people
// have said of it, and what is still to be put back there. Made for the unit in view by whoever reads or
// writes it; the next start of the tool on this unit finds it.
#pragma once

#include <filesystem>
#include <string_view>

#include "configuration/document.h"
#include "host/session.h"
#include "shell/settings.h"

namespace configuration {

// What is kept: the folders' names.
inline constexpr std::string_view kNotes = "Notes";
inline constexpr std::string_view kOverridden = "Check-out";

class UnitFile {
 public:
  /// Both outlive it.
  UnitFile(const shell::Settings& settings, const host::SessionRequest& unit, std::string_view kind)
      : settings_(settings), unit_(unit), kind_(kind) {}

  /// Nothing where there is no file. Throws base::Error when it cannot be read or is damaged.
  Sections Read() const;
  /// Flushed to the disk when this returns; without a line there is no file. Throws base::Error.
  void Write(const Sections& sections) const;
  /// Reads the file and gives one section these lines instead of its own. Throws base::Error.
  void Keep(std::string_view section, std::vector<Line> lines) const;

  std::filesystem::path Path() const;

 private:
  const shell::Settings& settings_;
  const host::SessionRequest& unit_;
  std::string_view kind_;
};

/// The head of what is written of a unit now: by which tool, of which unit, when and by whom.
Head HeadNow(const shell::Settings& settings, const host::SessionRequest& unit);

}  // namespace configuration
