#include "advice/accepted.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <utility>

#include "base/text.h"

namespace advice {
namespace {

bool Same(const Concerned& before, const Concerned& now) {
  if (before.page != now.page || before.control != now.control) return false;
  const base::Numbers point;
  const auto a = point.Parse(before.held), b = point.Parse(now.held);
  return a && b ? std::abs(*a - *b) <= now.rounding : before.held == now.held;
}

constexpr std::string_view kHolds = " = ";  // between a field and its content; no name has blanks

}  // namespace

configuration::Line ToLine(const Accepted& accepted) {
  std::vector<std::string> fields;
  for (const Concerned& field : accepted.fields)
    fields.push_back(base::Join({field.page, ".", field.control, std::string(kHolds), field.held}, ""));
  return {{"rule", accepted.rule},
          {"fields", base::Join(fields, "\n")},
          {"who", accepted.who},
          {"when", accepted.when},
          {"reason", accepted.reason}};
}

Accepted FromLine(const configuration::Line& line) {
  const auto part = [&line](std::string_view name) { return configuration::TextOf(line, name); };
  Accepted accepted{part("rule"), {}, part("who"), part("when"), part("reason")};
  for (const std::string& field : base::Split(part("fields"), "\n")) {
    const std::size_t point = std::min(field.find('.'), field.size());
    const std::size_t holds = std::min(field.find(kHolds, point), field.size());
    accepted.fields.push_back({field.substr(0, point),
                               field.substr(std::min(point + 1, holds), holds - std::min(point + 1, holds)),
                               field.substr(std::min(holds + kHolds.size(), field.size()))});
  }
  return accepted;
}

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
