#include "host/transaction.h"

#include <exception>

#include "automation/error.h"
#include "host/contract.h"

namespace host {

Transaction::Transaction(Transactions& all) : all_(all) {
  try {
    Begin();
  } catch (const automation::Error& error) {
    if (error.Answered() && !all_.leftOpen_) throw;
    CancelQuietly();
    Begin();
  }
  all_.journal_.Open();
}

Transaction::~Transaction() {
  if (open_) CancelQuietly();
  all_.journal_.Close();
}

void Transaction::Begin() {
  try {
    all_.network_.Call(kBeginTransaction);
  } catch (const automation::Error& error) {
    if (!error.Answered()) all_.leftOpen_ = true;
    throw;
  }
  all_.leftOpen_ = false;
  open_ = true;
}

// What decides about a commit that failed is read back. That must not be read in the transaction itself, so a
// cancel that failed too is tried once more; beginning another one ends the doubt whether there is one to
// cancel.
void Transaction::Commit() {
  open_ = false;
  all_.journal_.Close();
  try {
    all_.network_.Call(kCommitTransaction);
  } catch (const automation::Error&) {
    CancelQuietly();
    if (!all_.leftOpen_) throw;
    try {
      Begin();
    } catch (const automation::Error&) {
      // One is open, or the host is gone.
    }
    CancelQuietly();
    throw;
  }
}

void Transaction::Cancel() {
  open_ = false;
  all_.leftOpen_ = true;  // until the host has answered
  all_.network_.Call(kCancelTransaction);
  all_.leftOpen_ = false;
}

void Transaction::CancelQuietly() {
  try {
    Cancel();
  } catch (const automation::Error&) {
    // The fault that led here is the one to be told.
  }
}

}  // namespace host
