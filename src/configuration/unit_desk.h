// What is done with an open unit: filled in, saved with a backup, recorded. By the copying to many units, and
// for scripts; whoever has one may work on one unit after the other.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "configuration/backups.h"
#include "configuration/open_unit.h"
#include "configuration/record.h"

namespace configuration {

class UnitDesk {
 public:
  /// Both outlive it.
  UnitDesk(const UnseenPages::Surroundings& surroundings, const shell::Strings& strings);

  const UnseenPages::Surroundings& Surroundings() const { return surroundings_; }
  const Backups& Kept() const { return backups_; }

  /// Puts the differences in as a person would; answers why the unit does not take them, a line for each, in
  /// which case it is to be closed or filled anew. Nothing of the device changes.
  std::string Fill(OpenUnit& unit, const std::vector<Difference>& differences) const;

  struct Saved {
    UnseenPages::Saved save;
    Document before;   // without entries when no backup was kept
    std::string told;  // all there is to tell, in the language in use
    std::vector<WrittenValue> values;
    bool notKept = false;  // the host confirmed the save, and the unit, read again, holds something else
  };
  /// Saves what was filled in. The former values are kept first, inside the transaction; whether it goes on
  /// without a backup is the user's choice.
  Saved Save(OpenUnit& unit, const std::function<bool()>& mayCommit);
  /// Saves what Fill has put in of a document. Saving a page may reset a field of another one by its rules:
  /// what is not as in the document then is filled in and saved again. Unknown: the unit holds neither all
  /// nor nothing of it.
  Saved SaveAll(OpenUnit& unit, const Document& document, const Selection& selection,
                const std::function<bool()>& mayCommit);

  Document ToDocument(const Snapshot& snapshot) { return names_.ToDocument(snapshot); }

  /// The unit as it is now, as HTML or as CSV. `earlier` without entries: there is none.
  std::string Record(OpenUnit& unit, const Document& earlier, bool table) const;

 private:
  std::string Text(std::string_view english) const { return strings_.GetStrings(english); }

  UnseenPages::Surroundings surroundings_;
  const shell::Strings& strings_;
  Backups backups_;
  EnglishNames names_;
};

/// The value pages as a person knows them, and in front of them the main window.
std::vector<PageTitle> TitlesOf(std::span<const shell::PageEntry> table, const shell::Strings& strings);

/// A record of these values, which were read from the unit, with what was kept of it. `find` gives its
/// fields; all outlive the answer.
RecordInput RecordOf(const UnseenPages::Surroundings& surroundings, const shell::Strings& strings,
                     const Snapshot& snapshot, const std::vector<PageTitle>& titles,
                     const host::SessionRequest& unit, fields::FindField find);

/// "No save without a backup" is chosen.
bool StopsWithoutBackup(base::Registry& registry, const shell::Settings& settings);
void StopWithoutBackup(base::Registry& registry, const shell::Settings& settings, bool stop);

}  // namespace configuration
