// What the desk compares, keeps and records: the values of the unit in view, in several guises.
#include "configuration/desk.h"

#include <algorithm>

#include "base/files.h"
#include "host/contract.h"

namespace configuration {

Head Desk::MakeHead() {
  if (identity_.programId.empty()) {
    const automation::Object identity = main_.Device().Device.Child(host::kInterface);
    identity_.version = identity.Text(host::kVersion);
    identity_.programId = identity.Text(host::kProgramId);
  }
  Head head = HeadNow(settings_, main_.Opened);
  head.programId = identity_.programId;
  head.version = identity_.version;
  head.location = main_.LocationField().held();
  head.imperial = main_.Device().IsImperial;
  return head;
}

Document Desk::ReadFile(const std::filesystem::path& file) {
  return Read(base::ReadFile(file, kLargestFile), MakeHead().programId);
}

std::unique_ptr<UnseenPages> Desk::NewPages() {
  return std::make_unique<UnseenPages>(Surroundings(), strings_, main_.Context().transactions);
}

Document Desk::ToFile(const Snapshot& snapshot) {
  if (!names_) names_ = std::make_unique<EnglishNames>(Surroundings());
  return names_->ToDocument(snapshot);
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
std::vector<Held> Desk::Unseen(const fields::FieldList& fields) {
  std::vector<Held> held;
  for (const Held& shown : Shown(false)) {
    if (shown.field == &location_ || !shown.field->control) held.push_back(shown);
  }
  for (const fields::Field& field : fields.All()) {
    if (field.control) held.push_back({&field, StoredContent(field), field.applies()});
  }
  return held;
}

Snapshot Desk::Take(bool withEdits) {
  const host::DeviceObjects& device = main_.Device();
  shell::Changes& pending = main_.Pending();
  const auto pages = NewPages();
  {
    const host::Journal::WithAllDigits digits(main_.Context().transactions.GetJournal());
    pages->Load(device, device.IsImperial);
  }
  pending.SettingsOutdated();
  pending.ReadSettings();
  main_.ReadLocation();
  const fields::FieldList fields = pages->Fields();
  Snapshot snapshot{MakeHead(), {}};
  for (const Held& held : Shown(withEdits)) {
    const fields::Field* read = fields.Find(held.field->page, held.field->name);
    if (read && withEdits && pending.IsEdited(*held.field)) read = nullptr;
    if (!(read && !withEdits ? read->applies() : held.applies)) continue;
    std::string content = held.content;
    if (read) {
      const std::string exact = StoredContent(*read);
      const bool same = EqualAsShown(settings_.numbers, content, exact);
      if (same || !withEdits) content = same ? WithDigits(settings_.numbers, content, exact) : exact;
    }
    snapshot.values.push_back(ValueOf(*held.field, settings_.numbers, content));
  }
  return snapshot;
}

}  // namespace configuration
