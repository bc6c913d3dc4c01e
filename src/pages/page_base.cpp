#include "pages/page_base.h"

#include "base/text.h"
#include "logger/message_logger.h"
#include "shell/field_check.h"

namespace pages {

bool PageBase::Guarded(std::string_view routine, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    shell::ReportError(context_, routine, location_, error);
    return false;
  }
}

void PageBase::ReInitializeStrings() {
  Guarded("InitStrings " + Name(), [this] {
    context_.strings.ReloadStrings();
    InitStrings();
  });
}

bool PageBase::ReadValue() {
  steps_.clear();
  return Guarded("FillValue", [this] { Fill(); });
}

void PageBase::ShowValue() {
  if (onFill) onFill(true);
  Guarded("FillValue", [this] {
    changed_ = false;
    for (const auto& step : std::exchange(steps_, {})) step();
    for (auto& [box, texts] : given_) texts = {box->Text()};
    context_.flags.lastFilledPage = PageNumber();
  });
  if (onFill) onFill(false);
}

bool PageBase::WriteValue() {
  bool written = false;
  return Guarded("WriteValue", [&] { written = Write(); }) && written;
}

void PageBase::TakenBack() {
  changed_ = false;
  DropEdits();
}

std::vector<fields::Field> PageBase::ListFields(const fields::Translate& translate) {
  std::vector<fields::Field> fields = ISubForm::ListFields(translate);
  for (fields::Field& field : fields) {
    const auto known = sources_.find(field.control);
    if (known != sources_.end()) field.source = known->second;
  }
  return fields;
}

void PageBase::EndWriteValue() {
  if (std::exchange(changed_, false)) Saved();
}

void PageBase::RefreshPage() {
  const ui::WaitPointer pointer(context_.platform.loop);
  if (changed_) FillValue();
  FollowFunctions();
}

void PageBase::SetCaptions(std::initializer_list<std::pair<ui::Control*, std::string_view>> captions) const {
  for (const auto& [control, caption] : captions) control->SetText(Translate(caption));
}

void PageBase::SetUnit(const UnitNames& unit, ui::Label& label) const {
  label.SetRoom(base::Join({std::string(unit.metric), std::string(unit.imperial)}, "\n"));
  label.SetText(IsImperial() ? unit.imperial : unit.metric);
}

void PageBase::Warn(const std::string& text, ui::Icon icon) {
  context_.platform.prompts.Ask({text, context_.settings.title, ui::Buttons::kOk, icon});
}

void PageBase::RefuseWrite(const std::string& reason, std::initializer_list<const ui::Control*> controls) {
  for (const ui::Control* control : controls) context_.messages.RefuseControl(*control, reason);
  context_.flags.writeError = true;
  context_.messages.AddMessage(reason, "WriteValue", location_, logger::kError);
}

void PageBase::SetField(host::Edit& edit, std::size_t place, const ui::TextBox& box) const {
  edit.Set(place, base::Trim(box.Text()), Source(box));
}

std::string PageBase::ReadWord(const host::Property& property) const {
  std::string word = base::Upper(property.Read());
  if (word.empty()) throw base::Error(Translate("The host gave no value."));
  return word;
}

const ui::Control* PageBase::FindControl(std::string_view pageClass, std::string_view name) const {
  const shell::ISubForm* page = context_.pages.FindPage(pageClass);
  return page ? page->Find(name) : nullptr;
}

void PageBase::Watch(ui::TextBox& box) {
  box.onChange = [this] { MarkChanged(); };
  std::set<std::string>& given = given_[&box];
  given = {box.Text()};
  box.onLeave = [this, &box, &given] {
    if (given.contains(box.Text())) return true;
    ui::Prompts& prompts = context_.platform.prompts;
    if (!shell::IsValidNumber(prompts, context_.settings, box.Text())) return false;
    if (prompts.ProgramFillsIn()) given.insert(box.Text());
    return true;
  };
}

}  // namespace pages
