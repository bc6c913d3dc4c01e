// A unit opened in a session of its own, with its pages unseen: what copying, comparing and scripts work on.
// One at a time is open; its end lets go of the unit, and the host ends the session.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "configuration/comparison.h"
#include "configuration/english_names.h"
#include "configuration/unseen_pages.h"
#include "host/device_tree.h"
#include "host/session.h"

namespace configuration {

/// What is meant of a configuration.
struct Selection {
  std::set<std::string, std::less<>> pages;  // classes
  bool settings = true;                      // of sensors and actuators, that no page shows
  bool ofOneUnit = false;                    // names and location, on whichever page
};

/// A value that a save changed, as a person reads it.
struct WrittenValue {
  std::string page;  // class; empty for what no page shows
  std::string name;
  std::string before, after;
};

class OpenUnit {
 public:
  /// Opens the unit and reads its pages. Throws host::StepError, automation::Error or base::Error.
  OpenUnit(const UnseenPages::Surroundings& surroundings, shell::Strings& strings,
           const host::SessionRequest& request, bool imperial);

  /// Beside the pages, the settings that none shows. Throws automation::Error.
  void ReadSettings();

  /// What it holds or, when something is filled in, would hold; the location first.
  std::vector<Held> Values() const;
  Snapshot Take();
  /// The same with all the digits that the host gives, of which pages show some: the unit is read again.
  Snapshot TakeAllDigits();
  /// Where it differs from the document in what is selected; equal values are left out.
  std::vector<Difference> Compare(const Document& document, const Selection& selection) const;

  /// Fills in the contents as a person would; answers what was not taken, with the reasons. Nothing of the
  /// device changes.
  std::vector<fields::Wanted> Fill(std::vector<fields::Wanted> wanted);
  /// Saves what was filled in, in one transaction; `mayCommit` runs inside it when all is written. Afterwards
  /// the pages are read again, and the settings where one was filled in: they show what the device holds.
  UnseenPages::Saved Save(const std::function<bool()>& mayCommit);
  /// What the last save changed, unless it was cancelled.
  const std::vector<WrittenValue>& LastWritten() const { return written_; }
  /// The values before the save under way, with all the digits of those that it changes. For a backup.
  Snapshot BeforeSave();

  const host::SessionRequest& Request() const { return request_; }
  bool Imperial() const { return device_.IsImperial; }
  std::vector<std::string> SensorTypes() const { return pages_.SensorTypes(); }
  /// Nothing when there is no such field.
  const fields::Field* Find(std::string_view page, std::string_view control) const {
    return page == kMainWindow ? &location_ : fields_.Find(page, control);
  }
  /// What a host calls the unit, its kind and version, and who reads it when.
  Head MakeHead();

 private:
  fields::Field LocationField();
  void ListFields();
  std::vector<WrittenValue> ListWritten() const;
  bool Selected(const Selection& selection, const fields::Field& field) const;
  bool Unknown(const Selection& selection, const Entry& entry) const;
  host::Property& LocationProperty() { return device_.NodeProperties[host::kLocationProperty]; }

  UnseenPages::Surroundings surroundings_;
  const shell::Settings& settings_;
  shell::Strings& strings_;
  host::SessionRequest request_;
  host::Journal journal_;
  host::Session session_;
  host::Transactions transactions_{session_.Network(), journal_};
  host::DeviceObjects device_;
  UnseenPages pages_;
  fields::Field location_;
  std::string storedLocation_, locationText_;
  fields::FieldList fields_;  // of the pages
  std::vector<Held> before_;  // before anything was filled in
  std::vector<WrittenValue> written_;
};

}  // namespace configuration
