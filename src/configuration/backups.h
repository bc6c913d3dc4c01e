// What was stored in a unit before each save, and at each record of it, kept as files of the user: a folder
// for each network and unit, a file for each time, the newest ones of each unit. Written by the desk, listed
// for the person.
#pragma once

#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/document.h"

namespace configuration {

inline constexpr std::size_t kMostBackups = 50;  // of each unit and kind

// What is kept: the folders' names.
inline constexpr std::string_view kBackups = "Backups";
inline constexpr std::string_view kRecords = "Records";

/// A file or folder name that every file system of the platform takes, another one for each `name`; names
/// that differ by case alone are the same, as they are for units. (Microsoft, "Naming Files, Paths, and
/// Namespaces".)
std::string SafeName(std::string_view name);

class Backups {
 public:
  /// `documentsFolder` is the user's; empty when the system names none.
  explicit Backups(std::string documentsFolder) : documents_(std::move(documentsFolder)) {}

  /// Writes one more and removes the oldest. Throws base::WordedError.
  void Keep(std::string_view kind, const Document& document, std::time_t now) const;
  /// Those of a unit, the newest first.
  std::vector<std::filesystem::path> Of(std::string_view kind, std::string_view network,
                                        std::string_view device) const;
  /// Where they are. Throws base::WordedError without a folder for documents.
  std::filesystem::path Folder(std::string_view kind, std::string_view network,
                               std::string_view device) const;

 private:
  std::string documents_;
};

/// The time of a backup as a person reads it: "2026-11-22 14:05:07".
std::string TimeOf(const std::filesystem::path& backup);

/// "2026-11-22T14:05:07Z".
std::string UtcText(std::time_t time);

}  // namespace configuration
