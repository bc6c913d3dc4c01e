// One transaction of the host, ended exactly once: by Commit or Cancel, or by cancelling when it goes out of
// scope.
#pragma once

#include <exception>
#include <string_view>

#include "automation/object.h"
#include "host/contract.h"

namespace host {

class Transaction {
 public:
  /// All operations throw automation::Error when the host refuses; the transaction then counts as ended. A
  /// host that refuses to begin may still hold a transaction that could not be ended while it was out of
  /// reach, so that one is cancelled and the host is asked once more.
  explicit Transaction(const automation::Object& network) : network_(network) {
    try {
      network_.Call(kBeginTransaction);
    } catch (const std::exception&) {
      CancelQuietly();
      open_ = true;
      network_.Call(kBeginTransaction);
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction() {
    if (open_) CancelQuietly();
  }

  /// A host that refuses to commit may have the transaction still open, so it is cancelled then.
  void Commit() {
    try {
      End(kCommitTransaction);
    } catch (const std::exception&) {
      CancelQuietly();
      throw;
    }
  }
  void Cancel() { End(kCancelTransaction); }

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

}  // namespace host
