// Counts the calls that reach the objects of one building and, when a test asks for it, makes calls fail or
// lose their answer. One Faults is shared by all objects of a building; every object reports to it before a
// call. A member is written "Class.Member", for example "Property.Value" or "Network.CommitTransaction".
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "automation/error.h"

namespace simulator {

/// What goes wrong, and when.
struct Fault {
  std::string member = {};          // empty: any call counts
  std::uint64_t call = 1;           // the k-th matching call from now on, counted from 1
  bool once = true;                 // false: that call and every later one
  bool loseAnswer = false;          // the call is carried out first; transaction members of Network only
  std::uint32_t code = 0x800706BE;  // "the remote procedure call failed"
  std::string text = "The call failed.";
  std::function<void()> instead = {};  // done instead of failing, when given: the host dies or hangs
};

class Faults {
 public:
  /// Calls since the building was made.
  std::uint64_t Total() const { return total_; }

  /// Starts counting by member, from zero.
  void StartCounting();
  /// Calls of "Class.Member" since StartCounting.
  std::uint64_t Count(std::string_view member) const;
  const std::map<std::string, std::uint64_t, std::less<>>& Counts() const { return counts_; }
  /// From the first call since StartCounting to the last one, each when it came in.
  std::chrono::nanoseconds Span() const { return last_ - first_; }

  /// Sets the one fault; it replaces an earlier one. Throws base::Error when `fault.call` is 0.
  void Fail(Fault fault);
  /// No fault, no counting by member.
  void Clear() { counting_ = armed_ = active_ = false; }

  /// Called by the objects. Before throws the fault when its call has come; After does so for a lost answer.
  void Before(std::string_view className, std::string_view member) {
    ++total_;
    if (active_) Slow(className, member);
  }
  void After(std::string_view className, std::string_view member);

 private:
  void Slow(std::string_view className, std::string_view member);
  bool Matches(std::string_view className, std::string_view member) const;
  /// Counts a call that matches; the fault happens when its turn has come.
  void Strike();

  std::uint64_t total_ = 0;
  bool active_ = false;
  bool counting_ = false;
  std::map<std::string, std::uint64_t, std::less<>> counts_;
  std::chrono::steady_clock::time_point first_;
  std::chrono::steady_clock::time_point last_;
  bool armed_ = false;
  Fault fault_;
  std::uint64_t seen_ = 0;
};

}  // namespace simulator
