#include "configuration/snapshot.h"

#include <algorithm>

namespace configuration {
namespace {

/// A number in one notation, written in another.
std::string Rewritten(const base::Numbers& from, char to, fields::Kind kind, std::string_view content) {
  std::string text(content);
  if (kind == fields::Kind::kText && from.Decimal() != to && from.IsNumber(text))
    std::ranges::replace(text, from.Decimal(), to);
  return text;
}

}  // namespace

std::string Portable(const base::Numbers& numbers, fields::Kind kind, std::string_view content) {
  return Rewritten(numbers, '.', kind, content);
}

std::string Local(const base::Numbers& numbers, fields::Kind kind, std::string_view content) {
  return Rewritten(base::Numbers('.'), numbers.Decimal(), kind, content);
}

Value ValueOf(const fields::Field& field, const base::Numbers& numbers, std::string_view content) {
  return {field.page,
          field.name,
          field.caption(),
          field.kind,
          Portable(numbers, field.kind, content),
          field.shown(content),
          !field.control || field.control->EnabledInFrame()};
}

const Value* Snapshot::Find(std::string_view page, std::string_view control) const {
  const auto found = std::ranges::find_if(
      values, [&](const Value& value) { return value.page == page && value.control == control; });
  return found == values.end() ? nullptr : &*found;
}

Document ToDocument(const Snapshot& snapshot, const Captions& captions) {
  Document document{snapshot.head, {}};
  for (const Value& value : snapshot.values) {
    const std::string unit = value.kind == fields::Kind::kText ? value.caption.unit : std::string();
    document.entries.push_back(
        {value.page, value.control, captions(value.page, value.control), unit, value.content});
  }
  return document;
}

}  // namespace configuration
