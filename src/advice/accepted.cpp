#include "advice/accepted.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <utility>

namespace advice {
namespace {

bool Same(const Concerned& before, const Concerned& now) {
  if (before.page != now.page || before.control != now.control) return false;
  const base::Numbers point;
  const auto a = point.Parse(before.held), b = point.Parse(now.held);
  return a && b ? std::abs(*a - *b) <= now.rounding : before.held == now.held;
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
