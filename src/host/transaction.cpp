#include "host/transaction.h"

#include <exception>

#include "automation/error.h"
#include "host/contract.h"

namespace host {
namespace {

/// True when the host itself has answered, so that it did nothing. The platform's automation faults (facility
/// 2) and the faults of interfaces (facility 4) come from the called object, all others from the way to it.
bool Refused(const automation::Error& error) {
  const std::uint32_t facility = (error.Code() >> 16) & 0x1FFF;
  return facility == 2 || facility == 4;
}

}  // namespace

Transaction::Transaction(Transactions& all) : all_(all) {
  try {
    Begin();
  } catch (const automation::Error& error) {
    if (Refused(error) && !all_.leftOpen_) throw;
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
    if (!Refused(error)) all_.leftOpen_ = true;
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
