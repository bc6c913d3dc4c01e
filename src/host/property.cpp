#include "host/property.h"

#include <cmath>

#include "automation/error.h"
#include "base/text.h"
#include "host/contract.h"

namespace host {
namespace {

std::string TypeOf(std::string_view format) { return std::string(format.substr(0, format.find('#'))); }

}  // namespace

void Edit::Set(std::size_t place, std::string_view text, std::string_view control) {
  if (!Shows(place, text)) record_.Set(place, text);
  fields_.push_back({place, std::string(control)});
}

bool Edit::Shows(std::size_t place, std::string_view text) const {
  const std::string_view field = record_.Field(place);
  if (field == text) return true;
  const auto present = base::ParseEither(numbers_, field);
  const auto typed = base::ParseEither(numbers_, text);
  if (!present || !typed) return !present && !typed && base::EqualsNoCase(field, text);
  if (*present == *typed) return true;
  if (shown_ == kHostPrecision) return false;
  const double unit = std::pow(10.0, -shown_);
  const double steps = *typed / unit;
  if (std::abs(steps - std::round(steps)) >= 1e-6) return false;  // finer than what is shown
  const double beyond = std::abs(*present - *typed) - unit / 2;
  if (std::abs(beyond) > kReadingError) return beyond < 0;
  // Halfway between two numbers that a page can show: the host knows which of them it shows.
  return base::ParseEither(numbers_, base::Record(readShown_()).Field(place)) == typed;
}

void Property::Bind(std::string_view format) {
  object_.Put(kFormatName, format);
  format_ = format;
}

std::string Property::Read(int precision) const {
  if (precision != kHostPrecision)
    object_.Put(kPrecision, journal_->AllDigits() ? kHighPrecision : precision);
  return object_.Text(kValue);
}

std::string Property::Name() const { return object_.Text(kName); }

std::string Property::ReadPresent(int shown) const {
  return Read(shown == kHostPrecision ? kHostPrecision : kHighPrecision);
}

std::string Property::ReadShown(int shown) const {
  object_.Put(kPrecision, shown);
  std::string text = object_.Text(kValue);
  object_.Put(kPrecision, kHighPrecision);  // as it is written, and checked after the commit
  return text;
}

Edit Property::Begin(const std::string& present, std::string_view name, int shown) const {
  return {present, name, shown, journal_->Numbers(), [this, shown] { return ReadShown(shown); }};
}

void Property::Change(std::string_view name, int shown, const std::function<void(Edit&)>& change) {
  const std::string present = ReadPresent(shown);
  Edit edit = Begin(present, name, shown);
  change(edit);
  Put(present, edit.Text(), shown, edit.Fields());
}

void Property::Write(std::string_view name, int shown, const std::vector<std::string>& texts,
                     const std::vector<std::string>& controls) {
  const auto control = [&controls](std::size_t i) {
    return i < controls.size() ? controls[i] : std::string();
  };
  const std::string present = ReadPresent(shown);
  Edit edit = Begin(present, name, shown);
  if (edit.Count() != texts.size()) return Put(present, base::Join(texts, " "), shown, {{0, control(0)}});
  for (std::size_t i = 0; i < texts.size(); ++i) edit.Set(i, texts[i], control(i));
  Put(present, edit.Text(), shown, edit.Fields());
}

void Property::WriteText(std::string_view text, std::string_view control) {
  if (!journal_->IsOpen()) return object_.Put(kValue, text);
  Put(object_.Text(kValue), std::string(text), kHostPrecision, {{kWholeText, std::string(control)}});
}

void Property::Put(std::string_view present, std::string text, int shown, std::vector<WrittenField> fields) {
  // Noted first: a write whose answer is lost may have been carried out.
  if (journal_->IsOpen()) {
    const int precision = shown == kHostPrecision ? kHostPrecision : kHighPrecision;
    journal_->Note({owner_, number_, TypeOf(format_), shown, std::string(present), text, std::move(fields),
                    [object = object_, format = format_, precision](bool bind) {
                      if (bind && !format.empty()) object.Put(kFormatName, format);
                      if (bind && precision != kHostPrecision) object.Put(kPrecision, precision);
                      return object.Text(kValue);
                    }});
  }
  try {
    object_.Put(kValue, text);
  } catch (const automation::Error& error) {
    if (error.Answered()) journal_->NoteRefused(owner_, number_, error.Description());
    throw;
  }
}

}  // namespace host
