// The tables of rules, by what they are about. advice.cpp goes through them.
#pragma once

#include <span>

#include "advice/unit.h"

namespace advice {

std::span<const Check> OutputRules();
std::span<const Check> InputRules();
std::span<const Check> MeasurementRules();
std::span<const Check> SetpointRules();
std::span<const Check> EconomizerRules();
std::span<const Check> AlarmRules();
std::span<const Check> LoopRules();
std::span<const Check> TimingRules();
std::span<const Check> NetworkRules();

/// In the order in which they are looked at.
inline constexpr std::span<const Check> (*kTables[])() = {OutputRules,   InputRules,      MeasurementRules,
                                                          SetpointRules, EconomizerRules, AlarmRules,
                                                          LoopRules,     TimingRules,     NetworkRules};

inline constexpr const char* kPractice = "practice";

}  // namespace advice
