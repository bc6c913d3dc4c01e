#include "configuration/desk.h"

#include <utility>

#include "base/error.h"
#include "base/files.h"
#include "configuration/unit_desk.h"
#include "configuration/unit_list.h"
#include "logger/message_logger.h"

namespace configuration {

Desk::Desk(shell::fMain& main, const shell::Platform& platform, const shell::Settings& settings,
           shell::Strings& strings, std::span<const shell::PageEntry> table)
    : main_(main),
      platform_(platform),
      settings_(settings),
      strings_(strings),
      table_(table),
      location_(main.LocationField()),
      lastFile_(settings.documentsFolder + "\\"),
      backups_(settings.documentsFolder),
      saveAs_(platform, settings, strings),
      pick_(platform, settings, strings),
      record_(platform, settings, strings),
      differences_(platform, settings, strings, table) {}

std::vector<ui::MenuItem> Desk::FileMenu() {
  const auto item = [this](std::string_view caption, std::string_view routine, void (Desk::*work)()) {
    return ui::MenuItem{Text(caption), [=, this] { Do(routine, [=, this] { (this->*work)(); }); }, {}};
  };
  const bool stops = StopsWithoutBackup(platform_.registry, settings_);
  const auto turn = [this, stops] {
    StopWithoutBackup(platform_.registry, settings_, !stops);
    main_.BuildMenu();
  };
  ui::MenuItem stop{Text("&No save without a backup"), turn, {}};
  stop.checked = stops;
  return {{},
          item("Save con&figuration as...", "SaveConfiguration", &Desk::SaveAs),
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

// --- the File menu ---

void Desk::SaveAs() {
  if (!saveAs_.Ask(main_.Pages().AnyPageChanged())) return;
  Snapshot snapshot = Take(saveAs_.WithEdits());
  snapshot.head.note = saveAs_.Note();
  const auto file = platform_.fileDialog.AskSaveFile(
      {Text("Configurations (*.kvtarn)|*.kvtarn|All files (*.*)|*.*"),
       settings_.documentsFolder + "\\" + SafeName(DeviceName()) + kFileEnding, kAskBeforeReplacing});
  if (!file) return;
  Document document = ToFile(snapshot);
  document.sections = UnitFile(settings_, main_.Opened, kNotes).Read();
  base::ReplaceFile(base::PathOf(*file), Write(document));
  lastFile_ = *file;
  main_.AddMessage(Text("%s1% values were saved in %s2%", {std::to_string(snapshot.values.size()), *file}),
                   "SaveConfiguration", kLocation, logger::kInformation);
  TellCutOff(snapshot);
}

void Desk::TellCutOff(const Snapshot& snapshot) {
  std::vector<std::string> lines;
  for (const Value& value : snapshot.values) {
    if (value.kind == fields::Kind::kText && MayBeCut(base::Numbers(), value.content))
      lines.push_back(PathOf(value.caption) + ": " + value.content);
  }
  if (lines.empty()) return;
  main_.AddMessage(Text("%s1% values may have more digits than the host gives, and come back without them",
                        {std::to_string(lines.size())}),
                   "SaveConfiguration", kLocation, logger::kInformation);
  main_.Logger().AddDetails(lines);
}

void Desk::OpenFile() {
  const auto file = platform_.fileDialog.AskOpenFile(
      {Text("Configurations (*.kvtarn)|*.kvtarn|All files (*.*)|*.*"), lastFile_, 0});
  if (!file) return;
  CompareWith(ReadFile(base::PathOf(*file)), Text("Differences from %s1%", {*file}), Text("File"));
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
  const std::filesystem::path& file = files[*chosen];
  CompareWith(ReadFile(file), Text("Differences from the backup of %s1%", {TimeOf(file)}), Text("Backup"));
}

void Desk::CompareUnit() {
  const auto units = OthersOfKind(ListUnits(platform_, main_.Opened), MakeHead().programId, DeviceName());
  fPick::Table table{Text("Compare with unit"),
                     Text("The units of this network that are of the same kind:"),
                     {Text("Unit name"), Text("Location")},
                     {},
                     Text("&Compare...")};
  for (const UnitEntry& unit : units) table.rows.push_back({unit.name, unit.location});
  const auto chosen = pick_.Ask(table);
  if (!chosen) return;
  Document document;
  {
    host::SessionRequest request = main_.Opened;
    request.deviceName = units[*chosen].name;
    OpenUnit other(Surroundings(), strings_, request, main_.Device().IsImperial);
    other.ReadSettings();
    document = ToFile(other.Take());
  }
  const std::string& name = units[*chosen].name;
  CompareWith(document, Text("Differences from %s1%", {name}), name);
}

// --- differences and taking over ---

void Desk::CompareWith(const Document& document, const std::string& title, const std::string& there) {
  main_.Pending().SettingsOutdated();
  main_.Pending().ReadSettings();
  main_.ReadLocation();
  const bool imperial = document.head.imperial;
  std::unique_ptr<UnseenPages> pages;
  fields::FieldList fields;
  std::vector<Held> here;
  if (imperial != main_.Device().IsImperial) {
    pages = NewPages();
    pages->Load(main_.Device(), imperial);
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

}  // namespace configuration
