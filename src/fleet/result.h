// What became of a copying: each unit's line in words, and the whole as a file to be handed over, HTML or
// CSV.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "fleet/copier.h"

namespace fleet {

/// "done (3 values)".
std::string StateText(const shell::Strings& strings, const UnitLine& line);

/// Whether a unit in this state did not get what it was meant to.
bool IsBad(UnitState state);

/// "3 done", "1 failed": the units that have come to an end, by state.
std::vector<std::string> CountTexts(const shell::Strings& strings, std::span<const UnitLine> lines);

struct Result {
  std::string source;  // what was copied, as the person chose it
  std::string network;
  std::string time;  // local, as the person writes it
  std::string user;
  std::span<const UnitLine> lines;
  std::span<const configuration::PageTitle> pages;  // of the values
  /// Where the records of the units are, relative to the file; empty for a unit without one.
  std::function<std::string(const UnitLine&)> record = {};
};

/// A whole HTML document that is also well-formed XML, without anything outside it but the records.
std::string WriteResult(const Result& result, const shell::Strings& strings);
/// A line for each value that was written, and one for each unit of which none was.
std::string WriteResultCsv(const Result& result, const shell::Strings& strings, const base::Numbers& numbers);

}  // namespace fleet
