#include "help/generator/ranges.h"

#include <fmt/format.h>

#include <filesystem>

#include "base/record.h"
#include "host/contract.h"
#include "simulator/files.h"

namespace help {
namespace {

using automation::Object;
using simulator::Field;

constexpr int kOwnPrecision = -1;  // each field's own
constexpr auto kAll = static_cast<std::size_t>(-1);

bool IsNumber(const Field& field) {
  return field.kind == simulator::Kind::kNumber || field.kind == simulator::Kind::kWhole;
}

// A page that was filled has set its own format and decimals.
void SetFormat(const Object& property, const simulator::Type& type) {
  property.Put(host::kFormatName, type.name);
  property.Put(host::kPrecision, kOwnPrecision);
}

void Write(const Object& property, const simulator::Type& type, const std::string& text) {
  SetFormat(property, type);
  property.Put(host::kValue, text);
}

std::filesystem::path DataFile(const char* name) { return tests::Tool::Options().dataFolder / name; }

}  // namespace

RangeFinder::RangeFinder(tests::Tool& tool)
    : tool_(tool),
      catalogue_(DataFile("types.json")),
      template_(simulator::ReadTemplate(simulator::ReadWholeFile(DataFile("device.json")), catalogue_)) {}

Ranges RangeFinder::Find() {
  found_.clear();
  for (const simulator::ObjectTemplate& object : template_.objects) {
    const Object device = tool_.Main().ObjectServer.Child(host::kDevice);
    const Object owner = device.Child(host::kLonMarkObjects).Child(host::kItem, object.name);
    TryAll(owner, object.properties);
    for (const simulator::VariableTemplate& variable : object.variables) {
      TryAll(owner.Child(host::kNetworkVariables).Child(host::kItem, variable.name), variable.properties);
    }
  }
  return found_;
}

void RangeFinder::TryAll(const Object& owner, const std::vector<simulator::PropertyTemplate>& properties) {
  for (std::size_t i = 0; i < properties.size(); ++i) {
    if (properties[i].readOnly) continue;
    const int number = static_cast<int>(i) + 1;
    Try(owner.Child(host::kConfigProperties).Child(host::kItem, number), *properties[i].type);
  }
}

void RangeFinder::Try(const Object& property, const simulator::Type& type) {
  const Ranges all = Following(property, type, kAll);
  if (all.empty() || type.fields.size() == 1) return found_.insert(all.begin(), all.end()), void();
  for (std::size_t i = 0; i < type.fields.size(); ++i) {
    if (IsNumber(type.fields[i])) found_.merge(Following(property, type, i));
  }
}

Ranges RangeFinder::Following(const Object& property, const simulator::Type& type, std::size_t only) {
  SetFormat(property, type);
  const std::string before = property.Text(host::kValue);
  const auto shownAt = [&](End end) {
    base::Record record(before);
    for (std::size_t i = 0; i < type.fields.size(); ++i) {
      const Field& field = type.fields[i];
      if (!IsNumber(field) || (only != kAll && only != i)) continue;
      record.Set(i,
                 fmt::format("{:.{}f}", end == End::kLowest ? field.lowest : field.highest, field.precision));
    }
    Write(property, type, record.Join());
    return Shown();
  };
  const Texts low = shownAt(End::kLowest);
  const Texts high = shownAt(End::kHighest);
  Write(property, type, before);
  Ranges following;
  for (const auto& [box, text] : low) {
    if (high.at(box) != text) following[box] = {text, high.at(box)};
  }
  return following;
}

RangeFinder::Texts RangeFinder::Shown() const {
  Texts texts;
  shell::PageSet& pages = tool_.Main().Pages();
  tool_.Main().Pending().Together([&] {
    for (std::size_t i = 0; i < pages.Count(); ++i) {
      shell::ISubForm& page = pages.Page(i);
      if (!pages.Table()[i].showsDeviceValues) continue;
      page.FillValue();
      for (const ui::Control* control : page.Controls()) {
        if (control->GetKind() == ui::Kind::kTextBox)
          texts[page.Name() + "." + control->Name()] = control->Text();
      }
    }
  });
  return texts;
}

}  // namespace help
