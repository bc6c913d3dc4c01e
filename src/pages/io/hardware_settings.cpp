#include "pages/io/hardware_settings.h"

#include <algorithm>

#include "base/text.h"
#include "shell/page.h"

namespace pages {
namespace {

constexpr int kObjectName = 1;  // the property that names the object in its own device

/// A type and a name are one text, whatever stands in it.
bool IsRecord(int number) { return number > kObjectName; }

/// A record as a person reads it: numbers without the zeros at their ends.
std::string Shown(std::string_view content) {
  std::vector<std::string> pieces = base::Split(content, " ");
  for (std::string& piece : pieces) {
    const auto sign = piece.find_first_of(".,");
    if (sign == std::string::npos || piece.find_first_not_of("+-.,0123456789") != std::string::npos) continue;
    const auto last = piece.find_last_not_of('0');
    piece.resize(last == sign ? sign : last + 1);
  }
  return base::Join(pieces, " ");
}

}  // namespace

host::Property& HardwareSettings::PropertyOf(const Setting& setting) const {
  return (*owners_[setting.owner].properties)[setting.number];
}

host::NetworkVariable& HardwareSettings::VariableOf(const Setting& setting) const {
  return (*owners_[setting.owner].variables)[setting.name];
}

void HardwareSettings::FindAll() {
  std::vector<Setting> found;
  for (std::size_t i = 0; i < owners_.size(); ++i) {
    shell::NamingProperty(owners_[i].caption(), [&] {
      // A variable may take defaults with another type, so it is written first.
      if (!owners_[i].variable.empty()) found.push_back({i, 0, owners_[i].variable});
      host::PropertyCollection& properties = *owners_[i].properties;
      for (int number = 1, last = properties.Count(); number <= last; ++number) {
        if (std::ranges::find(shown_, number) == shown_.end())
          found.push_back({i, number, properties[number].Name()});
      }
    });
  }
  settings_ = std::move(found);
}

std::string HardwareSettings::ReadHeld(const Setting& setting) const {
  return shell::NamingProperty(owners_[setting.owner].caption() + ", " + setting.name, [&] {
    if (setting.number == 0) return host::BareType(VariableOf(setting).Type());
    host::Property& property = PropertyOf(setting);
    property.Bind(setting.name);
    return property.Read(host::kHighPrecision);
  });
}

void HardwareSettings::Read() {
  if (!outdated_) return;
  if (settings_.empty()) FindAll();
  std::vector<std::string> held;
  for (const Setting& setting : settings_) held.push_back(ReadHeld(setting));
  for (std::size_t i = 0; i < settings_.size(); ++i) {
    Setting& setting = settings_[i];
    if (setting.present == setting.held) setting.present = held[i];
    setting.held = std::move(held[i]);
  }
  outdated_ = false;
}

std::string HardwareSettings::FieldName(const Setting& setting) const {
  return setting.name + "(" + std::to_string(setting.owner) + ")";
}

std::vector<fields::Field> HardwareSettings::Fields(const fields::Translate& translate) {
  std::vector<fields::Field> fields;
  for (Setting& setting : settings_) fields.push_back(FieldOf(setting, translate));
  return fields;
}

fields::Field HardwareSettings::FieldOf(Setting& setting, const fields::Translate& translate) {
  fields::Field field;
  field.page = page_;
  field.name = FieldName(setting);
  field.source = setting.name;
  field.cursor = owners_[setting.owner].cursor;
  const bool record = IsRecord(setting.number);
  field.kind = record ? fields::Kind::kRecord : fields::Kind::kEntry;
  field.ofOneUnit = setting.number == kObjectName;
  field.caption = [this, &setting] {
    fields::Caption caption;
    caption.row = owners_[setting.owner].caption();
    caption.column = setting.name;
    return caption;
  };
  field.content = [&setting] { return setting.present; };
  field.held = [&setting] { return setting.held; };
  field.shown = [record](std::string_view content) { return record ? Shown(content) : std::string(content); };
  field.take = [this, &setting, translate](std::string_view content) {
    return Take(setting, std::string(content), translate);
  };
  return field;
}

std::string HardwareSettings::AllowedType(const Setting& setting, const std::string& type) const {
  const std::vector<std::string> allowed = VariableOf(setting).AllowedTypes();
  const auto found = std::ranges::find(allowed, type, host::BareType);
  return found == allowed.end() ? std::string() : *found;
}

// The device is asked what it allows only when a type is to change.
std::string HardwareSettings::Take(Setting& setting, const std::string& content,
                                   const fields::Translate& translate) {
  if (content == setting.present) return {};
  if (setting.number == 0 && content != setting.held) {
    try {
      setting.type = AllowedType(setting, content);
    } catch (const std::exception& error) {
      return shell::DescribeError(error);
    }
    if (setting.type.empty())
      return translate("This device does not allow the type %s1% for %s2%.", {content, setting.name});
  }
  setting.present = content;
  onEdit_();
  return {};
}

void HardwareSettings::Write() const {
  for (const Setting& setting : settings_) {
    if (setting.present == setting.held) continue;
    shell::NamingProperty(owners_[setting.owner].caption() + ", " + setting.name, [&] { WriteOne(setting); });
  }
}

void HardwareSettings::WriteOne(const Setting& setting) const {
  const std::string control = page_ + "." + FieldName(setting);
  if (setting.number == 0) return VariableOf(setting).ChangeType(setting.type, control);
  host::Property& property = PropertyOf(setting);
  property.Bind(setting.name);
  if (!IsRecord(setting.number)) return property.WriteText(setting.present, control);
  const std::vector<std::string> texts = base::Split(setting.present, " ");
  property.Write(setting.name, host::kHighPrecision, texts, std::vector(texts.size(), control));
}

void HardwareSettings::Saved() {
  for (Setting& setting : settings_) {
    outdated_ = outdated_ || setting.present != setting.held;
    setting.held = setting.present;
  }
}

void HardwareSettings::DropEdits() {
  for (Setting& setting : settings_) setting.present = setting.held;
}

}  // namespace pages
