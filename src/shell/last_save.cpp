#include "shell/last_save.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace shell {
namespace {

/// "optTemp(1)" belongs to "optTemp".
bool IsOf(const KeptChange& change, const ControlName& name) {
  return change.page == name.page &&
         (change.field == name.control || name.control.starts_with(change.field + "("));
}

/// The text before, where it is the content with digits that the page did not show: only they give the same
/// value again. A field may also be stored as something else (doubled, say): then the content itself does.
std::string ExactContent(const base::Numbers& numbers, const KeptChange& change, const std::string& before) {
  const std::string& content = change.device;
  if (change.kind != fields::Kind::kText) return content;
  const auto shown = base::ParseEither(numbers, content), stored = base::ParseEither(numbers, before);
  const std::size_t sign = content.find_first_of(".,");
  const std::size_t decimals = sign == std::string::npos ? 0 : content.size() - sign - 1;
  const double rounding = std::pow(10.0, -static_cast<double>(decimals)) / 2 + host::kReadingError;
  if (!shown || !stored || shown == stored || std::abs(*stored - *shown) > rounding) return content;
  return before.substr(0, before.find_last_not_of('0') + 1);
}

}  // namespace

void LastSave::Begin(std::vector<KeptChange> pending, bool imperial) {
  begun_ = std::move(pending);
  begunImperial_ = imperial;
}

bool LastSave::Committed(const host::Journal& journal, const std::vector<host::Difference>& differences) {
  const auto changesNothing = [](const host::Written& entry) { return host::ChangedFields(entry).empty(); };
  if (std::ranges::all_of(journal.Entries(), changesNothing)) return false;
  const auto heldOf = [&differences](const host::ChangedField& changed) {
    const auto told = std::ranges::find(differences, changed.control, &host::Difference::control);
    return told == differences.end() || changed.control.empty() ? std::string() : told->held;
  };
  values_.clear();
  entries_ = journal.Entries();
  imperial_ = begunImperial_;
  for (const host::Written& entry : entries_) {
    for (const host::ChangedField& changed : host::ChangedFields(entry))
      Add(entry, changed, heldOf(changed), journal.Numbers());
  }
  return true;
}

// Several properties may hold what one field shows; it is one value.
void LastSave::Add(const host::Written& entry, const host::ChangedField& changed, const std::string& held,
                   const base::Numbers& numbers) {
  const ControlName name(changed.control);
  const auto known = std::ranges::find_if(begun_, [&](const KeptChange& c) { return IsOf(c, name); });
  if (known == begun_.end()) {
    values_.push_back({name.page, name.control, entry.Name(), changed.before, changed.written, held});
    return;
  }
  const auto told = std::ranges::find_if(values_, [&known](const Value& value) {
    return value.page == known->page && value.field == known->field;
  });
  if (told == values_.end()) {
    values_.push_back({known->page, known->field, entry.Name(), ExactContent(numbers, *known, changed.before),
                       known->present, held});
  } else if (!held.empty()) {
    told->held = held;
  }
}

std::vector<std::string> DescribeSave(const LastSave& save, const Changes& changes, const PageSet& pages,
                                      const Strings& strings) {
  std::vector<std::string> lines;
  for (const LastSave::Value& value : save.Values()) {
    const fields::Field* field = changes.Find(value.page, value.field);
    std::string name = value.name, before = value.before, after = value.after, unit;
    if (field) {
      const fields::Caption caption = field->caption();
      name = PageName(pages.Table(), value.page, strings) + ": " + PathOf(caption);
      before = field->shown(value.before);
      after = field->shown(value.after);
      if (field->kind == fields::Kind::kText && !caption.unit.empty()) unit = " " + caption.unit;
    }
    std::string line = base::Join({name, ": ", before, " -> ", after, unit}, "");
    if (!value.held.empty()) line += "; " + strings.GetStrings("the device holds %s1%", {value.held});
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace shell
