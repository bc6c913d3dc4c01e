#include "configuration/open_unit.h"

#include <algorithm>

#include "configuration/unit_file.h"
#include "configuration/unit_list.h"
#include "host/contract.h"
#include "shell/words.h"

namespace configuration {
namespace {

// What is not among the fields of these pages is a setting that was not read.
constexpr std::string_view kPagesWithSettings[] = {"fHardwareInput", "fControlOutput"};

}  // namespace

OpenUnit::OpenUnit(const UnseenPages::Surroundings& surroundings, shell::Strings& strings,
                   const host::SessionRequest& request, bool imperial)
    : surroundings_(surroundings),
      settings_(surroundings.settings),
      strings_(strings),
      request_(request),
      journal_(settings_.numbers),
      session_(NewServer(surroundings.platform), request),
      pages_(surroundings, strings, transactions_),
      location_(LocationField()) {
  host::LoadDeviceObjects(session_.Server(), device_, journal_);
  host::CheckIfOccupency(device_);
  device_.IsImperial = imperial;
  LocationProperty().Bind(host::kLocationFormat);
  storedLocation_ = locationText_ = LocationProperty().Read();
  pages_.Load(device_, imperial);
  ListFields();
}

fields::Field OpenUnit::LocationField() {
  fields::Field field;
  field.page = kMainWindow;
  field.name = kLocationControl;
  field.kind = fields::Kind::kEntry;  // a name, even one made of digits
  field.source = host::kLocationFormat;
  field.ofOneUnit = true;
  field.caption = [this] {
    fields::Caption caption;
    caption.row = strings_.GetStrings("Location");
    return caption;
  };
  field.content = [this] { return locationText_; };
  field.held = [this] { return storedLocation_; };
  field.shown = [](std::string_view content) { return std::string(content); };
  field.take = [this](std::string_view content) {
    locationText_ = content;
    return std::string();
  };
  return field;
}

void OpenUnit::ListFields() {
  before_.clear();
  fields_ = pages_.Fields();
  before_ = Values();
}

void OpenUnit::ReadSettings() {
  pages_.ReadSettings();
  ListFields();
}

std::vector<Held> OpenUnit::Values() const {
  std::vector<Held> values = {{&location_, locationText_, true}};
  for (const fields::Field& field : fields_.All())
    values.push_back({&field, StoredContent(field), field.applies()});
  return values;
}

Head OpenUnit::MakeHead() {
  const automation::Object identity = session_.Device().Child(host::kInterface);
  Head head = HeadNow(settings_, request_);
  head.programId = identity.Text(host::kProgramId);
  head.version = identity.Text(host::kVersion);
  head.location = storedLocation_;
  head.imperial = device_.IsImperial;
  return head;
}

Snapshot OpenUnit::Take() { return SnapshotOf(MakeHead(), Values(), settings_.numbers, &Held::content); }

Snapshot OpenUnit::TakeAllDigits() {
  UnseenPages exact(surroundings_, strings_, transactions_);
  {
    const host::Journal::WithAllDigits digits(journal_);
    exact.Load(device_, device_.IsImperial);
  }
  const fields::FieldList read = exact.Fields();
  return SnapshotOf(MakeHead(), Values(), settings_.numbers, [&](const Held& held) {
    const fields::Field* field = read.Find(held.field->page, held.field->name);
    return field ? WithDigits(settings_.numbers, held.content, StoredContent(*field)) : held.content;
  });
}

Snapshot OpenUnit::BeforeSave() {
  return SnapshotOf(MakeHead(), before_, settings_.numbers, DigitsBefore(journal_));
}

bool OpenUnit::Selected(const Selection& selection, const fields::Field& field) const {
  if (field.ofOneUnit) return selection.ofOneUnit;
  if (!field.control) return selection.settings;
  return selection.pages.contains(field.page);
}

bool OpenUnit::Unknown(const Selection& selection, const Entry& entry) const {
  if (entry.page == kMainWindow || fields_.Find(entry.page, entry.control)) return false;
  const bool setting = std::ranges::find(kPagesWithSettings, entry.page) != std::end(kPagesWithSettings);
  return setting ? selection.settings : selection.pages.contains(entry.page);
}

std::vector<Difference> OpenUnit::Compare(const Document& document, const Selection& selection) const {
  Document selected{document.head, {}};
  std::vector<Held> here;
  for (const Held& held : Values()) {
    const Entry* entry = document.Find(held.field->page, held.field->name);
    if (!entry || !Selected(selection, *held.field)) continue;
    here.push_back(held);
    selected.entries.push_back(*entry);
  }
  for (const Entry& entry : document.entries) {
    if (Unknown(selection, entry)) selected.entries.push_back(entry);
  }
  std::vector<Difference> differences = configuration::Compare(here, selected, settings_.numbers);
  std::erase_if(differences, [](const Difference& one) { return one.kind == Difference::Kind::kEqual; });
  return differences;
}

std::vector<fields::Wanted> OpenUnit::Fill(std::vector<fields::Wanted> wanted) {
  std::erase_if(wanted, [this](const fields::Wanted& one) {
    return one.page == kMainWindow && location_.take(one.content).empty();
  });
  return pages_.Take(wanted);
}

UnseenPages::Saved OpenUnit::Save(const std::function<bool()>& mayCommit) {
  const auto isNewSetting = [](const fields::Field& field) {
    return !field.control && field.content() != field.held();
  };
  const bool newSettings = std::ranges::any_of(fields_.All(), isNewSetting);
  UnseenPages::Saved saved = pages_.Save([&] {
    if (locationText_ != storedLocation_) LocationProperty().WriteText(locationText_);
    return mayCommit();
  });
  written_.clear();
  if (saved.result == shell::SaveResult::kCancelled) return saved;
  written_ = ListWritten();
  storedLocation_ = locationText_;
  try {
    pages_.Load(device_, device_.IsImperial);
    ListFields();
    if (newSettings) ReadSettings();
  } catch (const std::exception& error) {
    saved.unread = true;
    saved.told += (saved.told.empty() ? "" : "\r\n") + shell::InWords(strings_, error);
  }
  return saved;
}

std::vector<WrittenValue> OpenUnit::ListWritten() const {
  std::vector<WrittenValue> written;
  std::set<const fields::Field*> met;
  for (const host::Written& entry : journal_.Entries()) {
    for (const host::ChangedField& changed : host::ChangedFields(entry)) {
      const shell::ControlName name(changed.control);
      const fields::Field* field = fields_.Find(name.page, name.control);
      if (!field) {
        written.push_back({{}, entry.Name(), changed.before, changed.written});
      } else if (met.insert(field).second) {
        const auto before = std::ranges::find(before_, field, &Held::field);
        written.push_back({field->page, PathOf(field->caption()), field->shown(before->content),
                           field->shown(field->content())});
      }
    }
  }
  return written;
}

}  // namespace configuration
