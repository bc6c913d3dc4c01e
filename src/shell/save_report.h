// What is told of a save beside its usual message: the verdict on a commit whose answer was lost, and each
// value that the device holds otherwise than it was written. Asked by the main window after every
// transaction.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/page.h"

namespace shell {

struct SaveReport {
  SaveResult result;
  std::string reason;  // lines that say why it stays unknown, in the language in use
  std::vector<host::Difference> differences = {};  // what the device holds otherwise, when committed
};

/// Runs `work` in a host transaction: committed when it answers yes, cancelled otherwise and when it throws,
/// or when the user signs out meanwhile. A fault is logged with the routine and location. Unknown: the answer
/// to the commit was lost.
SaveResult RunTransaction(const PageContext& context, std::string_view routine, std::string_view location,
                          const std::function<bool()>& work);

/// Reads back what the last transaction wrote, where `result` is committed or unknown, and settles an unknown
/// one if the device tells. Logs what there is to tell with the routine and location; never throws.
SaveReport ReportSave(const PageContext& context, SaveResult result, std::string_view routine,
                      std::string_view location);

}  // namespace shell
