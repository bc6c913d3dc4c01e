// The contract between the main window and its pages. The main window drives every page through ISubForm
// alone; a page reaches everything outside itself through the PageContext that it is created with.
#pragma once

#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "automation/error.h"
#include "base/error.h"
#include "fields/field.h"
#include "host/device_tree.h"
#include "host/transaction.h"
#include "host/verdict.h"
#include "shell/platform.h"
#include "shell/selected_types.h"
#include "shell/settings.h"
#include "shell/strings.h"
#include "ui/form.h"

namespace shell {

/// A value that a page's next save changes without being asked.
struct Adjustment {
  ui::Control* control = nullptr;  // where it is seen: a field, or the group box that says what it is
  std::string device, present;     // as a person reads them
  std::string reason;              // in the language in use
  std::string content;             // of the field after the save, where it is one

  bool operator==(const Adjustment&) const = default;
};

/// Where a page stands in the page table.
struct PagePlace {
  std::string_view pageClass;
  int number;     // index in the table + 1; 0: not in the table
  int helpTopic;  // number in the help file
};

/// One page of the main window. Name() (of the form) is its window-class name, for example "fAlarm". No
/// operation lets an error out: a page reports its own and answers no.
class ISubForm : public ui::Form {
 public:
  explicit ISubForm(const PagePlace& place) : Form(std::string(place.pageClass)), place_(place) {}

  /// Reloads the texts if they are out of date and sets every caption again.
  virtual void ReInitializeStrings() = 0;
  /// Reads all values from the device into the page's fields and clears the changed flag. A page that cannot
  /// read all of them keeps every field, and the flag, as they were.
  void FillValue() {
    if (ReadValue()) ShowValue();
  }
  /// The two halves of FillValue, for pages that are filled together or not at all: reads all values and
  /// changes nothing that the page shows; then shows what was read last.
  virtual bool ReadValue() = 0;
  virtual void ShowValue() = 0;
  /// Checks the fields and writes the changed values; yes when every write succeeded.
  virtual bool WriteValue() = 0;
  /// Reads the values again, for the page's own purposes.
  virtual void RefreshPage() = 0;
  /// Runs when a fill begins to show its values (true) and when it has shown them (false).
  std::function<void(bool begins)> onFill;
  /// Runs after a person has changed something, when the page has taken it.
  std::function<void()> onEdit;
  /// What the next save of the page changes without being asked, as the pages stand now. Asks nobody.
  virtual std::vector<Adjustment> Adjustments() { return {}; }
  /// Every field shows again what the device holds: there is no edit left to be saved.
  virtual void TakenBack() {}
  /// True from an edit until the next fill or committed save.
  virtual bool IsChanged() = 0;
  /// Called on every page after a save has been committed; clears the changed flag.
  virtual void EndWriteValue() = 0;
  /// The page's topic number in the help file.
  int HelpIndex() const { return place_.helpTopic; }
  /// For a page whose controls can be used or not by the functions of inputs and outputs: looks again at
  /// those chosen at this moment, also before they are saved. Asks the host for nothing.
  virtual void FollowFunctions() {}
  /// Called each time the page comes into view.
  virtual void PageShown() { FollowFunctions(); }
  /// Asks the device for what no control shows, unless it is known; ListFields has it from then on. Throws
  /// automation::Error.
  virtual void ReadSettings() {}
  /// Others may have changed them: ReadSettings asks again.
  virtual void SettingsOutdated() {}
  /// The values that the page holds: by default those of the controls that it shows. To be asked again after
  /// a fill, which may bring other boxes.
  virtual std::vector<fields::Field> ListFields(const fields::Translate& translate) {
    return fields::FieldsOf(*this, translate);
  }

 protected:
  int PageNumber() const { return place_.number; }

