#include "host/transaction.h"

#include <exception>

#include "automation/error.h"
#include "host/contract.h"

namespace host {

void Transactions::Begin() {
  try {
    network_.Call(kBeginTransaction);
  } catch (const automation::Error& error) {
    if (!error.Answered()) leftOpen_ = true;
    throw;
  }
  leftOpen_ = false;
}

void Transactions::Cancel() {
  leftOpen_ = true;  // until the host has answered
  network_.Call(kCancelTransaction);
  leftOpen_ = false;
}

// Beginning another one ends the doubt whether there is one to cancel.
void Transactions::EndLeft() {
  if (!leftOpen_) return;
  try {
    Begin();
  } catch (const automation::Error&) {
    // One is open, or the host is gone.
  }
  Cancel();
}

Transaction::Transaction(Transactions& all) : all_(all) {
  try {
    all_.Begin();
  } catch (const automation::Error& error) {
    if (error.Answered() && !all_.leftOpen_) throw;
    CancelQuietly();
    all_.Begin();
  }
  open_ = true;
  all_.journal_.Open();
}

Transaction::~Transaction() {
  if (open_) CancelQuietly();
  all_.journal_.Close();
}

void Transaction::Commit() {
  open_ = false;
  all_.journal_.Close();
  try {
    all_.network_.Call(kCommitTransaction);
  } catch (const automation::Error&) {
    CancelQuietly();
    throw;
  }
}

void Transaction::Cancel() {
  open_ = false;
  all_.Cancel();
}

void Transaction::CancelQuietly() {
  try {
    Cancel();
  } catch (const automation::Error&) {
    // The fault that led here is the one to be told.
  }
}

}  // namespace host
