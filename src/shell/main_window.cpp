#include "shell/main_window.h"

#include <utility>

#include "host/contract.h"
#include "shell/unit_choice.h"
#include "shell/window_place.h"

namespace shell {
namespace {

constexpr const char* kRefuseToStart = "Refuse to start";
constexpr auto kBlinkInterval = std::chrono::milliseconds(100);
constexpr int kBlinkTime = 500;  // milliseconds

enum Picture { kNoMessage = 1, kErrorPicture = 2, kWarningPicture = 3 };
enum UnitButton { kMetric = 0, kImperial = 1 };

}  // namespace

fMain::fMain(const Platform& platform, const Settings& settings, Strings& strings,
             std::span<const PageEntry> pageTable, Activity& activity, std::function<void()> onEnd)
    : Window(kMainWindow),
      ProgressObject(platform.toolkit, platform.loop, strings),
      platform_(platform),
      pagePrompts_(platform.prompts),
      pagePlatform_(platform.Asking(pagePrompts_)),
      settings_(settings),
      strings_(strings),
      activity_(activity),
      onEnd_(std::move(onEnd)),
      logger_({platform.registry, platform.locale, platform.loop, platform.fileDialog, platform.toolkit,
               settings.settingsKey, settings.applicationFolder,
               [&strings](std::string_view text) { return strings.GetStrings(text); }}),
      journal_(settings.numbers),
      transactions_(network_, journal_),
      context_{pagePlatform_, settings,    device_, strings,       *this,    flags_,
               pages_,        selections_, *this,   transactions_, network_, ObjectServer},
      pages_(pageTable),
      changes_(strings, settings.numbers),
      changesWindow_(pagePlatform_, settings, strings, pages_, changes_),
      findWindow_(pagePlatform_, settings, strings, pages_, changes_),
      language_(context_),
      tmrBlink(platform.loop, kBlinkInterval) {
  iconFile = settings.iconFile;
  logger_.SetFormTitle(settings.title);
  logger_.SetFormIcon(settings.iconFile);
  ConnectHandlers();
  InitStrings();
  BuildLayout();
}

fMain::~fMain() {
  ReleaseHost();
  if (platform_.toolkit) platform_.toolkit->Discard(*this);
}

void fMain::BuildLayout() {
  const auto commands =
      ui::Line({ui::Item(cmdErrorLog), ui::Item(lblCompany), ui::Item(cmdChanges), ui::Item(cmdAdvice),
                ui::GrowX(ui::Empty()), ui::Item(cmdHelp), ui::Item(cmdRefresh), ui::Item(cmdOK),
                ui::Item(cmdCancel), ui::Item(cmdApply)});
  SetLayout(ui::Stack({
      ui::Grow(ui::Line({
          ui::GrowY(ui::Stack({
              ui::GrowX(ui::GrowY(ui::Item(lvwConfig))),
              ui::Box(fraMesure, ui::Stack({ui::Item(optUnit[kMetric]), ui::Item(optUnit[kImperial])})),
          })),
          ui::Grow(ui::Stack({
              ui::GrowX(ui::Line({ui::Item(lblTitle), ui::Item(cmdTakeBack), ui::GrowX(ui::Empty()),
                                  ui::Item(lblLocation), ui::Item(txtLocation)})),
              ui::Grow(ui::Item(Picture1)),
          })),
      })),
      ui::GrowX(commands),
  }));
}

void fMain::ConnectHandlers() {
  lblTitle.SetHeading(true);
  cmdErrorLog.SetPicture(kNoMessage);
  txtLocation.SetColumns(32);
  txtLocation.onChange = [this] {
    locationChanged_ = true;
    ShowPending();
  };
  lvwConfig.onSelect = [this](std::size_t index) {
    flags_.pageSelected = true;
    Command("ShowPage", [this, index] { ShowPage(index); });
  };
  cmdOK.onClick = [this] { Command("OK", [this] { Ok(); }); };
  cmdApply.onClick = [this] { Command("Apply", [this] { Apply(); }); };
  cmdRefresh.onClick = [this] {
    Command("Refresh", [this] {
      changes_.SettingsOutdated();
      if (!Refresh("Refresh")) return;
      for (const auto& companion : companions_) companion->Refreshed();
    });
  };
  cmdHelp.onClick = [this] { Command("Help", [this] { Help(); }); };
  cmdErrorLog.onClick = [this] { logger_.ShowMe(); };
  cmdCancel.onClick = [this] { Close(); };
  cmdChanges.onClick = [this] { changesWindow_.ShowMe(); };
  cmdTakeBack.onClick = [this] { TakeBackPage(); };
  cmdTakeBack.SetVisible(false);
  changes_.onChange = [this] { ShowPending(); };
  changesWindow_.onGoTo = [this](const Change& change) {
    if (change.control) GoTo(const_cast<ui::Control&>(*change.control));
  };
  changesWindow_.onTakeBack = [this](const auto& fields) { TakeBack(fields); };
  changesWindow_.onApply = [this] { cmdApply.Click(); };
  findWindow_.onGoTo = [this](const fields::Field& field) { GoTo(*field.cursor); };
  for (std::size_t i = 0; i < optUnit.Size(); ++i) {
    optUnit[i].onClick = [this] { Command("Unit", [this] { ChooseUnits(); }); };
  }
  defaultButton = &cmdOK;
  cancelButton = &cmdCancel;
  onQueryClose = [this] { return MayClose(); };
  onClosed = [this] { EndPlugIn(); };
  onQueryEnd = [this] { return WhyNotEnd(); };
  onSessionEnd = [this] {
    flags_.sessionEnds = true;
    EndPlugIn();
  };
  onActivate = [this] { Activated(); };
  logger_.AddMessageEvent = [this](int level) { LoggerReported(level); };
  logger_.ClearEvent = [this] { EndBlink(kNoMessage); };
  tmrBlink.onTick = [this] { Blink(); };
}

void fMain::InitStrings() {
  strings_.ReloadStrings();
  if (platform_.toolkit) platform_.toolkit->UseFont(strings_.Font());
  const std::pair<ui::Control*, std::string_view> captions[] = {
      {&cmdOK, "&OK"},
      {&cmdApply, "Apply"},
      {&cmdHelp, "Help"},
      {&cmdCancel, "Cancel"},
      {&cmdRefresh, "Refresh"},
      {&cmdErrorLog, "Error Log"},
      {&fraMesure, "Measurement Units"},
      {&optUnit[kImperial], "Imperial"},
      {&optUnit[kMetric], "Metric"},
      {&lblLocation, "Location"},
  };
  for (const auto& [control, caption] : captions) control->SetText(Text(caption));
  cmdApply.SetTip(Text("Will apply the changes for all pages"));
  cmdHelp.SetTip(Text("Click here to see the Help File"));
  cmdRefresh.SetTip(Text("Reads all values from the device again"));
  cmdErrorLog.SetTip(Text("Shows the messages of this session"));
  lvwConfig.SetColumns({Text("Menu")});
  lvwConfig.SetRoom(" (88) !");
  cmdChanges.SetTip(Text("Shows what the next save changes"));
  cmdChanges.SetRoom(strings_.GetStrings("%s1% changes on %s2% pages", {"88", "88"}));
  cmdTakeBack.SetText(Text("Take back this page"));
  cmdTakeBack.SetTip(Text("Every field of this page gets the value of the device again"));
  BuildMenu();
  logger_.InitStrings();
  ProgressObject.InitStrings();
  changesWindow_.InitStrings();
  findWindow_.InitStrings();
  for (const auto& companion : companions_) companion->InitStrings();
}

void fMain::Add(std::unique_ptr<Companion> companion) {
  companions_.push_back(std::move(companion));
  companions_.back()->InitStrings();
  BuildMenu();
}

void fMain::ReInitializeStrings() {
  InitStrings();
  const Strings::Hold hold(strings_);
  pages_.ReInitializeStrings();
  ListPages();
}

void fMain::ListPages() {
  std::vector<ui::ListView::Row> rows;
  for (std::size_t i = 0; i < pages_.Count(); ++i) {
    const PageEntry& entry = pages_.Table()[i];
    rows.push_back({std::string(entry.pageClass), {Text(entry.listCaption)}, 0});
  }
  lvwConfig.SetRows(std::move(rows));
  if (pages_.Count() > 0) ShowPage(shownPage_);
  changes_.Retell();
}

void fMain::Command(std::string_view routine, const std::function<void()>& work) {
  if (activity_.Busy() || ending_ || Refused()) return;
  const Activity::Scope running(activity_);
  SetAcceptsInput(false);
  try {
    work();
  } catch (const std::exception& error) {
    Log(DescribeError(error), routine, logger::kError);
  }
  if (!ending_) SetAcceptsInput(true);
}

void fMain::RunModal(ui::Window& dialog) {
  Command("RunModal", [&] {
    if (platform_.toolkit && !dialog.GetWindowPeer()) platform_.toolkit->Realize(dialog);
    dialog.Show();
    dialogWaits_ = true;
    platform_.loop.RunUntil([&dialog] { return !dialog.Visible(); });
  });
  dialogWaits_ = false;
}

void fMain::CreatePages() {
  pages_.CreatePages(context_, [this](ISubForm& page) {
    FollowPages(Picture1.Forms().size(), page);
    Picture1.Embed(page);
  });
}

void fMain::Prepare() {
  CreatePages();
  ReInitializeStrings();
  MakeNative();
}

void fMain::ProcessDeviceCommand(const automation::Object& network) {
  network_ = network;
  Load();
}

void fMain::ProcessLonMarkObjectCommand(const automation::Object& network, std::string_view blockName) {
  blockName_ = blockName;
  ProcessDeviceCommand(network);
}

void fMain::Load() {
  Command("Load", [this] {
    const Strings::Hold hold(strings_);  // loaded when this window was made
    try {
      RestoreUnitChoice();
      ProgressObject.ShowFLoading(Text("Loading..."), Text("Getting CP values"), 0);
      host::LoadDeviceObjects(ObjectServer, device_, journal_);
      NamingProperty("nviOccCmd", [this] { host::CheckIfOccupency(device_); });
      LoadLocation();
      if (pages_.Count() == 0) CreatePages();
      pages_.ReInitializeStrings();
      changes_.Together([this] { pages_.LoadAllPages(context_, ProgressObject); });
      lblCompany.SetText(settings_.manufacturerName);
      title_ = settings_.title + " - " + device_.Device.Text(host::kName) +
               (blockName_.empty() ? "" : " - " + blockName_);
      SetTitle(WindowTitle());
      ListPages();
      for (const auto& companion : companions_) companion->Loaded();
    } catch (...) {
      tag_ = kRefuseToStart;
      ProgressObject.HideFLoading();
      ReleaseHost();  // only the log is still needed, and the device can be opened from elsewhere
      throw;
    }
  });
}

void fMain::MakeNative() {
  if (platform_.toolkit && !GetWindowPeer()) platform_.toolkit->Realize(*this);
  RestorePlace(*this, platform_.registry, settings_);
}

void fMain::ShowWindow() {
  Show();
  BringToFront();
}

void fMain::RestoreUnitChoice() {
  device_.IsImperial =
      ReadUnitChoice(platform_.registry, platform_.locale, settings_.numbers, device_.IsImperial);
  optUnit[device_.IsImperial ? kImperial : kMetric].Select();
}

void fMain::ShowPage(std::size_t index) {
  shownPage_ = index;
  const PageEntry& entry = pages_.Table()[index];
  lvwConfig.SetSelection({index});
  Picture1.Show(pages_.Page(index));
  lblTitle.SetText(strings_.FormatStrings("%s% Configuration", {std::string(entry.title)}));
  pages_.Page(index).PageShown();
  ShowPending();
}

void fMain::Help() {
  const int topic = pages_.Count() > 0 ? pages_.Page(shownPage_).HelpIndex() : 0;
  ShowHelp(platform_, settings_, strings_, topic);
}

void fMain::ChooseLanguage() {
  if (activity_.Busy() || ending_) return;
  if (language_.Open()) Command("Language", [this] { ReInitializeStrings(); });
}

void fMain::ChooseUnits() {
  const bool imperial = optUnit[kImperial].Selected();
  if (imperial == device_.IsImperial) return;
  const ui::Answer answer =
      platform_.prompts.Ask({Text("If you change the Measurement Units now all unsaved data will be lost.") +
                                 "\r\n" + Text("Are you sure you want to change now?"),
                             settings_.title, ui::Buttons::kOkCancel, ui::Icon::kExclamation});
  if (answer != ui::Answer::kOk) {
    optUnit[device_.IsImperial ? kImperial : kMetric].Select();
    return;
  }
  ReadAgain(imperial);
}

bool fMain::ReadAgain(bool imperial) {
  const bool former = device_.IsImperial;
  device_.IsImperial = imperial;
  const bool read = Refresh(former == imperial ? "Refresh" : "Unit", PageSet::Showing::kAllOrNothing);
  if (read && former != imperial) {
    changes_.Retell();
    StoreUnitChoice(platform_.registry, imperial);
  }
  // The pages still show the former units, so they must also be written in them.
  if (!read) device_.IsImperial = former;
  optUnit[device_.IsImperial ? kImperial : kMetric].Select();
  return read;
}

void fMain::Activated() {
  if (std::exchange(activated_, true)) return;
  LeaveTopmost();  // where whoever brought it up may have put it
  if (Refused()) Close();
}

void fMain::EndPlugIn() {
  if (std::exchange(ending_, true)) return;
  if (Refused()) {
    // The reason stands in the logger only: it stays until the user has read it.
    logger_.onClosed = [this] { onEnd_(); };
    logger_.ShowMe();
  } else {
    KeepPlace(*this, platform_.registry, settings_);
    logger_.Hide();
    changesWindow_.Hide();
    findWindow_.Hide();
    for (const auto& companion : companions_) companion->Hide();
  }
  onEnd_();
}

void fMain::ReleaseHost() {
  Picture1.Clear();
  lvwConfig.SetRows({});
  pages_.Clear();
  changes_.Clear();
  lastSave_ = {};
  device_ = {};
  ObjectServer = {};
  network_ = {};
}

void fMain::AddMessage(std::string_view message, std::string_view routine, std::string_view location,
                       int level) {
  logger_.AddMessage(message, routine, location, level);
}

void fMain::LoggerReported(int level) {
  if (level == logger::kInformation) return;
  cmdErrorLog.SetPicture(level == logger::kExclamation ? kWarningPicture : kErrorPicture);
  if (level == logger::kExclamation) tmrBlink.Start();
}

void fMain::EndBlink(int picture) {
  tmrBlink.Stop();
  blinkCounter_ = 0;
  cmdErrorLog.SetPicture(picture);
}

void fMain::Blink() {
  blinkCounter_ += static_cast<int>(tmrBlink.Interval().count());
  if (blinkCounter_ >= kBlinkTime) EndBlink(kErrorPicture);
}

}  // namespace shell
