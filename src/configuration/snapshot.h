// The values of a unit at one moment, with all that a person wants to know of each: what a file, a comparison
// and a record are made of. Taken from fields, of the pages in view or of unseen ones.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "configuration/document.h"
#include "fields/field.h"

namespace configuration {

struct Value {
  std::string page, control;  // of the field
  fields::Caption caption;    // in the language and units in use
  fields::Kind kind = fields::Kind::kText;
  std::string content;      // as in a file: a number has a decimal point
  std::string shown;        // as a person reads it, without the unit
  bool used = true;         // no where its control is greyed: no assigned function uses it
  std::string source = {};  // the property, of a value that no control shows
};

struct Snapshot {
  Head head;
  std::vector<Value> values;  // in page and tab order

  const Value* Find(std::string_view page, std::string_view control) const;
};

/// The content of a field in the notation of files.
std::string Portable(const base::Numbers& numbers, fields::Kind kind, std::string_view content);
/// The content of a file in the user's notation. `held` is what the field shows: only what is a number there
/// is one here, and a host that writes points goes on to do so.
std::string Local(const base::Numbers& numbers, fields::Kind kind, std::string_view content,
                  std::string_view held);

/// What the field holds, or `content` in its place, in the user's notation.
Value ValueOf(const fields::Field& field, const base::Numbers& numbers, std::string_view content);

/// A field of the unit with what it holds.
struct Held {
  const fields::Field* field;
  std::string content;
  bool applies;  // no where another field is shown in its place
};

/// What is stored, of a field as its page filled it.
inline std::string StoredContent(const fields::Field& field) {
  return field.stored ? field.stored() : field.content();
}

/// The values of the fields that apply, with the contents that `exact` gives of them.
template <class Exact>
Snapshot SnapshotOf(Head head, const std::vector<Held>& fields, const base::Numbers& numbers,
                    const Exact& exact) {
  Snapshot snapshot{std::move(head), {}};
  for (const Held& held : fields) {
    if (held.applies) snapshot.values.push_back(ValueOf(*held.field, numbers, std::invoke(exact, held)));
  }
  return snapshot;
}

/// What a field is called in a file.
using NameOfValue = std::function<std::string(const Value&)>;

Document ToDocument(const Snapshot& snapshot, const NameOfValue& name);

}  // namespace configuration
