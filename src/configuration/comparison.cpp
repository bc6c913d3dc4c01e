#include "configuration/comparison.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "base/text.h"

namespace configuration {
namespace {

using Kind = Difference::Kind;

bool IsPlace(std::string_view content, std::size_t count) {
  return base::ParseWhole<std::size_t>(content).value_or(count) < count;
}

/// Whether the field could show the content at all, whatever the rules of its page say.
bool CanHold(const fields::Field& field, const base::Numbers& numbers, std::string_view content,
             std::string_view here) {
  switch (field.kind) {
    case fields::Kind::kFlag:
      return content == "0" || content == "1";
    case fields::Kind::kOption:
      return IsPlace(content, static_cast<ui::OptionButton*>(field.control)->Siblings().size());
    case fields::Kind::kEntry: {
      const auto* list = dynamic_cast<const ui::ListBox*>(field.control);
      if (!list || content == here) return true;
      return list->Translated() ? IsPlace(content, list->Items().size())
                                : std::ranges::find(list->Items(), content) != list->Items().end();
    }
    case fields::Kind::kRecord:
      break;
    case fields::Kind::kText:
      return !base::ParseEither(numbers, here) || base::ParseEither(numbers, content);
  }
  return true;
}

std::size_t DecimalsOf(std::string_view number) {
  const auto sign = number.find_first_of(".,");
  const auto end = number.find_first_of("eE");
  if (sign == std::string_view::npos || end != std::string_view::npos) return 0;
  return number.size() - sign - 1;
}

bool Same(const fields::Field& field, const base::Numbers& numbers, std::string_view here,
          std::string_view there) {
  return SameContent(field, numbers, here, there) ||
         (field.kind == fields::Kind::kText && EqualAsShown(numbers, here, there));
}

Difference Told(const Held& held, const Entry* entry, const base::Numbers& numbers) {
  const fields::Field& field = *held.field;
  const fields::Caption caption = field.caption();
  Difference line;
  line.page = field.page;
  line.control = field.name;
  line.name = PathOf(caption);
  line.ofOneUnit = field.ofOneUnit;
  if (field.kind == fields::Kind::kText) line.unit = caption.unit;
  if (held.applies) line.here = field.shown(held.content);
  if (!entry) {
    line.kind = Kind::kOnlyHere;
    return line;
  }
  line.content = Local(numbers, field.kind, entry->content, held.content);
  if (held.applies && Same(field, numbers, held.content, line.content)) {
    line.kind = Kind::kEqual;
  } else {
    line.kind = CanHold(field, numbers, line.content, held.content) ? Kind::kDiffers : Kind::kCannotBeWritten;
  }
  line.there = line.kind == Kind::kCannotBeWritten ? entry->content : field.shown(line.content);
  return line;
}

}  // namespace

bool EqualAsShown(const base::Numbers& numbers, std::string_view shown, std::string_view other) {
  if (shown == other) return true;
  const auto first = base::ParseEither(numbers, shown), second = base::ParseEither(numbers, other);
  if (!first || !second) return false;
  const double half = std::pow(10.0, -static_cast<double>(DecimalsOf(base::Trim(shown)))) / 2;
  return std::abs(*first - *second) <= half * (1 + 1e-9);
}

bool MayBeCut(const base::Numbers& numbers, std::string_view content) {
  return base::ParseEither(numbers, content) && DecimalsOf(content) >= host::kHighPrecision &&
         !content.ends_with('0');
}

std::string WithDigits(const base::Numbers& numbers, const std::string& shown, const std::string& exact) {
  const auto first = base::ParseEither(numbers, shown), second = base::ParseEither(numbers, exact);
  if (!first || !second || *first == *second || !EqualAsShown(numbers, shown, exact)) return shown;
  const std::string text(base::Trim(exact));
  return text.find_first_of("eE") != std::string::npos ? text
                                                       : text.substr(0, text.find_last_not_of('0') + 1);
}

DigitsBefore::DigitsBefore(const host::Journal& journal) : numbers_(journal.Numbers()) {
  for (const host::Written& entry : journal.Entries()) {
    for (host::ChangedField& field : host::ChangedFields(entry))
      changed_.emplace(std::move(field.control), std::move(field.before));
  }
}

std::string DigitsBefore::operator()(const Held& held) const {
  const auto changed = changed_.find(held.field->page + "." + held.field->name);
  return changed == changed_.end() ? held.content : WithDigits(numbers_, held.content, changed->second);
}

std::vector<Difference> Compare(const std::vector<Held>& here, const Document& there,
                                const base::Numbers& numbers) {
  std::vector<Difference> lines;
  std::set<const Entry*> met;
  for (const Held& held : here) {
    const Entry* entry = there.Find(held.field->page, held.field->name);
    met.insert(entry);
    if (entry || held.applies) lines.push_back(Told(held, entry, numbers));
  }
  for (const Entry& entry : there.entries) {
    if (met.contains(&entry)) continue;
    const std::string name = entry.caption.empty() ? entry.control : entry.caption;
    lines.push_back(
        {Kind::kOnlyThere, entry.page, entry.control, name, {}, entry.content, entry.unit, entry.content});
  }
  return lines;
}

}  // namespace configuration
