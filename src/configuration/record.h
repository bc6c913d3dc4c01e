// The as-left record of a unit: what it was when the installer left it, as one HTML file to be shown and
// printed by any browser (drawings, tables, changes since an earlier record), and as CSV for spreadsheets.
// Made of a snapshot alone: knows no page, no host and no file. Called by whoever saves the texts.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "configuration/snapshot.h"
#include "shell/strings.h"

namespace configuration {

/// What the person who leaves the unit is asked for. Each may be empty.
struct RecordRequest {
  std::string installer;
  std::string address;  // of the site, may have several lines
  std::string note;     // may have several lines
};

/// A page by its class ("fPID"), and its title as the person sees it.
struct PageTitle {
  std::string page, title;
};

/// A content of a field as a person reads it, where it may be another than the present one.
using ShownContent =
    std::function<std::string(std::string_view page, std::string_view control, std::string_view content)>;

/// One advice on the unit, in the language in use. Accepted: by whom, when (UTC) and why; open: all empty.
struct AdviceLine {
  bool fault = false;
  std::string text, why;
  std::string who = {}, when = {}, reason = {};
};

struct RecordInput {
  const Snapshot& snapshot;
  std::span<const PageTitle> pages;  // in order; values of pages that are not among them come last
  const shell::Strings& strings;
  base::Numbers numbers;
  RecordRequest request;
  std::string time;       // local, as the person writes it
  bool verified = false;  // the values were read back from the device
  // By number from 1, as the device names them; those that nobody knows are empty or left out.
  std::vector<std::string> sensors = {};  // sensor types of the inputs
  std::vector<std::string> signals = {};  // signal types of the outputs
  const Document* earlier = nullptr;      // an earlier record or file of this unit
  ShownContent shown = {};                // for the earlier contents; without it they are shown as stored
  std::optional<std::vector<AdviceLine>> advice = {};  // nothing: nobody has judged the values
  std::vector<Line> checks = {};                       // of the check-out, as files have them
};

/// The signal types of the outputs, as the record wants them, where the settings were read.
std::vector<std::string> SignalTypes(const Snapshot& snapshot);

/// A whole HTML document that is also well-formed XML, without script and without anything outside it. Each
/// field stands in its tables once, marked by data-field="page.control".
std::string WriteRecord(const RecordInput& input);

/// One line for each field below a line of headings, in UTF-8 with a byte order mark. The separator is a
/// comma, or a semicolon where the comma is the decimal sign, as spreadsheets expect it. What is known of the
/// unit stands first, in lines of the same columns.
std::string WriteRecordCsv(const RecordInput& input);

}  // namespace configuration
