#include "advice/advice.h"

#include <algorithm>

#include "advice/rules.h"

namespace advice {
namespace {

std::string Shown(const Value& value, const shell::Strings& strings) {
  const std::string word = value.word.empty() ? std::string() : strings.GetStrings(value.word);
  return value.shown + (value.shown.empty() || word.empty() ? "" : " ") + word;
}

}  // namespace

std::vector<Advice> Evaluate(const Input& input) {
  const Unit unit(input);
  std::vector<Advice> found;
  for (const auto table : kTables) {
    for (const Check& check : table()) {
      Report report(unit, check.rule, found);
      check.find(unit, report);
    }
  }
  std::ranges::stable_sort(found, {}, [](const Advice& advice) { return advice.rule->severity; });
  return found;
}

std::string TextOf(const Advice& advice, const shell::Strings& strings) {
  std::vector<std::string> values;
  for (const Value& value : advice.values) values.push_back(Shown(value, strings));
  return strings.GetStrings(advice.rule->text, values);
}

}  // namespace advice
