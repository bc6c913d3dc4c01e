#include "configuration/desk.h"

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "base/files.h"
#include "base/text.h"
#include "configuration/other_unit.h"
#include "host/contract.h"
#include "logger/message_logger.h"

namespace configuration {
namespace {

constexpr std::string_view kLocation = "Configuration";
constexpr std::string_view kMainWindow = "fMain";
constexpr const char* kStopChoice = "StopWithoutBackup";
constexpr unsigned kAskBeforeReplacing = 0x2;  // OFN_OVERWRITEPROMPT

}  // namespace

Desk::Desk(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
           shell::Strings& strings, std::span<const shell::PageEntry> table)
    : main_(main),
      platform_(platform),
      settings_(settings),
      strings_(strings),
      table_(table),
      english_([] { return automation::Object(); }),
      location_(main.LocationField()),
      backups_(settings.documentsFolder),
      saveAs_(platform, settings, strings),
      pick_(platform, settings, strings),
      record_(platform, settings, strings),
      differences_(platform, settings, strings, table) {}

std::vector<ui::MenuItem> Desk::FileMenu() {
  const auto item = [this](std::string_view caption, std::string_view routine, void (Desk::*work)()) {
    return ui::MenuItem{Text(caption), [=, this] { Do(routine, [=, this] { (this->*work)(); }); }, {}};
  };
  const bool stops = base::ReadRegistryString(platform_.registry, base::RegistryRoot::kCurrentUser,
                                              settings_.settingsKey, kStopChoice) == "1";
  ui::MenuItem stop{Text("&No save without a backup"), [this, stops] { StopWithoutBackup(!stops); }, {}};
  stop.checked = stops;
  return {{},
          item("Save &configuration as...", "SaveConfiguration", &Desk::SaveAs),
          item("&Open configuration...", "OpenConfiguration", &Desk::OpenFile),
          item("Compare with &unit...", "CompareUnit", &Desk::CompareUnit),
          item("&Backups...", "Backups", &Desk::ShowBackups),
          item("&Record...", "Record", &Desk::SaveRecord),
          std::move(stop),
          {}};
}

void Desk::InitStrings() {
  saveAs_.InitStrings();
  record_.InitStrings();
  differences_.InitStrings();
}

void Desk::Hide() {
  saveAs_.Hide();
  pick_.Hide();
  record_.Hide();
  differences_.Hide();
}

std::string Desk::Words(const std::exception& error) const {
  if (const auto* worded = dynamic_cast<const base::WordedError*>(&error))
    return shell::ReplacePlaceholders(Text(worded->Text()), worded->Arguments());
  if (const auto* step = dynamic_cast<const host::StepError*>(&error)) {
    std::string words = strings_.FormatStrings(step->what(), step->Arguments());
    try {
      std::rethrow_if_nested(*step);
    } catch (const std::exception& reason) {
      words += "\r\n" + shell::DescribeError(reason);
    }
    return words;
  }
  return shell::DescribeError(error);
}

void Desk::Do(std::string_view routine, const std::function<void()>& work) {
  main_.Command(routine, [&] {
    try {
      work();
    } catch (const std::exception& error) {
      const std::string words = Words(error);
      main_.AddMessage(words, routine, kLocation, logger::kError);
      platform_.prompts.Ask({words, settings_.title, ui::Buttons::kOk, ui::Icon::kExclamation});
    }
  });
}

// --- what is compared and kept ---

std::string Desk::DeviceName() const { return main_.Opened.deviceName; }

Head Desk::MakeHead() {
  if (identity_.programId.empty()) {
    const automation::Object identity = main_.Device().Device.Child(host::kInterface);
    identity_.version = identity.Text(host::kVersion);
    identity_.programId = identity.Text(host::kProgramId);
  }
  Head head = identity_;
  head.toolVersion = settings_.version;
  head.network = main_.Opened.networkName;
  head.device = DeviceName();
  head.location = main_.LocationField().held();
  head.time = UtcText(std::time(nullptr));
  head.imperial = main_.Device().IsImperial;
  head.user = settings_.userName;
  return head;
}

std::unique_ptr<UnseenPages> Desk::NewPages(shell::Strings& strings) {
  return std::make_unique<UnseenPages>(
      UnseenPages::Surroundings{platform_, settings_, table_, main_.ProgressObject}, strings);
}

std::string Desk::EnglishName(std::string_view page, std::string_view control) {
  const fields::Field* shown = main_.Pending().Find(page, control);
  if (!captions_) captions_ = NewPages(english_);
  shell::ISubForm* form = captions_->Page(page);
  if (!form || (shown && !shown->control)) return shown ? shown->source : std::string(control);
  if (const auto* option = dynamic_cast<const ui::OptionButton*>(form->Find(std::string(control) + "(0)")))
    return PathOf(fields::CaptionOfGroup(*option));
  const ui::Control* named = form->Find(control);
  return named ? PathOf(fields::CaptionOf(*named)) : std::string(control);
}

Document Desk::ToFile(const Snapshot& snapshot) {
  return ToDocument(snapshot, [this](auto page, auto control) { return EnglishName(page, control); });
}

std::vector<Held> Desk::Shown(bool withEdits) {
  shell::Changes& pending = main_.Pending();
  std::vector<Held> held;
  held.push_back({&location_, withEdits ? location_.content() : location_.held(), true});
  for (const fields::Field* field : pending.Fields()) {
    const std::string content = field->stored ? field->stored() : pending.DeviceContent(*field);
    held.push_back({field, content, withEdits ? field->applies() : pending.AppliedToDevice(*field)});
  }
  if (!withEdits) return held;
  for (const shell::KeptChange& change : pending.Kept()) {
    const fields::Field* field = pending.Find(change.page, change.field);
    std::ranges::find(held, field, &Held::field)->content = change.present;
  }
  return held;
}

// The settings and the location are in no unit system: those that are known are taken.
std::vector<Held> Desk::Unseen(const std::vector<fields::Field>& fields) {
  std::vector<Held> held;
  for (const Held& shown : Shown(false)) {
    if (shown.field == &location_ || !shown.field->control) held.push_back(shown);
  }
  for (const fields::Field& field : fields) {
    if (field.control) held.push_back({&field, field.content(), field.applies()});
  }
  return held;
}

Snapshot Desk::Take(bool withEdits) {
  const host::DeviceObjects& device = main_.Device();
  shell::Changes& pending = main_.Pending();
  pending.ReadSettings();
  const auto exact = NewPages(strings_);
  {
    const host::Journal::WithAllDigits digits(main_.Context().transactions.GetJournal());
    exact->Load(device, main_.Context().network, device.IsImperial);
  }
  Snapshot snapshot{MakeHead(), {}};
  const std::vector<fields::Field> fields = exact->Fields();
  for (const Held& held : Shown(withEdits)) {
    const fields::Field& field = *held.field;
    const auto read = std::ranges::find_if(fields, [&field](const fields::Field& one) {
      return one.page == field.page && one.name == field.name;
    });
    if (read == fields.end() || (withEdits && pending.IsEdited(field))) {
      if (held.applies) snapshot.values.push_back(ValueOf(field, settings_.numbers, held.content));
    } else if (withEdits ? held.applies : read->applies()) {
      const std::string exact = read->stored ? read->stored() : read->content();
      const bool same = EqualAsShown(settings_.numbers, held.content, exact);
      const std::string content = same ? WithDigits(settings_.numbers, held.content, exact) : exact;
      snapshot.values.push_back(
          ValueOf(field, settings_.numbers, withEdits && !same ? held.content : content));
    }
  }
  return snapshot;
}

// --- the File menu ---

void Desk::SaveAs() {
  if (!saveAs_.Ask(main_.Pages().AnyPageChanged())) return;
  Snapshot snapshot = Take(saveAs_.WithEdits());
  snapshot.head.note = saveAs_.Note();
  const auto file = platform_.fileDialog.AskSaveFile(
      {Text("Configurations (*.kvtarn)|*.kvtarn|All files (*.*)|*.*"),
       settings_.documentsFolder + "\\" + SafeName(DeviceName()) + kFileEnding, kAskBeforeReplacing});
  if (!file) return;
  base::ReplaceFile(base::PathOf(*file), Write(ToFile(snapshot)));
  main_.AddMessage(shell::ReplacePlaceholders(Text("%s1% values were saved in %s2%"),
                                              {std::to_string(snapshot.values.size()), *file}),
                   "SaveConfiguration", kLocation, logger::kInformation);
}

void Desk::OpenFile() {
  const auto file = platform_.fileDialog.AskOpenFile(
      {Text("Configurations (*.kvtarn)|*.kvtarn|All files (*.*)|*.*"), settings_.documentsFolder + "\\", 0});
  if (!file) return;
  const Document document = Read(base::ReadFile(base::PathOf(*file), kLargestFile), MakeHead().programId);
  CompareWith(document, shell::ReplacePlaceholders(Text("Differences from %s1%"), {*file}), Text("File"));
}

void Desk::ShowBackups() {
  const auto files = backups_.Of(kBackups, main_.Opened.networkName, DeviceName());
  if (files.empty()) {
    platform_.prompts.Ask({Text("There is no backup of this unit yet. One is kept before each save."),
                           settings_.title, ui::Buttons::kOk, ui::Icon::kInformation});
    return;
  }
  fPick::Table table{Text("Backups"),
                     Text("What the unit held before each save:"),
                     {Text("Saved at"), Text("File")},
                     {},
                     Text("&Compare...")};
  for (const auto& file : files) table.rows.push_back({TimeOf(file), base::PathText(file)});
  const auto chosen = pick_.Ask(table);
  if (!chosen) return;
  CompareWith(
      Read(base::ReadFile(files[*chosen], kLargestFile), MakeHead().programId),
      shell::ReplacePlaceholders(Text("Differences from the backup of %s1%"), {TimeOf(files[*chosen])}),
      Text("Backup"));
}

void Desk::CompareUnit() {
  const auto units = ListUnits(main_.Context().network, MakeHead().programId, DeviceName());
  fPick::Table table{Text("Compare with unit"),
                     Text("The units of this network that are of the same kind:"),
                     {Text("Unit"), Text("Location")},
                     {},
                     Text("&Compare...")};
  for (const UnitEntry& unit : units) table.rows.push_back({unit.name, unit.location});
  const auto chosen = pick_.Ask(table);
  if (!chosen) return;
  Document document;
  {
    host::SessionRequest request = main_.Opened;
    request.deviceName = units[*chosen].name;
    OtherUnit other(platform_, request, settings_.numbers);
    const auto pages = NewPages(strings_);
    pages->Load(other.Device(), other.Network(), main_.Device().IsImperial);
    pages->ReadSettings();
    Snapshot snapshot{MakeHead(), {}};
    for (const fields::Field& field : pages->Fields()) {
      if (field.applies()) snapshot.values.push_back(ValueOf(field, settings_.numbers, field.content()));
    }
    document = ToDocument(snapshot, [](auto, auto control) { return std::string(control); });
    document.entries.push_back({std::string(kMainWindow), location_.name, {}, {}, other.ReadLocation()});
  }
  CompareWith(document, shell::ReplacePlaceholders(Text("Differences from %s1%"), {units[*chosen].name}),
              units[*chosen].name);
}

// --- the record ---

RecordInput Desk::MakeRecord(const Snapshot& snapshot, const std::vector<PageTitle>& titles) const {
  RecordInput input{.snapshot = snapshot,
                    .pages = titles,
                    .strings = strings_,
                    .numbers = settings_.numbers,
                    .request = record_.Request(),
                    .time = platform_.locale.GeneralDateNow(),
                    .verified = true};
  for (int i = 0; i < host::DeviceObjects::kInputs; ++i)
    input.sensors.push_back(main_.Selections().GetSensorType(static_cast<std::size_t>(i)));
  for (int i = 0; i < host::DeviceObjects::kOutputs; ++i) {
    const Value* signal =
        snapshot.Find("fControlOutput", "UCPThardwareSignalType(" + std::to_string(i) + ")");
    input.signals.push_back(signal ? signal->content : std::string());
  }
  input.shown = [this](auto page, auto control, auto content) {
    const fields::Field* field = main_.Pending().Find(page, control);
    return field ? field->shown(content) : std::string(content);
  };
  return input;
}

// The values of each record are kept beside the backups: the next one tells what has changed since.
void Desk::SaveRecord() {
  if (!record_.Ask()) return;
  Snapshot snapshot = Take(false);
  snapshot.head.note = record_.Request().note;
  std::vector<PageTitle> titles = {{std::string(kMainWindow), Text("Main window")}};
  for (const shell::PageEntry& entry : table_)
    titles.push_back({std::string(entry.pageClass), std::string(base::Trim(Text(entry.listCaption)))});
  RecordInput input = MakeRecord(snapshot, titles);
  const auto file = platform_.fileDialog.AskSaveFile(
      {Text("Records (*.html)|*.html"), settings_.documentsFolder + "\\" + SafeName(DeviceName()) + ".html",
       kAskBeforeReplacing});
  if (!file) return;
  const auto last = backups_.Of(kRecords, snapshot.head.network, snapshot.head.device);
  const Document earlier =
      last.empty() ? Document() : Read(base::ReadFile(last.front(), kLargestFile), snapshot.head.programId);
  if (!last.empty()) input.earlier = &earlier;
  const std::filesystem::path path = base::PathOf(*file);
  base::ReplaceFile(path, WriteRecord(input));
  if (record_.WithTable())
    base::ReplaceFile(std::filesystem::path(path).replace_extension(".csv"), WriteRecordCsv(input));
  backups_.Keep(kRecords, ToFile(snapshot), std::time(nullptr));
  main_.AddMessage(shell::ReplacePlaceholders(Text("The record was saved in %s1%"), {*file}), "Record",
                   kLocation, logger::kInformation);
}

// --- differences and taking over ---

void Desk::CompareWith(const Document& document, const std::string& title, const std::string& there) {
  main_.Pending().ReadSettings();
  const bool imperial = document.head.imperial;
  std::unique_ptr<UnseenPages> pages;
  std::vector<fields::Field> fields;
  std::vector<Held> here;
  if (imperial != main_.Device().IsImperial) {
    pages = NewPages(strings_);
    pages->Load(main_.Device(), main_.Context().network, imperial);
    fields = pages->Fields();
    here = Unseen(fields);
  } else {
    // What the pages hold of the device may be old; with edits on them it is all there is to compare with.
    if (!main_.Pages().AnyPageChanged() && !main_.ReadAgain(imperial))
      throw base::WordedError("The device could not be read. The message log says why.", {});
    here = Shown(false);
  }
  differences_.onTakeOver = [this, imperial](const auto& wanted) { return TakeOver(wanted, imperial); };
  differences_.ShowLines(title, there, Compare(here, document, settings_.numbers), !main_.Locked());
}

bool Desk::UseUnits(bool imperial) {
  if (imperial == main_.Device().IsImperial) return true;
  const std::string_view text =
      imperial ? "The values are in imperial units. The window has to change to them; changes that are not "
                 "applied are lost. Change the units now?"
               : "The values are in metric units. The window has to change to them; changes that are not "
                 "applied are lost. Change the units now?";
  return platform_.prompts.Ask({Text(text), settings_.title, ui::Buttons::kOkCancel, ui::Icon::kQuestion}) ==
             ui::Answer::kOk &&
         main_.ReadAgain(imperial);
}

std::vector<fDifferences::Refused> Desk::TakeOver(const std::vector<Difference>& wanted, bool imperial) {
  std::vector<fDifferences::Refused> refused;
  if (!UseUnits(imperial)) {
    for (const Difference& one : wanted)
      refused.push_back({one.page, one.control, Text("the measurement units were not changed")});
    return refused;
  }
  main_.Flags().pageSelected = true;
  std::vector<fields::Wanted> contents;
  for (const Difference& one : wanted) {
    if (one.page != kMainWindow) {
      contents.push_back({one.page, one.control, one.content});
      continue;
    }
    const std::string reason = main_.Prompts().Take(main_.LocationField(), one.content);
    if (!reason.empty()) refused.push_back({one.page, one.control, reason});
  }
  for (const fields::Wanted& left : main_.Pending().TakeAll(contents, main_.Prompts())) {
    refused.push_back(
        {left.page, left.field, left.reason.empty() ? Text("no page shows this field now") : left.reason});
  }
  return refused;
}

// --- backups ---

void Desk::SaveBegins() {
  backupFault_.clear();
  try {
    MakeHead();
    main_.Pending().ReadSettings();
  } catch (const std::exception& error) {
    backupFault_ = Words(error);
  }
}

std::string Desk::WithDigitsBefore(const Held& held) const {
  const std::string source = held.field->page + "." + held.field->name;
  for (const host::Written& entry : main_.Context().transactions.GetJournal().Entries()) {
    for (const host::ChangedField& changed : host::ChangedFields(entry)) {
      if (changed.control == source) return WithDigits(settings_.numbers, held.content, changed.before);
    }
  }
  return held.content;
}

bool Desk::MayCommit() {
  try {
    Snapshot snapshot{MakeHead(), {}};
    for (const Held& held : Shown(false)) {
      if (held.applies)
        snapshot.values.push_back(ValueOf(*held.field, settings_.numbers, WithDigitsBefore(held)));
    }
    if (!backupFault_.empty()) throw base::Error(backupFault_);
    backups_.Keep(kBackups, ToFile(snapshot), std::time(nullptr));
    toldFault_ = false;
    return true;
  } catch (const std::exception& error) {
    backupFault_ = Words(error);
  }
  const bool stop = base::ReadRegistryString(platform_.registry, base::RegistryRoot::kCurrentUser,
                                             settings_.settingsKey, kStopChoice) == "1";
  const std::string text =
      Text(stop ? "Nothing was saved, since no backup of the present values could be kept:"
                : "No backup of the former values could be kept:") +
      "\r\n" + backupFault_;
  if (stop || !std::exchange(toldFault_, true))
    main_.AddMessage(text, "Backup", kLocation, stop ? logger::kError : logger::kExclamation);
  return !stop;
}

void Desk::StopWithoutBackup(bool stop) {
  base::WriteRegistryString(platform_.registry, base::RegistryRoot::kCurrentUser, settings_.settingsKey,
                            kStopChoice, stop ? "1" : "0");
  main_.BuildMenu();
}

}  // namespace configuration
