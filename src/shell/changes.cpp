#include "shell/changes.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace shell {
namespace {

using fields::Field;

bool HasUnit(const Field& field) { return field.kind == fields::Kind::kText; }

/// Of an option group the button that is selected carries the mark.
void SetMark(const Field& field, ui::Mark mark, const std::string& reason) {
  if (!field.control) return;
  if (field.kind != fields::Kind::kOption) return field.control->SetMark(mark, reason);
  for (ui::OptionButton* button : static_cast<ui::OptionButton*>(field.control)->Siblings()) {
    const bool carries = button->Selected() && mark != ui::Mark::kNone;
    button->SetMark(carries ? mark : ui::Mark::kNone, carries ? reason : std::string());
  }
}

}  // namespace

void Changes::Attach(std::size_t page, ISubForm& form) {
  if (followed_.size() <= page) followed_.resize(page + 1);
  followed_[page].form = &form;
  form.onContent = [this, page](ui::Control& control) { Touched(followed_[page], control); };
  form.onEdit = [this, page] {
    if (followed_[page].filling) return;
    JudgeWithoutControl(followed_[page]);
    JudgeAdjustments();
  };
  form.onFill = [this, page](bool begins) {
    followed_[page].filling = begins;
    if (!begins) Follow(followed_[page]);
  };
}

void Changes::Clear() {
  followed_.clear();
  ++generation_;
}

void Changes::Follow(Page& page) {
  for (const Entry& entry : page.entries) SetMark(entry.field, ui::Mark::kNone, {});
  ++generation_;
  page.entries.clear();
  page.byControl.clear();
  for (Field& field : page.form->ListFields(TranslateBy(strings_))) Add(page, std::move(field));
  JudgeAdjustments();
}

void Changes::Add(Page& page, Field field) {
  ++generation_;
  Entry entry;
  entry.device = field.content();
  entry.applied = field.applies();
  const std::size_t place = page.entries.size();
  if (field.control) page.byControl[field.control] = place;
  if (field.kind == fields::Kind::kOption) {
    for (const auto* button : static_cast<ui::OptionButton*>(field.control)->Siblings())
      page.byControl[button] = place;
  }
  entry.field = std::move(field);
  page.entries.push_back(std::move(entry));
}

void Changes::ReadSettings() {
  for (Page& page : followed_) {
    if (!page.form) continue;
    page.form->ReadSettings();
    for (Field& field : page.form->ListFields(TranslateBy(strings_))) {
      if (!EntryOf(field.page, field.name)) Add(page, std::move(field));
    }
    JudgeAll(page);
  }
  Told();
}

void Changes::SettingsOutdated() {
  for (const Page& page : followed_) {
    if (page.form) page.form->SettingsOutdated();
  }
}

void Changes::Committed() {
  for (Page& page : followed_) {
    for (Entry& entry : page.entries) {
      entry.device = entry.field.content();
      entry.applied = entry.field.applies();
      entry.refused.clear();
    }
    JudgeAll(page);
  }
  JudgeAdjustments();
}

void Changes::Retell() {
  for (const Page& page : followed_) {
    for (const Entry& entry : page.entries) {
      Show(entry);
      const Field& field = entry.field;
      if (!field.control || field.cursor != field.control || field.kind == fields::Kind::kOption) continue;
      const fields::Caption caption = field.caption();
      field.control->SetAccessibleName(PathOf(caption) + (caption.unit.empty() ? "" : ", " + caption.unit));
    }
  }
  JudgeAdjustments();
}

void Changes::Touched(Page& page, const ui::Control& control) {
  if (page.filling || page.entries.empty()) return;
  const auto known = page.byControl.find(&control);
  bool told = true;
  if (known != page.byControl.end()) {
    told = Judge(page.entries[known->second]);
  } else if (control.GetKind() == ui::Kind::kFrame) {
    JudgeAll(page);
  } else {
    return;
  }
  if (JudgeWithoutControl(page) || told) JudgeAdjustments();
}

