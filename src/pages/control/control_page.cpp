#include "pages/control/control_page.h"

#include "base/text.h"
#include "host/contract.h"

namespace pages {
namespace {

// Read with its bare name by every page; the precision stays as the host has it.
constexpr PropertyFormat kOptions = {48, "UCPTobjectOptions", Units::kNone, 0, 0};

// By units, metric and imperial.
constexpr std::string_view kSuffixes[][2] = {{"", ""}, {"#SI", "#US"}, {"", "#DegF"}};

constexpr int kFunctionProperty =
    3;  // of a control output variable: the function assigned on the outputs page

}  // namespace

void ControlPage::BindFormats(std::span<const PropertyFormat> table) {
  for (const PropertyFormat& property : table) {
    std::string format(property.type);
    format += kSuffixes[static_cast<std::size_t>(property.units)][IsImperial()];
    NamingProperty(property.type, [&] { Property(property.number).Put(host::kFormatName, format); });
  }
}

std::string ControlPage::ReadText(const PropertyFormat& property) {
  return NamingProperty(property.type, [&] {
    const automation::Object& object = Property(property.number);
    object.Put(host::kPrecision, IsImperial() ? property.imperialPrecision : property.metricPrecision);
    return object.Text(host::kValue);
  });
}

void ControlPage::WriteText(const PropertyFormat& property, std::string_view text) {
  NamingProperty(property.type, [&] { Property(property.number).Put(host::kValue, text); });
}

void ControlPage::ReadBoxes(const std::vector<PropertyBox>& boxes) {
  for (const auto& [property, box] : boxes) ShowText(box, base::Trim(ReadText(property)));
}

void ControlPage::WriteBoxes(const std::vector<PropertyBox>& boxes) {
  for (const auto& [property, box] : boxes) WriteText(property, base::Trim(box.Text()));
}

base::Record ControlPage::ReadRecord(const PropertyFormat& property) {
  return base::Record(ReadText(property), property.type);
}

void ControlPage::ChangeRecord(const PropertyFormat& property,
                               const std::function<void(base::Record&)>& change) {
  NamingProperty(property.type, [&] {
    const automation::Object& object = Property(property.number);
    base::Record record(object.Text(host::kValue), property.type);
    change(record);
    object.Put(host::kValue, record.Join());
  });
}

base::Record ControlPage::ReadOptions() {
  BindFormats({&kOptions, 1});
  return NamingProperty(kOptions.type, [this] {
    return base::Record(Property(kOptions.number).Text(host::kValue), kOptions.type);
  });
}

void ControlPage::ChangeOptions(const std::function<void(base::Record&)>& change) {
  BindFormats({&kOptions, 1});
  ChangeRecord(kOptions, change);
}

std::int32_t ControlPage::WholeNumber(std::string_view property, const ui::Control& box) const {
  return NamingProperty(property, [&] { return Context().settings.numbers.ToInt32(box.Text()); });
}

std::vector<std::string> ControlPage::AssignedFunctions() {
  std::vector<std::string> functions;
  for (const std::string& name : Context().device.ControlOutputNames) {
    NamingProperty(name, [&] {
      host::NetworkVariable& output = Context().device.RoofTopVariables[name];
      const std::string value = output.ConfigProperties()[kFunctionProperty].Text(host::kValue);
      functions.push_back(base::Upper(base::Record(value).Field(0)));
    });
  }
  return functions;
}

std::vector<std::string> ControlPage::SelectedFunctions() const {
  std::vector<std::string> functions;
  for (std::size_t i = 0; i < host::DeviceObjects::kOutputs; ++i) {
    functions.push_back(Context().selections.GetSelectedOutputType(i));
  }
  return functions;
}

}  // namespace pages
