// The loaded pages in table order and the operations on all of them: loading, saving in one host transaction
// (everything or nothing), refreshing, and asking for changes. Owned by the main window.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "shell/page.h"
#include "shell/progress_window.h"

namespace shell {

/// The class of the main window, whose location is a value like those of the pages.
inline constexpr const char* kMainWindow = "fMain";

/// A control by the class of its page and its own name, of "fPID.txtPIDTemp(0)"; both empty without a point.
struct ControlName {
  explicit ControlName(std::string_view both);

  std::string page, control;
};

/// What a page is called in the language in use: its line in the list of pages, without blanks around it.
std::string PageName(const PageEntry& entry, const Strings& strings);
/// The same by its class; of a page that is not in the table the class itself.
std::string PageName(std::span<const PageEntry> table, std::string_view pageClass, const Strings& strings);

/// For the fields of pages: texts in the language in use, whenever they are asked for.
fields::Translate TranslateBy(const Strings& strings);

class PageSet : public PageFinder {
 public:
  explicit PageSet(std::span<const PageEntry> table) : table_(table) {}

  std::span<const PageEntry> Table() const { return table_; }
  std::size_t Count() const { return pages_.size(); }
  ISubForm& Page(std::size_t index) const { return *pages_.at(index); }
  ISubForm* FindPage(std::string_view pageClass) override;
  void CheckOutputDependencies() override;

  /// Creates every page of the table in order, without a value, and lets `embed` put it into the main window.
  /// Throws when a page cannot be used.
  void CreatePages(const PageContext& context, const std::function<void(ISubForm&)>& embed);

  /// Fills every page. Throws when the host refuses a transaction or a page could not read its values; the
  /// transaction is ended in any case.
  void LoadAllPages(const PageContext& context, fLoading& progress);

  /// Asks every page to write, also after one said no, then commits when all said yes, and at the end
  /// `mayCommit`; cancels otherwise. A host that refuses to begin, cancel or commit is logged.
  SaveResult SaveAllPages(const PageContext& context, fLoading& progress,
                          const std::function<bool()>& mayCommit);

  /// Lets every value page read its values again and show them, which drops unsaved edits: those that could
  /// read, or all of them or none. Answers the captions of those that could not, in the language in use; they
  /// show what they did before, and faults are logged.
  enum class Showing { kWhatWasRead, kAllOrNothing };
  std::vector<std::string> RefreshAllPages(const PageContext& context, fLoading& progress, Showing showing);

  bool AnyPageChanged() const;
  /// The fields of all value pages in the order of the table, each page's in tab order, as the pages stand
  /// now.
  fields::FieldList Fields(const Strings& strings) const;
  void ReInitializeStrings();
  /// Ends the save on every page after its commit.
  void EndWriteValue();
  void Clear() { pages_.clear(); }

 private:
  bool Read(std::size_t index);
  void Show(std::size_t index);

  std::span<const PageEntry> table_;
  std::vector<std::unique_ptr<ISubForm>> pages_;
};

}  // namespace shell
