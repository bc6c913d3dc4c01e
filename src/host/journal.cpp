#include "host/journal.h"

#include <algorithm>

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

}  // namespace host
