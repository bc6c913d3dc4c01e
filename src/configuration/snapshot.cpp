#include "configuration/snapshot.h"

#include <algorithm>

#include "base/text.h"

namespace configuration {
namespace {

std::vector<std::string> Pieces(fields::Kind kind, std::string_view content) {
  if (kind == fields::Kind::kRecord) return base::Split(content, " ");
  return {std::string(content)};
}

bool HoldsNumbers(fields::Kind kind) { return kind == fields::Kind::kText || kind == fields::Kind::kRecord; }

}  // namespace

std::string Portable(const base::Numbers& numbers, fields::Kind kind, std::string_view content) {
  if (!HoldsNumbers(kind)) return std::string(content);
  std::vector<std::string> pieces = Pieces(kind, content);
  for (std::string& piece : pieces) {
    if (numbers.IsNumber(piece)) std::ranges::replace(piece, numbers.Decimal(), '.');
  }
  return base::Join(pieces, " ");
}

std::string Local(const base::Numbers& numbers, fields::Kind kind, std::string_view content,
                  std::string_view held) {
  if (!HoldsNumbers(kind)) return std::string(content);
  std::vector<std::string> pieces = Pieces(kind, content);
  const std::vector<std::string> shown = Pieces(kind, held);
  for (std::size_t i = 0; i < std::min(pieces.size(), shown.size()); ++i) {
    if (base::Numbers('.').IsNumber(pieces[i]) && numbers.IsNumber(shown[i]))
      std::ranges::replace(pieces[i], '.', numbers.Decimal());
  }
  return base::Join(pieces, " ");
}

Value ValueOf(const fields::Field& field, const base::Numbers& numbers, std::string_view content) {
  return {field.page,
          field.name,
          field.caption(),
          field.kind,
          Portable(numbers, field.kind, content),
          field.shown(content),
          !field.control || field.control->EnabledInFrame(),
          field.control ? std::string() : field.source};
}

const Value* Snapshot::Find(std::string_view page, std::string_view control) const {
  const auto found = std::ranges::find_if(
      values, [&](const Value& value) { return value.page == page && value.control == control; });
  return found == values.end() ? nullptr : &*found;
}

Document ToDocument(const Snapshot& snapshot, const NameOfValue& name) {
  Document document{snapshot.head, {}};
  for (const Value& value : snapshot.values) {
    const std::string unit = value.kind == fields::Kind::kText ? value.caption.unit : std::string();
    document.entries.push_back({value.page, value.control, name(value), unit, value.content});
  }
  return document;
}

}  // namespace configuration
