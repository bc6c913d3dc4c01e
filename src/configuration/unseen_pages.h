// The pages without a window: for the values of a device that is not in view, or of the one in view in other
// units or with all digits. They read, show and save as the pages in view do, so that every rule of every
// page holds; nobody is asked and nothing is told but to the caller.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "fields/page_prompts.h"
#include "fields/take_all.h"
#include "shell/page_set.h"

namespace configuration {

class UnseenPages : private shell::MessageSink, private shell::PageWork {
 public:
  /// What the pages are made of; outlives them.
  struct Surroundings {
    const shell::Platform& platform;
    const shell::Settings& settings;
    std::span<const shell::PageEntry> table;
    shell::fLoading& progress;
  };

  /// Texts are those of `strings`, also of the captions. `transactions` are those of whoever has the device
  /// open, so that one which the host left open is ended with the next; they outlive the pages.
  UnseenPages(const Surroundings& surroundings, shell::Strings& strings, host::Transactions& transactions);

  /// Reads all values of the device, whose tree is copied. Throws base::Error with what the pages had to say
  /// when one of them cannot be read.
  void Load(const host::DeviceObjects& device, bool imperial);
  /// Beside those, what no control shows. Throws automation::Error.
  void ReadSettings();

  /// Of all pages, in page and tab order; valid until the next Load.
  fields::FieldList Fields() const { return pages_.Fields(context_.strings); }
  /// As the device names them, by input number from 0; those that nobody knows are empty.
  std::vector<std::string> SensorTypes() const { return selections_.SensorTypes(); }
  /// A page by its class; nothing when it has no values.
  shell::ISubForm* Page(std::string_view pageClass) { return pages_.FindPage(pageClass); }

  /// Puts contents in as a person would; answers what was not taken, with the reasons. Nothing is written.
  std::vector<fields::Wanted> Take(const std::vector<fields::Wanted>& wanted);

  /// How a save ended, by what the device holds.
  struct Saved {
    shell::SaveResult result = shell::SaveResult::kCancelled;
    bool refused = false;   // a rule or the device did not take a value
    std::string told = {};  // why it is not committed, or what is to be known of it all the same
    bool unread = false;    // the pages could not be read again
  };
  /// Writes what was taken, in one transaction; `mayCommit` runs inside it when all is written.
  Saved Save(const std::function<bool()>& mayCommit);

 private:
  /// Asked what only a person could decide, it declines.
  struct Nobody : ui::Prompts {
    ui::Answer Ask(const ui::Prompt& prompt) override;
  };

  void AddMessage(std::string_view message, std::string_view, std::string_view, int level) override;
  void RefuseControl(const ui::Control&, std::string_view) override { refused_ = true; }
  void RunModal(ui::Window&) override {}
  shell::SaveResult InTransaction(std::string_view, std::string_view, const std::function<bool()>&) override {
    return shell::SaveResult::kCancelled;
  }

  shell::fLoading& progress_;
  std::vector<shell::PageEntry> table_;  // of the pages with values
  Nobody nobody_;
  fields::PagePrompts prompts_{nobody_};
  shell::Platform platform_;
  automation::Object none_;  // for pages with values, which do not ask for the host's own objects
  host::Transactions& transactions_;
  host::DeviceObjects device_;
  shell::PageFlags flags_;
  shell::SelectedTypes selections_;
  shell::PageContext context_;
  shell::PageSet pages_;
  std::vector<std::string> told_;  // faults of the work under way
  bool refused_ = false;
};

}  // namespace configuration
