// What is pending: the fields that show something else than the device holds, told at once whoever changed
// them, and marked on their controls; what the next save changes without being asked; and what the last save
// refused, until the field shows something else. What a page showed after its last fill is what the device
// holds. Owned by the main window, which follows `onChange`.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "fields/take_all.h"
#include "shell/page_set.h"

namespace shell {

/// One value that the next save changes, or would have. Valid until the next onChange.
struct Change {
  enum class Kind { kEdited, kRefused, kByItself };

  Kind kind = Kind::kEdited;
  std::size_t page = 0;                  // place in the page table
  const fields::Field* field = nullptr;  // nothing where a page changes it by itself
  const ui::Control* control = nullptr;  // where it is seen; may be nothing
  std::string name;                      // as fields::PathOf
  std::string device, present, unit;     // as a person reads them
  std::string reason;                    // in words; empty for a value that is just edited
};

/// A value before and after, by its field: for whoever tells of a save after the pages were filled again.
struct KeptChange {
  std::string page, field;      // names
  std::string device, present;  // contents
  fields::Kind kind;
};

class Changes {
 public:
  Changes(const Strings& strings, const base::Numbers& numbers) : strings_(strings), numbers_(numbers) {}

  /// Runs after anything below may answer something else.
  std::function<void()> onChange;

  /// Follows a page from now on, which has the place `page` in the table.
  void Attach(std::size_t page, ISubForm& form);
  /// Asks the device for what no control shows, unless it is known. Throws automation::Error.
  void ReadSettings();
  /// Everything is read again, and this when somebody wants it.
  void SettingsOutdated();
  /// A save was committed: what the pages show is what the device holds.
  void Committed();
  /// Other texts or units are in use: marks say what they say in these, and assistive programs are told what
  /// each box is called, caption and unit.
  void Retell();
  void Clear();

  /// Edited and refused values, and those that are changed by themselves.
  std::size_t Count(std::size_t page) const;
  std::size_t Refused(std::size_t page) const;
  /// In page and tab order; what a page changes by itself comes last.
  std::vector<Change> List() const;
  /// The values of all pages that the next save changes: the edited ones, and the fields that are changed by
  /// themselves.
  std::vector<KeptChange> Kept();
  /// The fields of all pages in page and tab order.
  std::vector<const fields::Field*> Fields() const;
  /// Another number whenever the fields themselves are others.
  int Generation() const { return generation_; }
  const fields::Field* Find(std::string_view page, std::string_view control) const;
  /// What the device holds; the present content of a field that is not edited.
  std::string DeviceContent(const fields::Field& field) const;
  bool IsEdited(const fields::Field& field) const;
  /// Whether the field applied to what the device holds; an edit elsewhere may have put another in its place.
  bool AppliedToDevice(const fields::Field& field) const;

  /// A save begins: what an earlier one refused is an edit like any other.
  void ForgetRefused();
  /// The save refused what this field shows. `control`: page class, point, control name.
  void Refuse(std::string_view control, const std::string& reason);

  /// Gives fields these contents, as a person would: rules of the pages may refuse, and nobody is asked.
  /// Answers what was not taken.
  std::vector<fields::Wanted> TakeAll(const std::vector<fields::Wanted>& wanted,
                                      fields::PagePrompts& prompts);
  /// Does `work`, in which many fields change, and judges and tells of it once, also when it throws.
  void Together(const std::function<void()>& work);
  /// After taking back: a page without an edited field is as after its fill.
  void DropUnedited();

 private:
  struct Entry {
    fields::Field field;
    std::string device;   // content
    std::string refused;  // why; empty: it is not
    std::string refusedContent;
    bool edited = false;
    bool applied = true;

    std::string Held() const { return field.held ? field.held() : device; }
    bool Pending() const { return edited || !refused.empty(); }
  };
  struct Page {
    ISubForm* form = nullptr;
    bool filling = false;
    std::vector<Entry> entries;
    std::vector<Adjustment> adjustments;
    std::unordered_map<const ui::Control*, std::size_t> byControl;
  };
  const Entry* EntryOf(const fields::Field& field) const;
  Entry* EntryOf(std::string_view page, std::string_view control);
  void Follow(Page& page);
  void Add(Page& page, fields::Field field);
  void Touched(Page& page, const ui::Control& control);
  /// Answers whether the entry is pending, or was.
  bool Judge(Entry& entry);
  bool JudgeWithoutControl(Page& page);
  void JudgeAll(Page& page);
  /// After any other judging, since what pages change by themselves may depend on it; tells of all.
  void JudgeAdjustments();
  void Show(const Entry& entry) const;
  std::string ValueOf(const fields::Field& field, const std::string& content) const;
  void Told() const {
    if (!together_ && onChange) onChange();
  }

  const Strings& strings_;
  base::Numbers numbers_;
  std::vector<Page> followed_;  // by place in the table
  int generation_ = 0;
  bool together_ = false;
};

}  // namespace shell
