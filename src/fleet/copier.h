// One configuration for many units: what is done with each of them, one after the other. Works in a session
// of its own for each unit, on unseen pages, so that every rule of every page holds; leaves no session and no
// transaction behind. Driven by the window of copying and by scripts.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/unit_desk.h"
#include "configuration/unit_list.h"

namespace fleet {

enum class UnitState {
  kWaiting,
  kReading,
  kWriting,
  kDone,      // what was written is in the device, read back
  kEqual,     // nothing to change
  kDiffers,   // of a dry run
  kRefused,   // a rule or the device does not take a value; nothing was written
  kFailed,    // nothing was written, or the device did not keep all of it
  kUnknown,   // the answer to the commit was lost, and the unit holds neither all nor nothing of it
  kNotTaken,  // cannot be copied to at all
};

/// One unit of the table.
struct UnitLine {
  configuration::UnitEntry unit;
  UnitState state = UnitState::kWaiting;
  UnitState failedIn = UnitState::kWaiting;  // what was under way then
  std::size_t count = 0;                     // values that differ, or that were written
  std::string reason = {};                   // what is to be told, in the language in use
  std::vector<configuration::WrittenValue> values = {};
  std::filesystem::path record = {};  // the as-left record, in HTML; empty where none was kept
};

/// What is given to all units.
struct Job {
  configuration::Document source;
  configuration::Selection selection;
  bool write = false;  // no: a dry run, which writes nothing
};

class Copier {
 public:
  /// All outlive it. `request` says how a unit is opened; its device name is that of any.
  Copier(const configuration::UnseenPages::Surroundings& surroundings, shell::Strings& strings,
         const host::SessionRequest& request);

  /// Each unit enters a further state.
  std::function<void(const UnitLine&)> onState;
  /// Asked right before each commit; no cancels it.
  std::function<bool()> mayCommit = [] { return true; };

  /// From waiting to one of the ends; throws nothing.
  void Work(UnitLine& line, const Job& job);

 private:
  struct End {
    UnitState state;
    std::string reason = {};
  };

  End Run(UnitLine& line, const Job& job);
  End Ended(UnitLine& line, configuration::OpenUnit& unit, const configuration::UnitDesk::Saved& saved);
  /// After a lost commit: by what a further session reads.
  End LookAgain(UnitLine& line, const Job& job, const std::vector<configuration::Difference>& differences,
                const std::string& told);
  /// Answers why not; nothing when it was kept.
  std::string KeepRecord(UnitLine& line, configuration::OpenUnit& unit,
                         const configuration::Document& before) const;
  host::SessionRequest RequestOf(const UnitLine& line) const;
  void Enter(UnitLine& line, UnitState state) const;
  std::string Text(std::string_view english) const { return strings_.GetStrings(english); }

  shell::fLoading quiet_;
  shell::Strings& strings_;
  host::SessionRequest request_;
  configuration::UnitDesk desk_;
};

}  // namespace fleet
