// One transaction of the host, ended exactly once: by Commit or Cancel, or by cancelling when it goes out of
// scope. While it is open the journal notes what is written. A host may hold a transaction that is not ours
// (the object manager's): it is cancelled only when this tool knows that it left one open.
#pragma once

#include "automation/object.h"
#include "host/journal.h"

namespace host {

/// The transactions on one network object, one after the other. Owned by whoever has the session.
class Transactions {
 public:
  Transactions(const automation::Object& network, Journal& journal) : network_(network), journal_(journal) {}

  Journal& GetJournal() const { return journal_; }

  /// Ends one that the host may still have open: until then what is pending reads as if it were stored.
  /// Called before the device is read to see what became of a transaction. Throws automation::Error when the
  /// host refuses.
  void EndLeft();

 private:
  friend class Transaction;
  void Begin();
  void Cancel();

  const automation::Object& network_;
  Journal& journal_;
  bool leftOpen_ = false;  // the host did not say whether the last one has ended
};

class Transaction {
 public:
  /// All operations throw automation::Error when the host refuses; the transaction then counts as ended.
  /// Where an earlier one may still be open, it is cancelled and the host asked once more.
  explicit Transaction(Transactions& all);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  /// A host that fails to commit may have the transaction still open, so it is cancelled then.
  void Commit();
  void Cancel();

 private:
  void CancelQuietly();

  Transactions& all_;
  bool open_ = false;
};

}  // namespace host
