// One transaction of the host, ended exactly once: by Commit or Cancel, or by cancelling when it goes out of
// scope.
#pragma once

#include <string_view>

#include "automation/object.h"
#include "hosting/host_contract.h"

namespace shell {

class HostTransaction {
 public:
  /// All operations throw automation::Error when the host refuses; the transaction then counts as ended.
  explicit HostTransaction(const automation::Object& network) : network_(network) {
    network_.Call(host::kBeginTransaction);
  }
  HostTransaction(const HostTransaction&) = delete;
  HostTransaction& operator=(const HostTransaction&) = delete;
  ~HostTransaction() {
    if (open_) CancelQuietly();
  }

  /// A host that refuses to commit may have the transaction still open, so it is cancelled then.
  void Commit() {
    try {
      End(host::kCommitTransaction);
    } catch (const std::exception&) {
      CancelQuietly();
      throw;
    }
  }
  void Cancel() { End(host::kCancelTransaction); }

 private:
  void End(std::string_view member) {
    open_ = false;
    network_.Call(member);
  }

  void CancelQuietly() {
    try {
      Cancel();
    } catch (const std::exception&) {
      // The fault that led here is the one to be told.
    }
  }

  const automation::Object& network_;
  bool open_ = true;
};

}  // namespace shell