bool Changes::Judge(Entry& entry) {
  const bool before = entry.Pending();
  const std::string content = entry.field.content();
  if (content != entry.refusedContent) entry.refused.clear();
  entry.edited = entry.field.applies() && !SameContent(entry.field, numbers_, content, entry.Held());
  const bool told = before || entry.Pending();
  if (told) Show(entry);
  return told;
}

bool Changes::JudgeWithoutControl(Page& page) {
  bool pending = false;
  for (Entry& entry : page.entries) {
    if (!entry.field.control) pending = Judge(entry) || pending;
  }
  return pending;
}

void Changes::JudgeAll(Page& page) {
  for (Entry& entry : page.entries) Judge(entry);
}

void Changes::Show(const Entry& entry) const {
  if (!entry.refused.empty()) return SetMark(entry.field, ui::Mark::kRefused, entry.refused);
  if (!entry.edited) return SetMark(entry.field, ui::Mark::kNone, {});
  SetMark(entry.field, ui::Mark::kChanged,
          strings_.GetStrings("Device: %s1%", {ValueOf(entry.field, entry.Held())}));
}

std::string Changes::ValueOf(const Field& field, const std::string& content) const {
  std::string value = field.shown(content);
  const std::string unit = HasUnit(field) ? field.caption().unit : std::string();
  return value.empty() || unit.empty() ? value : value + " " + unit;
}

void Changes::JudgeAdjustments() {
  if (together_) return;
  for (Page& page : followed_) {
    std::vector<Adjustment> present;
    if (page.form && !page.entries.empty()) present = page.form->Adjustments();
    if (present == page.adjustments) continue;
    for (const Adjustment& former : page.adjustments) former.control->SetMark(ui::Mark::kNone);
    page.adjustments = std::move(present);
    for (const Entry& entry : page.entries) {
      if (entry.Pending()) Show(entry);
    }
    for (const Adjustment& adjustment : page.adjustments)
      adjustment.control->SetMark(ui::Mark::kChanged, adjustment.reason);
  }
  Told();
}

std::size_t Changes::Count(std::size_t page) const {
  if (page >= followed_.size()) return 0;
  const Page& followed = followed_[page];
  const auto pending = std::ranges::count_if(followed.entries, &Entry::Pending);
  return static_cast<std::size_t>(pending) + followed.adjustments.size();
}

std::size_t Changes::Refused(std::size_t page) const {
  if (page >= followed_.size()) return 0;
  return static_cast<std::size_t>(std::ranges::count_if(
      followed_[page].entries, [](const Entry& entry) { return !entry.refused.empty(); }));
}

std::vector<Change> Changes::List() const {
  std::vector<Change> list;
  for (std::size_t i = 0; i < followed_.size(); ++i) {
    for (const Entry& entry : followed_[i].entries) {
      if (!entry.Pending()) continue;
      const fields::Caption caption = entry.field.caption();
      list.push_back({entry.refused.empty() ? Change::Kind::kEdited : Change::Kind::kRefused, i, &entry.field,
                      entry.field.cursor, PathOf(caption), entry.field.shown(entry.Held()),
                      entry.field.shown(entry.field.content()), HasUnit(entry.field) ? caption.unit : "",
                      entry.refused});
    }
  }
  for (std::size_t i = 0; i < followed_.size(); ++i) {
    for (const Adjustment& adjustment : followed_[i].adjustments) {
      const bool frame = adjustment.control->GetKind() == ui::Kind::kFrame;
      const auto* option = dynamic_cast<const ui::OptionButton*>(adjustment.control);
      const std::string name = frame    ? adjustment.control->Text()
                               : option ? PathOf(fields::CaptionOfGroup(*option))
                                        : PathOf(fields::CaptionOf(*adjustment.control));
      list.push_back({Change::Kind::kByItself, i, nullptr, adjustment.control, name, adjustment.device,
                      adjustment.present, "", adjustment.reason});
    }
  }
  return list;
}

