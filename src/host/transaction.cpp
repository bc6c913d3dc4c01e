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
