// The tool's only top-level window while a device is being configured: the list of pages beside the page in
// view, the location, the unit choice and the buttons. It owns the device object tree, the pages, the
// progress window and the message logger; the automation class creates it and hands it the host's objects.
// Every command runs to its end before the next one is taken.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "fields/page_prompts.h"
#include "host/session.h"
#include "logger/message_logger.h"
#include "shell/activity.h"
#include "shell/changes.h"
#include "shell/companion.h"
#include "shell/fChanges.h"
#include "shell/fFind.h"
#include "shell/fLanguage.h"
#include "shell/last_save.h"
#include "shell/page_set.h"
#include "shell/platform.h"
#include "ui/form.h"

namespace shell {

class fMain : public ui::Window, private MessageSink, private PageWork {
 public:
  /// `activity` counts the commands here and everything else that must not be overtaken. `onEnd` runs when
  /// the plug-in's end begins, and again when the log of a refused start has been read; it may not destroy
  /// the window.
  fMain(const Platform& platform, const Settings& settings, Strings& strings,
        std::span<const PageEntry> pageTable, Activity& activity, std::function<void()> onEnd);
  ~fMain() override;

  automation::Object ObjectServer;  // the host's object-model root
  host::SessionRequest Opened;      // how the device was opened, for further sessions
  fLoading ProgressObject;

  /// Makes the pages and the native window, hidden and without a value, ahead of the command that loads them.
  /// Nothing of the host is asked, so all text is in English.
  void Prepare();
  /// Makes the native window, hidden, and puts it where it last was. Throws base::Error when the system
  /// cannot.
  void MakeNative();

  /// Load the device that the object server has opened; the window is to be shown then. `network` carries the
  /// transactions. A failure is logged, everything of the host is let go of, and the window closes itself on
  /// its first activation; nothing is thrown.
  void ProcessDeviceCommand(const automation::Object& network);
  void ProcessLonMarkObjectCommand(const automation::Object& network, std::string_view blockName);

  void Add(std::unique_ptr<Companion> companion);
  std::vector<std::unique_ptr<Companion>>& Companions() { return companions_; }
  /// Makes the menu anew: what it shows as chosen is another.
  void BuildMenu();

  /// The window is done with: no command is taken any more. What it holds of the host it lets go of with its
  /// own end. Harmless when called again.
  void EndPlugIn();
  bool Ending() const { return ending_; }
  /// Loading failed.
  bool Refused() const { return !tag_.empty(); }
  /// Ending, and the reason of a refused start has been read.
  bool Closed() const { return ending_ && !(Refused() && logger_.Visible()); }
  /// "Refuse to start" when loading failed.
  const std::string& Tag() const { return tag_; }

  void AddMessage(std::string_view message, std::string_view routine, std::string_view location,
                  int level) override;
  void RefuseControl(const ui::Control& control, std::string_view reason) override;
  void ShowWindow();
  void InitStrings();
  void ReInitializeStrings();
  /// Reads the location from the device again; an edit of it is dropped.
  void RefreshLocationString();

  logger::fMessage& Logger() { return logger_; }
  PageSet& Pages() { return pages_; }
  fLanguage& LanguagePage() { return language_; }
  PageFlags& Flags() { return flags_; }
  host::DeviceObjects& Device() { return device_; }
  /// The input and output functions chosen at this moment.
  SelectedTypes& Selections() { return selections_; }
  /// What stands between the pages and the person.
  fields::PagePrompts& Prompts() { return pagePrompts_; }
  /// What is pending.
  Changes& Pending() { return changes_; }
  fChanges& ChangesWindow() { return changesWindow_; }
  fFind& FindWindow() { return findWindow_; }

  // For the companions.
  /// Beside the count of changes, for the companion that advises.
  ui::Button& AdviceButton() { return cmdAdvice; }
  const PageContext& Context() const { return context_; }
  bool Locked() const { return locked_; }
  /// An entry of the menu with the key that does the same, shown as the user's language writes it.
  ui::MenuItem WithKey(const std::string& caption, const std::string& key,
                       std::function<void()> onClick) const;
  /// Runs one command unless another is under way, and reports its failure.
  void Command(std::string_view routine, const std::function<void()>& work);
  /// Lets all pages read again, in these units; drops unsaved edits. No, with the reason in the log, when not
  /// all could; a change of units is then undone.
  bool ReadAgain(bool imperial);
  /// Brings the control's page up and the focus to it.
  void GoTo(ui::Control& control);
  /// The location, as a field like those of the pages.
  fields::Field LocationField();
  /// Asks the device for the location, which no refresh does; an edit of it stays. Throws automation::Error.
  void ReadLocation();
  /// Before the save under way: a save writes the location first, before its transaction, and one that is
  /// then refused leaves it written.
  const std::string& FormerLocation() const { return formerLocation_ ? *formerLocation_ : storedLocation_; }