std::vector<KeptChange> Changes::Kept() {
  std::vector<KeptChange> kept;
  for (const Page& page : followed_) {
    for (const Entry& entry : page.entries) {
      if (entry.edited)
        kept.push_back(
            {entry.field.page, entry.field.name, entry.Held(), entry.field.content(), entry.field.kind});
    }
    for (const Adjustment& adjustment : page.adjustments) {
      const Entry* entry = EntryOf(adjustment.control->GetForm().Name(), adjustment.control->Name());
      if (!entry || entry->edited) continue;
      const Field& field = entry->field;
      const std::string device = field.stored ? field.stored() : entry->Held();
      kept.push_back({field.page, field.name, device, adjustment.content, field.kind});
    }
  }
  return kept;
}

std::vector<const Field*> Changes::Fields() const {
  std::vector<const Field*> fields;
  for (const Page& page : followed_) {
    for (const Entry& entry : page.entries) fields.push_back(&entry.field);
  }
  return fields;
}

Changes::Entry* Changes::EntryOf(std::string_view pageClass, std::string_view control) {
  for (Page& page : followed_) {
    if (!page.form || page.form->Name() != pageClass) continue;
    for (Entry& entry : page.entries) {
      if (entry.field.name == control) return &entry;
    }
    const auto known = page.byControl.find(page.form->Find(control));
    return known == page.byControl.end() ? nullptr : &page.entries[known->second];
  }
  return nullptr;
}

const Field* Changes::Find(std::string_view page, std::string_view control) const {
  const Entry* entry = const_cast<Changes*>(this)->EntryOf(page, control);
  return entry ? &entry->field : nullptr;
}

const Changes::Entry* Changes::EntryOf(const Field& field) const {
  for (const Page& page : followed_) {
    for (const Entry& entry : page.entries) {
      if (&entry.field == &field) return &entry;
    }
  }
  return nullptr;
}

std::string Changes::DeviceContent(const Field& field) const {
  const Entry* entry = EntryOf(field);
  return entry ? entry->Held() : std::string();
}

bool Changes::IsEdited(const Field& field) const {
  const Entry* entry = EntryOf(field);
  return entry && entry->edited;
}

bool Changes::AppliedToDevice(const Field& field) const {
  const Entry* entry = EntryOf(field);
  return !entry || entry->applied;
}

void Changes::ForgetRefused() {
  for (Page& page : followed_) {
    for (Entry& entry : page.entries) {
      if (!std::exchange(entry.refused, {}).empty()) Show(entry);
    }
  }
  Told();
}

void Changes::Refuse(std::string_view control, const std::string& reason) {
  const ControlName name(control);
  Entry* entry = EntryOf(name.page, name.control);
  if (!entry || !entry->refused.empty()) return;
  entry->refused = reason;
  entry->refusedContent = entry->field.content();
  Show(*entry);
  Told();
}

std::vector<fields::Wanted> Changes::TakeAll(const std::vector<fields::Wanted>& wanted,
                                             fields::PagePrompts& prompts) {
  const auto find = [this](std::string_view page, std::string_view field) { return Find(page, field); };
  std::vector<fields::Wanted> left;
  Together([&] {
    left = fields::TakeAll(wanted, find, numbers_, prompts);
    for (const fields::Wanted& one : wanted) {
      // What shows the device's content again is not refused any more, whatever was typed in between.
      Entry* entry = EntryOf(one.page, one.field);
      if (entry && SameContent(entry->field, numbers_, entry->field.content(), entry->Held()))
        entry->refused.clear();
    }
    for (Page& page : followed_) JudgeAll(page);
  });
  return left;
}

void Changes::Together(const std::function<void()>& work) {
  std::exception_ptr fault;
  const bool outer = std::exchange(together_, true);
  try {
    work();
  } catch (...) {
    fault = std::current_exception();
  }
  together_ = outer;
  JudgeAdjustments();
  if (fault) std::rethrow_exception(fault);
}

void Changes::DropUnedited() {
  for (Page& page : followed_) {
    const auto isEdited = [](const Entry& entry) { return entry.edited; };
    if (page.form && page.form->IsChanged() && std::ranges::none_of(page.entries, isEdited))
      page.form->TakenBack();
  }
  JudgeAdjustments();
}

}  // namespace shell
