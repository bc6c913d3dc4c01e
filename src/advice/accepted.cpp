#include "advice/accepted.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <utility>

namespace advice {
namespace {

// The same stored value differs by the decimals shown when it is read in other units.
constexpr double kRounding = 0.0005, kRelativeRounding = 0.0001;

bool SameContent(const std::string& before, const std::string& now) {
  const base::Numbers point;
  const auto a = point.Parse(before), b = point.Parse(now);
  if (!a || !b) return before == now;
  return std::abs(*a - *b) <= kRounding + kRelativeRounding * std::abs(*a);
}

bool Same(const Concerned& before, const Concerned& now) {
  return before.page == now.page && before.control == now.control && SameContent(before.held, now.held);
}

}  // namespace

Accepted Accept(const Advice& advice, std::string who, std::string when, std::string reason) {
  return {std::string(advice.rule->name), advice.fields, std::move(who), std::move(when), std::move(reason)};
}

bool Holds(const Accepted& accepted, const Advice& advice) {
  return accepted.rule == advice.rule->name && std::ranges::equal(accepted.fields, advice.fields, Same);
}

const Accepted* AcceptanceOf(const Advice& advice, std::span<const Accepted> accepted) {
  for (const Accepted& one : std::views::reverse(accepted)) {
    if (Holds(one, advice)) return &one;
  }
  return nullptr;
}

}  // namespace advice
