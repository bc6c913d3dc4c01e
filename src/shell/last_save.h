// The last committed save: which values it wrote, to tell it in the log and to take it back. It is kept from
// the journal and from what was pending before it, since both begin anew with the next transaction. Owned by
// the main window.
#pragma once

#include <string>
#include <vector>

#include "host/verdict.h"
#include "shell/changes.h"

namespace shell {

class LastSave {
 public:
  /// What was pending when the save began, in the unit system in use.
  void Begin(std::vector<KeptChange> pending, bool imperial);
  /// It was committed; `differences`: what the device holds otherwise than written. A save that changed no
  /// value is no save: the one before stays, and the answer is no.
  bool Committed(const host::Journal& journal, const std::vector<host::Difference>& differences);

  /// Nothing was committed yet.
  bool Empty() const { return values_.empty(); }
  bool Imperial() const { return imperial_; }
  const std::vector<host::Written>& Entries() const { return entries_; }

  /// One value that was written. Without a field: its name is that of the property, its contents are texts.
  struct Value {
    std::string page, field;    // names; may be empty
    std::string name;           // of the property
    std::string before, after;  // contents, or texts of the property
    std::string held;           // text of the property where the device holds it otherwise than written
  };
  const std::vector<Value>& Values() const { return values_; }

 private:
  void Add(const host::Written& entry, const host::ChangedField& changed, const std::string& held,
           const base::Numbers& numbers);

  std::vector<KeptChange> begun_;
  bool begunImperial_ = false;
  std::vector<Value> values_;
  std::vector<host::Written> entries_;
  bool imperial_ = false;
};

/// One line for each value, old and new, as the page and the field are called now; and what the device holds
/// otherwise.
std::vector<std::string> DescribeSave(const LastSave& save, const Changes& changes, const PageSet& pages,
                                      const Strings& strings);

}  // namespace shell
