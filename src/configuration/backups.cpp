#include "configuration/backups.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "base/error.h"
#include "base/files.h"
#include "base/text.h"

namespace configuration {
namespace {

constexpr std::size_t kLongestName = 60;  // bytes: a whole path stays below 260
constexpr std::string_view kReserved[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
constexpr std::string_view kNumbered[] = {"COM", "LPT"};
constexpr std::string_view kPlaces[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "¹", "²", "³"};

/// Names of devices, whatever follows a point.
bool IsReserved(std::string_view name) {
  const std::string word = base::Upper(base::Trim(name.substr(0, name.find('.'))));
  const bool numbered = word.size() > 3 &&
                        std::ranges::find(kNumbered, word.substr(0, 3)) != std::end(kNumbered) &&
                        std::ranges::find(kPlaces, word.substr(3)) != std::end(kPlaces);
  return numbered || std::ranges::find(kReserved, word) != std::end(kReserved);
}

bool IsUsable(char letter) {
  return static_cast<unsigned char>(letter) >= ' ' &&
         std::string_view("<>:\"/\\|?*~\x7f").find(letter) == std::string_view::npos;
}

/// FNV-1a, 32 bits.
std::string Mark(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char letter : name) hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
  char text[16];
  std::snprintf(text, sizeof text, "~%08x", static_cast<unsigned>(hash));
  return text;
}

std::string TimeText(std::time_t time, const char* format, bool utc) {
  std::tm parts = {};
#ifdef _WIN32
  utc ? gmtime_s(&parts, &time) : localtime_s(&parts, &time);
#else
  utc ? gmtime_r(&time, &parts) : localtime_r(&time, &parts);
#endif
  char text[64];
  return {text, std::strftime(text, sizeof text, format, &parts)};
}

/// A file that a person laid beside the backups is none, and stays.
bool IsBackup(const std::filesystem::path& file) {
  constexpr std::string_view kForm = "0000-00-00 00-00-00";
  const std::string stem = base::PathText(file.stem()).substr(0, kForm.size());
  return std::ranges::equal(stem, kForm, [](char letter, char form) {
    return form == '0' ? letter >= '0' && letter <= '9' : letter == form;
  });
}

}  // namespace

std::string SafeName(std::string_view name) {
  const std::string lower = base::Lower(name);
  std::string safe(name.substr(0, kLongestName));
  // Not in the middle of a letter of several bytes.
  if (safe.size() < name.size()) {
    while (!safe.empty() && (name[safe.size()] & 0xC0) == 0x80) safe.pop_back();
  }
  std::ranges::replace_if(
      safe, [](char letter) { return !IsUsable(letter); }, '_');
  safe.erase(safe.find_last_not_of(" .") + 1);
  if (IsReserved(safe)) safe.insert(0, 1, '_');
  if (safe == name && !safe.empty()) return safe;
  return safe + Mark(lower);
}

std::filesystem::path Backups::Folder(std::string_view kind, std::string_view network,
                                      std::string_view device) const {
  if (documents_.empty()) throw base::WordedError("The system names no folder for the user's documents.", {});
  return base::PathOf(documents_) / "KV-TARN" / base::PathOf(kind) / base::PathOf(SafeName(network)) /
         base::PathOf(SafeName(device));
}

void Backups::Keep(std::string_view kind, const Document& document, std::time_t now) const {
  const auto folder = Folder(kind, document.head.network, document.head.device);
  const std::string stem = TimeText(now, "%Y-%m-%d %H-%M-%S", false);
  auto file = folder / (stem + kFileEnding);
  std::error_code ignored;
  // Sorts behind the first of the same second.
  for (int i = 2; std::filesystem::exists(file, ignored); ++i)
    file = folder / (stem + (i < 10 ? "_0" : "_") + std::to_string(i) + kFileEnding);
  base::ReplaceFile(file, Write(document));
  std::vector<std::filesystem::path> kept = base::FilesIn(folder, kFileEnding);
  // The clock may have been set back: the one just written is the newest all the same.
  std::erase_if(kept, [&file](const auto& one) { return one == file || !IsBackup(one); });
  for (std::size_t i = 0; i + kMostBackups <= kept.size(); ++i) std::filesystem::remove(kept[i], ignored);
}

std::vector<std::filesystem::path> Backups::Of(std::string_view kind, std::string_view network,
                                               std::string_view device) const {
  auto files = base::FilesIn(Folder(kind, network, device), kFileEnding);
  std::ranges::reverse(files);
  return files;
}

std::string TimeOf(const std::filesystem::path& backup) {
  std::string text = base::PathText(backup.stem());
  for (const std::size_t place : {13, 16}) {
    if (text.size() > place && text[place] == '-') text[place] = ':';
  }
  return text;
}

std::string UtcText(std::time_t time) { return TimeText(time, "%Y-%m-%dT%H:%M:%SZ", true); }

}  // namespace configuration
