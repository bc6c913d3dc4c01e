// What every public operation of the client runs in. For the files of the client alone.
#pragma once

#include <new>

#include "base/error.h"
#include "serverlink/fComm.h"

namespace serverlink {

/// One request at a time: event handlers run while one waits, and must not start another.
class fComm::Busy {
 public:
  explicit Busy(fComm& comm) : comm_(comm) {
    if (comm.busy_) throw base::Error(comm.given_.text("Another request still waits for its answer.", {}));
    comm.busy_ = true;
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;
  ~Busy() { comm_.busy_ = false; }

 private:
  fComm& comm_;
};

/// Turns what went wrong inside into the error that callers know.
template <class Work>
decltype(auto) fComm::Raising(Work work) const {
  try {
    return work();
  } catch (const base::Error& error) {
    Raise(error.what());
  } catch (const Overflow& overflow) {
    Raise(given_.text("Overflow: %s1% does not fit into %s2% bytes.",
                      {std::to_string(overflow.value), std::to_string(overflow.bytes)}));
  } catch (const std::bad_alloc&) {
    Raise(given_.text("There is not enough memory for the transaction.", {}));
  }
}

}  // namespace serverlink
