// What became of a save whose answer was lost. The device is read through a second set of pages, which nobody
// sees, and what they show is held against what was there before and what the user typed: a transaction is
// all or nothing, so the fields that differ between the two tell which it was.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "shell/page_set.h"

namespace shell {

struct ReadBack {
  SaveResult result = SaveResult::kUnknown;
  std::string reason;  // why it stays unknown, in the language in use
};

/// `pages` holds what the user typed, and is left as it is. Reads every value of the device; never throws.
ReadBack ReadSaveBack(const PageContext& context, const PageSet& pages, fLoading& progress);

}  // namespace shell
