#include "host/journal.h"

#include <algorithm>
#include <iterator>

#include "base/record.h"

namespace host {

std::string Written::Name() const {
  std::string name = object;
  if (!type.empty()) name += (name.empty() ? "" : ", ") + type;
  return name;
}

void Journal::Open() {
  entries_.clear();
  open_ = true;
}

void Journal::Note(Written written) {
  const auto known = std::ranges::find_if(entries_, [&written](const Written& entry) {
    return entry.object == written.object && entry.number == written.number;
  });
  if (known == entries_.end()) {
    entries_.push_back(std::move(written));
    return;
  }
  written.before = known->before;
  for (WrittenField& field : known->fields) {
    const auto again = std::ranges::find(written.fields, field.place, &WrittenField::place);
    if (again == written.fields.end()) {
      written.fields.push_back(std::move(field));
    } else if (again->control.empty()) {
      again->control = std::move(field.control);
    }
  }
  *known = std::move(written);
}

void Journal::NoteRefused(std::string_view object, int number, std::string_view reason) {
  for (Written& entry : entries_) {
    if (entry.object == object && entry.number == number) entry.refused = reason;
  }
}

std::vector<ChangedField> ChangedFields(const Written& entry) {
  const base::Record before(entry.before), written(entry.text);
  const WrittenField first = entry.fields.empty() ? WrittenField{kWholeText, {}} : entry.fields.front();
  if (first.place == kWholeText || before.Count() != written.Count()) {
    if (entry.before == entry.text) return {};
    return {{first.control, entry.before, entry.text, kWholeText}};
  }
  std::vector<ChangedField> changed;
  for (const auto& [place, control] : entry.fields) {
    if (before.Field(place) == written.Field(place)) continue;
    changed.push_back({control, std::string(before.Field(place)), std::string(written.Field(place)), place});
  }
  return changed;
}

std::string FieldOf(const ChangedField& field, const std::string& text) {
  const base::Record record(text);
  return field.place < record.Count() ? std::string(record.Field(field.place)) : text;
}

std::vector<ChangedField> RefusedFields(const Written& entry) {
  const std::vector<ChangedField> changed = ChangedFields(entry);
  std::vector<ChangedField> named;
  std::ranges::copy_if(changed, std::back_inserter(named), [&entry](const ChangedField& field) {
    return entry.refused.find('"' + field.written + '"') != std::string::npos;
  });
  return named.empty() ? changed : named;
}

}  // namespace host
