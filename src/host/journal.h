// The journal of a transaction: what was written, and what stood there before. What a device holds is decided
// by it and never by what pages show: the verdict on a commit whose answer was lost, the check after each
// commit and whatever is told of a save all read it. Each property and variable notes its own writes; one
// owner (the main window) has the journal and outlives the device tree that writes into it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"

namespace host {

/// Decimals in which values are read to be compared or to be put together again: the most that hosts give.
inline constexpr int kHighPrecision = 9;
/// What a number read so may differ by from the one it stands for.
inline constexpr double kReadingError = 2e-9;

/// The place of a field that is no part of a record.
inline constexpr std::size_t kWholeText = std::string::npos;

/// A field of a value that was put in.
struct WrittenField {
  std::size_t place;    // of the record, counted from 0; or the whole text
  std::string control;  // page class, point, control name; empty where no control shows it
};

/// One property, or the type of one variable, as a transaction writes it.
struct Written {
  std::string object = {};                // name of the LonMark object or variable
  int number = 0;                         // of the property; 0: the variable's type
  std::string type = {};                  // of the property, without unit suffix; may be empty
  int shown = 0;                          // decimals that the page shows, or kHostPrecision
  std::string before = {};                // the whole text read before the first write
  std::string text = {};                  // the whole text written last
  std::vector<WrittenField> fields = {};  // that were put in; none: the text is one field
  std::function<std::string(bool bind)> read =
      {};                    // reads it again; with `bind`, in a format and precision set anew
  std::string refused = {};  // why the host did not take it, in its own words
  std::string held = {};     // the whole text read by the check after the commit

  std::string Name() const;
};

/// A field of a property to which another text was written than stood there.
struct ChangedField {
  std::string control, before, written;
  std::size_t place;  // of the record, or the whole text
};

std::vector<ChangedField> ChangedFields(const Written& entry);
/// The field's part of the whole text of its property, as it was read at another time.
std::string FieldOf(const ChangedField& field, const std::string& text);
/// The changed fields of a refused entry that the host means: those whose text it quotes, or else all.
std::vector<ChangedField> RefusedFields(const Written& entry);

class Journal {
 public:
  explicit Journal(const base::Numbers& numbers) : numbers_(numbers) {}
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  /// Called by the transaction: from now on writes are noted, and nothing of an earlier transaction is left.
  void Open();
  /// Called by the transaction at its end. What was noted stays until the next one.
  void Close() { open_ = false; }
  bool IsOpen() const { return open_; }

  /// Called by whoever writes. A further write of the same property keeps the text before the first one.
  void Note(Written written);

  /// The host did not take what was noted last of this property.
  void NoteRefused(std::string_view object, int number, std::string_view reason);
  void NoteHeld(std::size_t place, std::string text) { entries_.at(place).held = std::move(text); }

  /// While one lives, whatever is read comes with all the digits that the host gives.
  class WithAllDigits {
   public:
    explicit WithAllDigits(Journal& journal) : journal_(journal) { journal_.allDigits_ = true; }
    WithAllDigits(const WithAllDigits&) = delete;
    WithAllDigits& operator=(const WithAllDigits&) = delete;
    ~WithAllDigits() { journal_.allDigits_ = false; }

   private:
    Journal& journal_;
  };
  bool AllDigits() const { return allDigits_; }

  const std::vector<Written>& Entries() const { return entries_; }
  const base::Numbers& Numbers() const { return numbers_; }

 private:
  base::Numbers numbers_;
  std::vector<Written> entries_;
  bool open_ = false;
  bool allDigits_ = false;
};

}  // namespace host
