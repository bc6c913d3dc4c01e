#include "simulator/controls/binding.h"

#include <algorithm>
#include <utility>

#include "automation/error.h"
#include "base/record.h"
#include "base/text.h"

namespace controls {

automation::Object PropertyOf(const automation::Object& lonMarkObject, int number) {
  return lonMarkObject.Child("ConfigProperties").Child("Item", number);
}

std::string ReadProperty(const automation::Object& property, const std::string& format) {
  property.Put("formatName", format);
  return property.Text("Value");
}

void Binding::Attach(automation::Object owner, std::string member, std::string format) {
  owner_ = std::move(owner);
  member_ = std::move(member);
  format_ = std::move(format);
  first_ = last_ = Read();
  Show(first_);
}

// The host's objects are shared: whoever used the property last has left its own format.
std::string Binding::Read() const {
  if (!format_.empty()) owner_.Put("formatName", format_);
  return owner_.Text(member_);
}

bool Binding::Changed() const {
  if (!Touched()) return false;
  try {
    return Differs(Read());
  } catch (const automation::Error&) {
    return true;  // writing will tell why the device does not answer
  }
}

void Binding::Write() {
  if (!Touched()) return;
  const std::string present = Read();
  if (Differs(present)) owner_.Put(member_, Entered(present));
  last_ = Read();
  Show(last_);
}

bool BoundFields::Differs(const std::string& stored) const {
  const base::Record record(stored);
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    if (base::Trim(boxes_[i]->Text()) != record.Field(i)) return true;
  }
  return false;
}

std::string BoundFields::Entered(const std::string& stored) const {
  base::Record record(stored);
  for (std::size_t i = 0; i < boxes_.size(); ++i) record.Set(i, base::Trim(boxes_[i]->Text()));
  return record.Join();
}

void BoundFields::Show(const std::string& stored) {
  const base::Record record(stored);
  for (std::size_t i = 0; i < boxes_.size(); ++i) boxes_[i]->SetText(record.Field(i));
}

std::string BoundChoice::Selected() const {
  const int place = list_.Selected();
  return place < 0 ? std::string() : choices_[static_cast<std::size_t>(place)].name;
}

void BoundChoice::Select(std::string_view name) {
  const auto found = std::ranges::find(choices_, name, &Choice::name);
  if (found != choices_.end()) list_.Select(static_cast<int>(found - choices_.begin()));
}

void BoundChoice::Show(const std::string& stored) {
  if (std::ranges::find(choices_, stored, &Choice::name) == choices_.end())
    choices_.push_back({stored, stored});
  std::vector<std::string> captions;
  for (const Choice& choice : choices_) captions.push_back(choice.caption);
  if (captions != list_.Items()) list_.SetItems(std::move(captions));
  Select(stored);
}

}  // namespace controls