 private:
  PagePlace place_;
};

/// Flags that all pages share. They belong to the whole window and not to a page: a page clears `writeError`
/// when its save begins, so what it finds set afterwards is its own or that of a rule that it shares with
/// another page. `pageSelected` is never cleared: before the first choice in the list some rules do not run,
/// since nobody can have edited what they look at. A refusal with the flag clear (see fOptions) cancels the
/// save as well: what counts is the answer of the page.
struct PageFlags {
  bool writeError = false;     // a rule or a write failed in the save under way
  bool errorOccurred = false;  // a run-time error was reported since this was last cleared
  bool pageSelected = false;   // the user has selected a page in the list
  bool sessionEnds = false;    // the user signs out: nothing is committed any more
  int lastFilledPage = 0;      // table index + 1 of the page that was filled last
};

/// Takes the messages of all pages; the main window forwards them to the message logger.
class MessageSink {
 public:
  virtual ~MessageSink() = default;
  virtual void AddMessage(std::string_view message, std::string_view routine, std::string_view location,
                          int level) = 0;
  /// The save under way refuses what `control` shows, for this reason; it is marked when the save has ended.
  virtual void RefuseControl(const ui::Control& control, std::string_view reason) = 0;
};

/// Gives a page another page by its class name, for rules between pages; nothing when that page is not
/// loaded.
class PageFinder {
 public:
  virtual ~PageFinder() = default;
  virtual ISubForm* FindPage(std::string_view pageClass) = 0;
  /// Run after filling and after each accepted choice of the outputs page, and by the inputs page for the
  /// conditions that look at inputs: every page looks again.
  virtual void CheckOutputDependencies() = 0;
};

using host::SaveResult;

/// Longer work of a page outside the whole-set operations. Nothing else is taken while it runs.
class PageWork {
 public:
  virtual ~PageWork() = default;
  /// Shows a dialog of the page and waits until it is closed.
  virtual void RunModal(ui::Window& dialog) = 0;
  /// Runs `work` in a host transaction of its own: committed when it answers yes, cancelled otherwise and
  /// when it throws. Every fault is logged with the routine and location. What the device holds decides about
  /// a commit whose answer was lost, and is told where it is not what was written; what was not written
  /// through this tool's own objects stays unknown then. A dialog that RunModal shows may ask for it, too.
  virtual SaveResult InTransaction(std::string_view routine, std::string_view location,
                                   const std::function<bool()>& work) = 0;
};

/// All that a page knows of its surroundings; everything outlives the page.
struct PageContext {
  const Platform& platform;
  const Settings& settings;
  host::DeviceObjects& device;
  Strings& strings;
  MessageSink& messages;
  PageFlags& flags;
  PageFinder& pages;
  SelectedTypes& selections;
  PageWork& work;
  host::Transactions& transactions;
  // The host's own objects, for what works through the host by itself.
  const automation::Object& network;
  const automation::Object& objectServer;
};

/// One line of the page table.
struct PageEntry {
  std::string_view
      listCaption;  // translated, as the title is; the two may be different keys of the string table
  std::string_view title;
  std::string_view pageClass;
  int helpTopic;
  bool showsDeviceValues;  // false: never asked to fill
  std::unique_ptr<ISubForm> (*create)(const PageContext& context, const PagePlace& place);
};

/// The description of an error with its number, and its source where it has one.
std::string DescribeError(const std::exception& error);

/// `description` with the name of the property in front, unless the host has named it already.
std::string NamedFault(std::string_view property, const std::string& description);

/// Runs `work` and repeats a fault in it with the name of the property.
template <class Work>
auto NamingProperty(std::string_view property, Work work) {
  try {
    return work();
  } catch (const automation::Error& error) {
    throw automation::Error(error.Code(), NamedFault(property, error.Description()), error.Source());
  } catch (const base::Error& error) {
    throw base::Error(NamedFault(property, error.what()));
  }
}

/// Reports a run-time error of a page and sets the shared error flags; the page then gives up.
void ReportError(const PageContext& context, std::string_view routine, std::string_view location,
                 const std::exception& error);

}  // namespace shell
