#include "pages/io/assignment_rules.h"

#include <algorithm>
#include <span>

#include "host/output_functions.h"

namespace pages {
namespace {

using host::kUnassigned, host::StageOf;

using Result = std::optional<Refusal>;
using Rule = Result (*)(const OutputChange&);

constexpr int kHighestStage = 4;

Result SameFunctionTwice(const OutputChange& change) {
  if (change.next == kUnassigned || !change.OthersHold(change.next)) return {};
  return Refusal{{"This output is already selected, please select another one."}};
}

Result StageOrder(const OutputChange& change) {
  const auto stage = StageOf(change.next);
  if (!stage || stage->number == 1) return {};
  const std::string before = stage->Name(stage->number - 1);
  if (change.OthersHold(before)) return {};
  return Refusal{{"You have to select the ", before, " before selecting ", change.next}};
}

Result StageRemoval(const OutputChange& change) {
  const auto stage = StageOf(change.previous);
  if (!stage) return {};
  for (int higher = stage->number + 1; higher <= kHighestStage; ++higher) {
    if (!change.OthersHold(stage->Name(higher))) continue;
    return Refusal{
        {"You still have ", stage->Name(higher), " selected, ", change.previous, " must remain selected."}};
  }
  return {};
}

Result ReversingValveNeedsCooling(const OutputChange& change) {
  if (change.OthersHold("COOLING_1")) return {};
  return Refusal{{"You have to select %s1% before selecting %s2%"}, {"COOLING", "REVERSING_VALVE"}};
}

Result CoolingKeptForReversingValve(const OutputChange& change) {
  if (change.previous != "COOLING_1" || !change.OthersHold("REVERSING_VALVE")) return {};
  // The valve is named twice on purpose.
  return Refusal{{"You have %s1% selected you need to select at least one %s2% before selecting %s3%"},
                 {"REVERSING_VALVE", "COOLING", "REVERSING_VALVE"}};
}

Result ModulatingDamperExcludesOpenClose(const OutputChange& change) {
  if (!change.OthersHold("FRESH_AIR_DAMPER_OPEN") && !change.OthersHold("FRESH_AIR_DAMPER_CLOSE")) return {};
  return Refusal{{"You already select %s1% or %s2%, %s3% cannot be selected."},
                 {"FRESH_AIR_DAMPER_OPEN", "FRESH_AIR_DAMPER_CLOSE", "FRESH_AIR_DAMPER_MOD"}};
}

Result OpenCloseDamperExcludesModulating(const OutputChange& change) {
  if (!change.OthersHold("FRESH_AIR_DAMPER_MOD")) return {};
  return Refusal{{"You already select %s1%, %s2% or %s3% cannot be selected."},
                 {"FRESH_AIR_DAMPER_MOD", "FRESH_AIR_DAMPER_OPEN", "FRESH_AIR_DAMPER_CLOSE"}};
}

// What is checked, in order, when an output gets a function. The rules for removal guard the function that
// the output gives up, whatever replaces it.
constexpr Rule kStage[] = {StageOrder, StageRemoval, SameFunctionTwice, CoolingKeptForReversingValve};
constexpr Rule kFirstCooling[] = {StageOrder, StageRemoval, SameFunctionTwice};
constexpr Rule kReversingValve[] = {SameFunctionTwice, StageRemoval, ReversingValveNeedsCooling};
constexpr Rule kModulatingDamper[] = {SameFunctionTwice, StageRemoval, CoolingKeptForReversingValve,
                                      ModulatingDamperExcludesOpenClose};
constexpr Rule kOpenCloseDamper[] = {SameFunctionTwice, StageRemoval, CoolingKeptForReversingValve,
                                     OpenCloseDamperExcludesModulating};
constexpr Rule kRemoval[] = {StageRemoval, CoolingKeptForReversingValve};
constexpr Rule kOrdinary[] = {SameFunctionTwice, StageRemoval, CoolingKeptForReversingValve};

constexpr struct {
  std::string_view function;
  std::span<const Rule> rules;
} kSpecialRules[] = {
    {"COOLING_1", kFirstCooling},
    {"REVERSING_VALVE", kReversingValve},
    {"FRESH_AIR_DAMPER_MOD", kModulatingDamper},
    {"FRESH_AIR_DAMPER_OPEN", kOpenCloseDamper},
    {"FRESH_AIR_DAMPER_CLOSE", kOpenCloseDamper},
    {kUnassigned, kRemoval},
};

std::span<const Rule> RulesFor(std::string_view function) {
  for (const auto& [special, rules] : kSpecialRules) {
    if (special == function) return rules;
  }
  return StageOf(function) ? std::span<const Rule>(kStage) : kOrdinary;
}

struct Pair {
  std::string_view open;
  std::string_view close;
};
constexpr Pair kPairs[] = {
    {"HEAT_VALVE_OPEN", "HEAT_VALVE_CLOSE"},
    {"COOL_VALVE_OPEN", "COOL_VALVE_CLOSE"},
    {"HEAT_COOL_VALVE_OPEN", "HEAT_COOL_VALVE_CLOSE"},
    {"FRESH_AIR_DAMPER_OPEN", "FRESH_AIR_DAMPER_CLOSE"},
};

}  // namespace

bool OutputChange::OthersHold(std::string_view function) const {
  for (std::size_t i = 0; i < functions.size(); ++i) {
    if (i != index && functions[i] == function) return true;
  }
  return false;
}

std::string Refusal::InWords(const shell::Strings& strings) const {
  std::string text;
  for (const std::string& piece : pieces) text += strings.FormatStrings(piece, arguments);
  return text;
}

Result CheckAssignment(const OutputChange& change) {
  for (const Rule rule : RulesFor(change.next)) {
    if (auto refusal = rule(change)) return refusal;
  }
  return {};
}

std::vector<Unpaired> UnpairedFunctions(const OutputFunctions& functions) {
  const auto held = [&functions](std::string_view name) {
    return std::ranges::find(functions, name) != functions.end();
  };
  std::vector<Unpaired> unpaired;
  for (std::size_t i = 0; i < functions.size(); ++i) {
    for (const Pair& pair : kPairs) {
      if (functions[i] == pair.close && !held(pair.open))
        unpaired.push_back({i, "You should choose 'Open' if 'Close' was selected."});
      if (functions[i] == pair.open && !held(pair.close))
        unpaired.push_back({i, "You should choose 'Close' if 'Open' was selected."});
    }
  }
  return unpaired;
}

}  // namespace pages
