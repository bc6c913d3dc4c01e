// What became of a transaction, by what the device holds: each field that the journal says was changed is
// read again and held against the text written and the text before. A host may have lost its answer, rounded
// or clamped a value, or have taken another client's write in between; nothing that a page shows counts.
#pragma once

#include <string>
#include <vector>

#include "host/journal.h"

namespace host {

/// A field that does not hold what was written.
struct Difference {
  std::string name;     // of the property or variable
  std::string control;  // where it was typed; may be empty
  std::string before;
  std::string written;
  std::string held;  // numbers without needless decimals
};

/// The ends of a transaction. Unknown: the commit was sent but its answer was lost, and the device holds
/// neither all that was written nor all that was there before.
enum class SaveResult { kCommitted, kCancelled, kUnknown };

struct Verdict {
  SaveResult result = SaveResult::kUnknown;
  std::vector<Difference> differences;  // the fields that do not hold what was written, when unknown
};

/// After a commit whose answer was lost. A field holds the new text when it lies within a quarter of the
/// distance between new and old of it, the old one likewise; texts that are no numbers must be equal. All
/// fields agree, or it is unknown. When nothing was changed the device holds what was written either way:
/// committed. The journal keeps what was read. Throws automation::Error when a value cannot be read.
Verdict JudgeLostCommit(Journal& journal);

/// After a commit: the changed fields that the device holds otherwise than written, at the decimals that were
/// typed or are shown. The journal keeps what was read. Throws automation::Error when a value cannot be read.
std::vector<Difference> HeldOtherwise(Journal& journal);

/// The changed fields of an earlier save that the device holds otherwise now than right after it. Throws
/// automation::Error when a value cannot be read.
std::vector<ChangedField> ChangedSince(const base::Numbers& numbers, const std::vector<Written>& save);

}  // namespace host
