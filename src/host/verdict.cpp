#include "host/verdict.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/text.h"
#include "host/property.h"

namespace host {
namespace {

int Decimals(std::string_view number) {
  const auto point = number.find_first_of(".,");
  if (point == std::string_view::npos) return 0;
  return static_cast<int>(number.size() - point - 1);
}

std::string WithoutTrailingZeros(const base::Numbers& numbers, const std::string& text) {
  if (!base::ParseEither(numbers, text) || Decimals(text) == 0 ||
      text.find_first_of("eE") != std::string::npos)
    return text;
  const auto end = text.find_last_not_of('0') + 1;
  return text.substr(0, text[end - 1] == '.' || text[end - 1] == ',' ? end - 1 : end);
}

/// One changed field: what stood there, what was written and what the device holds now.
struct Change {
  const Written* entry;
  std::string control;
  std::string before, written, held;
};

bool SameText(const std::string& a, const std::string& b, bool exactly) {
  return exactly ? a == b : base::EqualsNoCase(a, b);
}

/// Whether `held` is `target` rather than `other`.
bool IsNear(const base::Numbers& numbers, const std::string& held, const std::string& target,
            const std::string& other) {
  const auto a = base::ParseEither(numbers, held), b = base::ParseEither(numbers, target),
             c = base::ParseEither(numbers, other);
  if (a && b && c) return std::abs(*a - *b) <= std::abs(*b - *c) / 4;
  return SameText(held, target, base::EqualsNoCase(target, other));
}

/// False for a change that is finer than what the host shows: it cannot be told from none.
bool CanBeTold(const base::Numbers& numbers, const Change& change) {
  const auto before = base::ParseEither(numbers, change.before),
             written = base::ParseEither(numbers, change.written);
  if (!before || !written) return change.before != change.written;
  return std::abs(*before - *written) >= std::pow(10.0, -Decimals(change.before)) / 2;
}

bool HoldsOtherwise(const base::Numbers& numbers, const Change& change) {
  const auto held = base::ParseEither(numbers, change.held),
             written = base::ParseEither(numbers, change.written);
  if (!held || !written)
    return !SameText(change.held, change.written, base::EqualsNoCase(change.before, change.written));
  const int shown = change.entry->shown == kHostPrecision ? Decimals(change.held) : change.entry->shown;
  const int decimals = std::min(Decimals(change.held), std::max(shown, Decimals(change.written)));
  return std::abs(*held - *written) > std::pow(10.0, -decimals) / 2;
}

/// Reads every property again of which a field was changed.
std::vector<Change> ReadChanges(Journal& journal, bool bind) {
  std::vector<Change> changes;
  for (std::size_t i = 0; i < journal.Entries().size(); ++i) {
    const Written& entry = journal.Entries()[i];
    const std::vector<ChangedField> fields = ChangedFields(entry);
    if (fields.empty()) continue;
    const std::string text = entry.read(bind);
    journal.NoteHeld(i, text);
    for (const ChangedField& field : fields)
      changes.push_back({&entry, field.control, field.before, field.written, FieldOf(field, text)});
  }
  return changes;
}

/// Whether two texts that were read in one format at different times are the same value.
bool SameValue(const base::Numbers& numbers, const std::string& a, const std::string& b) {
  const auto first = base::ParseEither(numbers, a), second = base::ParseEither(numbers, b);
  return first && second ? first == second : base::EqualsNoCase(a, b);
}

Difference DifferenceOf(const base::Numbers& numbers, const Change& change) {
  const auto plain = [&numbers](const std::string& text) { return WithoutTrailingZeros(numbers, text); };
  return {change.entry->Name(), change.control, plain(change.before), plain(change.written),
          plain(change.held)};
}

}  // namespace

Verdict JudgeLostCommit(Journal& journal) {
  const base::Numbers& numbers = journal.Numbers();
  int taken = 0, left = 0, third = 0;
  std::vector<Difference> differences;
  for (const Change& change : ReadChanges(journal, true)) {
    if (!CanBeTold(numbers, change)) continue;
    if (IsNear(numbers, change.held, change.written, change.before)) {
      ++taken;
      continue;
    }
    ++(IsNear(numbers, change.held, change.before, change.written) ? left : third);
    differences.push_back(DifferenceOf(numbers, change));
  }
  if (left == 0 && third == 0) return {SaveResult::kCommitted, {}};
  if (taken == 0 && third == 0) return {SaveResult::kCancelled, {}};
  return {SaveResult::kUnknown, std::move(differences)};
}

std::vector<Difference> HeldOtherwise(Journal& journal) {
  std::vector<Difference> differences;
  for (const Change& change : ReadChanges(journal, false)) {
    if (HoldsOtherwise(journal.Numbers(), change))
      differences.push_back(DifferenceOf(journal.Numbers(), change));
  }
  return differences;
}

std::vector<ChangedField> ChangedSince(const base::Numbers& numbers, const std::vector<Written>& save) {
  std::vector<ChangedField> changed;
  for (const Written& entry : save) {
    const std::vector<ChangedField> fields = ChangedFields(entry);
    if (fields.empty()) continue;
    const std::string text = entry.read(true);
    const std::string& then = entry.held.empty() ? entry.text : entry.held;
    std::ranges::copy_if(fields, std::back_inserter(changed), [&](const ChangedField& field) {
      return !SameValue(numbers, FieldOf(field, text), FieldOf(field, then));
    });
  }
  return changed;
}

}  // namespace host
