// The calls that a client makes to a host, written down so that they can be made again without the client:
// what remains is what the host and the way to it cost. Recorded by the benchmarks, made again by the
// stand-in host's measurements.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object.h"

namespace simulator {

/// One call, or the release of an object.
struct TracedCall {
  enum class Kind { kCreate, kGet, kPut, kCall, kRelease };

  Kind kind;
  int object = 0;      // the object that is called, created or released
  std::string member;  // the program id when one is created
  std::vector<automation::Value> arguments;
  int gives = 0;  // the number of the object that the call gives; 0 for none
};

/// Operations in the order in which they ran. Objects are counted through all of them from 1.
struct CallTrace {
  struct Operation {
    std::string name;
    std::vector<TracedCall> calls;
  };
  std::vector<Operation> operations;

  std::string ToJson() const;
  /// Throws base::Error for a text that is no trace.
  static CallTrace FromJson(std::string_view text);
};

/// Writes calls into the last operation of a trace.
class CallRecorder {
 public:
  explicit CallRecorder(CallTrace& trace) : trace_(trace) {}

  /// The object through which calls are recorded; `inner` was created under `programId`.
  automation::Object Created(std::string_view programId, const automation::Object& inner);

 private:
  class Target;
  /// Answers the place of the call in its operation.
  std::size_t Note(TracedCall call);

  CallTrace& trace_;
  int objects_ = 0;
};

/// Makes the calls of a trace again, operation by operation, and lets them fail as they may.
class CallReplay {
 public:
  using Create = std::function<automation::Object(const std::string& programId)>;

  explicit CallReplay(Create create) : create_(std::move(create)) {}

  void Run(const CallTrace::Operation& operation);

 private:
  Create create_;
  std::map<int, automation::Object> objects_;
};

}  // namespace simulator
