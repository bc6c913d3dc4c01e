// The rules between the seven output functions. Each rule is one function; a table says which rules run for a
// new function and in which order. The rules know nothing of the page: they see the functions of all outputs
// and the change asked for.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/strings.h"

namespace pages {

inline constexpr std::size_t kOutputCount = 7;

/// Functions of outputs 1 to 7 (entries 0 to 6) in upper case.
using OutputFunctions = std::array<std::string, kOutputCount>;

/// Output `index` (0 to 6) is to change from `previous` to `next`; its own entry of `functions` does not
/// count.
struct OutputChange {
  const OutputFunctions& functions;
  std::size_t index;
  std::string previous;
  std::string next;

  /// True when another output holds the function.
  bool OthersHold(std::string_view function) const;
};

/// Why a change is refused. Each piece is a text of the string table by itself, or the name of a function;
/// the arguments go into the placeholders.
struct Refusal {
  std::vector<std::string> pieces;
  std::vector<std::string> arguments = {};

  std::string InWords(const shell::Strings& strings) const;
};

/// The first rule that refuses, in the order for the new function; nothing when all rules pass.
std::optional<Refusal> CheckAssignment(const OutputChange& change);

/// An open or close function whose partner no output holds, and what is to be said of it, in English.
struct Unpaired {
  std::size_t output;  // counted from 0
  std::string_view line;
};
/// In the order of the outputs; empty when all pairs are complete.
std::vector<Unpaired> UnpairedFunctions(const OutputFunctions& functions);

}  // namespace pages