 private:
  /// A message of the main window itself.
  void Log(std::string_view message, std::string_view routine, int level) {
    AddMessage(message, routine, "Main", level);
  }
  std::string Text(std::string_view english) const { return strings_.GetStrings(english); }

  // What is pending, in main_window_changes.cpp.
  void FollowPages(std::size_t index, ISubForm& page);
  void ShowPending();
  ui::ContextMenu MenuOf(std::size_t page, ui::Control& control);
  void TakeBack(const std::vector<const fields::Field*>& fields);
  std::string WhyNotTaken(const std::vector<fields::Wanted>& left) const;
  void TellNotTaken(const std::string& told);
  void TakeBackPage();
  void TakeBackLastSave();
  std::string WhyNotTakeBack();
  /// Whether the save may go on: the person has seen the changes, or does not want to.
  bool Reviewed();
  void TellSave(const std::vector<host::Difference>& differences);
  void MarkRefused();
  void SetLocked(bool locked);
  void ChooseReview(bool review);
  std::string WindowTitle() const;
  void RunModal(ui::Window& dialog) override;
  SaveResult InTransaction(std::string_view routine, std::string_view location,
                           const std::function<bool()>& work) override;
  void BuildLayout();
  void ConnectHandlers();
  SaveResult Transact(std::string_view routine, std::string_view location, const std::function<bool()>& work);

  /// Makes the pages, without a caption or value.
  void CreatePages();
  /// The list of pages, and the names of their boxes, in the language and units in use.
  void ListPages();
  void Load();
  void LoadLocation();
  void RestoreUnitChoice();
  void ShowPage(std::size_t index);
  /// Runs the leave check of the box that the user is in; the Enter key does not leave it.
  bool CommitEdit();
  void Ok();
  void Apply();
  SaveResult Save(std::string_view routine);
  /// Answers whether the device holds the location that is shown; why not, and that nothing was applied, is
  /// logged.
  bool WriteLocation(std::string_view routine);
  /// Answers whether all pages show what the device holds now; those that do not are named in the log.
  bool Refresh(std::string_view routine, PageSet::Showing showing = PageSet::Showing::kWhatWasRead);
  void Help();
  bool Unsaved();
  /// What keeps the session from ending, in words; empty when nothing does.
  std::string WhyNotEnd();
  bool MayClose();
  void ChooseUnits();
  void ChooseLanguage();
  void Activated();
  void LoggerReported(int level);
  void Blink();
  void EndBlink(int picture);
  void ReleaseHost();

  const Platform& platform_;
  fields::PagePrompts pagePrompts_;
  Platform pagePlatform_;  // asks through them
  const Settings& settings_;
  Strings& strings_;
  Activity& activity_;
  std::function<void()> onEnd_;
  logger::fMessage logger_;
  automation::Object network_;
  std::string blockName_;
  host::Journal journal_;
  host::Transactions transactions_;
  host::DeviceObjects device_;
  PageFlags flags_;
  SelectedTypes selections_;
  PageContext context_;
  PageSet pages_;
  Changes changes_;
  fChanges changesWindow_;
  fFind findWindow_;
  LastSave lastSave_;
  std::vector<std::pair<std::string, std::string>> refusals_;  // controls and reasons of the save under way
  std::string title_;                                          // without what is added while it is locked
  bool locked_ = false;
  bool review_ = false;
  fLanguage language_;
  std::size_t shownPage_ = 0;
  std::string tag_;
  bool activated_ = false;
  bool ending_ = false;
  bool dialogWaits_ = false;  // a page's dialog is open and nothing else is under way
  bool locationChanged_ = false;
  std::string storedLocation_;
  std::optional<std::string> formerLocation_;  // another was written, but nothing committed since
  int blinkCounter_ = 0;                       // milliseconds

  ui::ListView lvwConfig{*this, "lvwConfig"};
  ui::Label lblTitle{*this, "lblTitle"};
  ui::Button cmdTakeBack{*this, "cmdTakeBack"};
  ui::PageArea Picture1{*this, "Picture1"};
  ui::Label lblLocation{*this, "lblLocation"};
  ui::TextBox txtLocation{*this, "txtLocation"};
  ui::Frame fraMesure{*this, "fraMesure"};
  ui::OptionGroup<2> optUnit{*this, "optUnit"};  // 0 metric, 1 imperial
  ui::Label lblCompany{*this, "lblCompany"};
  ui::Button cmdChanges{*this, "cmdChanges"};
  ui::Button cmdAdvice{*this, "cmdAdvice"};
  ui::Button cmdErrorLog{*this, "cmdErrorLog"};
  ui::Button cmdHelp{*this, "cmdHelp"};
  ui::Button cmdRefresh{*this, "cmdRefresh"};
  ui::Button cmdOK{*this, "cmdOK"};
  ui::Button cmdCancel{*this, "cmdCancel"};
  ui::Button cmdApply{*this, "cmdApply"};
  ui::Timer tmrBlink;
  std::vector<std::unique_ptr<Companion>> companions_;
};

}  // namespace shell
