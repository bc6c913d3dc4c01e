// A configuration as a document: the head says of which unit it is, the body holds each field's content. It
// is kept as JSON, one field a line in the order of the pages, so that any text tool compares two of them.
// Written for files and backups, and read from them; knows no page and no window.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace configuration {

inline constexpr const char* kFileEnding = ".kvtarn";
inline constexpr std::size_t kLargestFile = std::size_t{4} << 20;  // bytes

/// All texts are free but for those that say what they look like.
struct Head {
  std::string toolVersion;
  std::string programId;  // of the device
  std::string version;    // template version and revision of the device: "3.1"
  std::string network, device, location;
  std::string time;       // UTC: "2026-11-22T14:05:00Z"
  bool imperial = false;  // the units of the contents
  std::string user;       // the system's name of who saved it
  std::string note;

  bool operator==(const Head&) const = default;
};

/// One field, by page class and control. Caption and unit are for people and for text tools.
struct Entry {
  std::string page, control;
  std::string caption;  // English: "Space Temperature, Proportional Gain"
  std::string unit;
  std::string content;  // as fields::Field::content, numbers with a decimal point

  bool operator==(const Entry&) const = default;
};

/// Texts by their names.
using Line = std::map<std::string, std::string, std::less<>>;
/// Empty where the line has no such text.
std::string TextOf(const Line& line, std::string_view name);

// What is said of a unit beside its values: lists of lines by their names. Whoever has something to say gives
// the texts of a line their names.
using Sections = std::map<std::string, std::vector<Line>, std::less<>>;
inline constexpr const char* kAccepted = "accepted";    // advice that somebody takes as it is
inline constexpr const char* kCheckOut = "checkout";    // outputs that somebody has seen move, or not
inline constexpr const char* kOverrides = "overrides";  // what overridden outputs are to go back to

struct Document {
  Head head;
  std::vector<Entry> entries;
  Sections sections = {};

  const Entry* Find(std::string_view page, std::string_view control) const;
  bool operator==(const Document&) const = default;
};

std::string Write(const Document& document);

/// Throws base::WordedError, with the line, when the text is no complete configuration, of a newer format,
/// for another program id than `programId` (empty: any), names a field twice or holds something of the wrong
/// kind. Sections of other names are left unread.
Document Read(std::string_view text, std::string_view programId);

}  // namespace configuration
