// Overrides outputs of the unit in view for a while, and puts them back: whatever happens, no output stays
// overridden unknown to the user. What an override is to go back to is on the disk before it is written, and
// is taken from there only when the device has been read and holds it again, so that the next start knows
// what a tool that was killed has left. Knows no window; owned and called by the one of the check-out.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "checkout/steps.h"
#include "configuration/unit_file.h"
#include "host/transaction.h"

namespace checkout {

/// The override of an output before the check-out, as the host gave it.
struct Kept {
  int output;
  std::string function;
  std::string text;
};

class CheckOut {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// All outlive it.
  CheckOut(host::DeviceObjects& device, host::Transactions& transactions, const configuration::UnitFile& file)
      : device_(device), transactions_(transactions), file_(file) {}

  std::function<Time()> now = std::chrono::steady_clock::now;

  /// What an earlier check-out of this unit has left overridden counts as standing. Throws base::Error when
  /// that is not known, since the list of it cannot be read.
  void Load();

  /// Overrides the outputs of the step in a transaction of its own, for so long at most. Nothing may stand.
  /// Throws automation::Error or base::Error; what was written has been put back then, but for what Standing
  /// still names.
  void Start(const Step& step, std::chrono::seconds limit);

  /// Outputs that may be overridden by a check-out.
  const std::vector<Kept>& Standing() const { return kept_; }
  /// Zero when nothing is left of the time, and when nothing stands.
  std::chrono::seconds Left() const;
  /// Nothing is left of the time from now on, nor of one that is about to begin.
  void EndTime() {
    end_ = now();
    wanted_ = busy_;
  }
  /// Part of another operation here: whoever is called from the loop meanwhile leaves it alone.
  bool Busy() const { return busy_; }

  /// Lets go of the outputs that hold their own override again, whoever gave it to them. Never throws.
  void Check();
  /// Gives each output its own override again and reads it back. Answers whether all hold theirs; tries more
  /// than once, and never throws.
  bool PutBack();
  /// Why the last PutBack did not; the words of the host or of the system.
  const std::string& Fault() const { return fault_; }

 private:
  host::Property& OverrideOf(int output);
  /// A text that can be written again; throws where the host gives another.
  std::string ReadOverride(int output);
  void Write(const Step& step);
  void WriteBack();
  /// Lets go of the outputs that hold their own override again.
  void Look();
  void KeepOnDisk(const std::vector<Kept>& kept) const;

  host::DeviceObjects& device_;
  host::Transactions& transactions_;
  configuration::UnitFile file_;
  std::vector<Kept> kept_;
  Time end_{};
  std::string fault_;
  bool busy_ = false;
  bool wanted_ = false;  // to be put back as soon as the operation under way has ended
};

}  // namespace checkout
