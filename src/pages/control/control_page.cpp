#include "pages/control/control_page.h"

#include "base/text.h"

namespace pages {
namespace {

// Read with its bare name by every page; the precision stays as the host has it.
constexpr PropertyFormat kOptions = {48, "UCPTobjectOptions", Units::kNone, host::kHostPrecision,
                                     host::kHostPrecision};

// By units, metric and imperial.
constexpr std::string_view kSuffixes[][2] = {{"", ""}, {"#SI", "#US"}, {"", "#DegF"}};

constexpr int kFunctionProperty = 3;  // of a control output's variable, as the outputs page sets it

}  // namespace

void ControlPage::BindFormats(std::span<const PropertyFormat> table) {
  for (const PropertyFormat& property : table) {
    std::string format(property.type);
    format += kSuffixes[static_cast<std::size_t>(property.units)][IsImperial()];
    NamingProperty(property.type, [&] { Property(property.number).Bind(format); });
  }
}

std::string ControlPage::ReadText(const PropertyFormat& property) {
  return NamingProperty(property.type, [&] { return Property(property.number).Read(Precision(property)); });
}

void ControlPage::WriteFields(const PropertyFormat& property, const std::vector<const ui::TextBox*>& boxes) {
  std::vector<std::string> texts, sources;
  for (const ui::TextBox* box : boxes) {
    texts.emplace_back(base::Trim(box->Text()));
    sources.push_back(Source(*box));
  }
  NamingProperty(property.type, [&] {
    Property(property.number).Write(property.type, Precision(property), texts, sources);
  });
}

void ControlPage::ReadBoxes(const std::vector<PropertyBox>& boxes) {
  for (const auto& [property, box] : boxes) {
    SetSource(property.type, {&box});
    ShowText(box, base::Trim(ReadText(property)));
  }
}

void ControlPage::WriteBoxes(const std::vector<PropertyBox>& boxes) {
  for (const auto& [property, box] : boxes) WriteFields(property, {&box});
}

base::Record ControlPage::ReadRecord(const PropertyFormat& property) {
  return base::Record(ReadText(property), property.type);
}

void ControlPage::ChangeRecord(const PropertyFormat& property, const Change& change) {
  NamingProperty(property.type,
                 [&] { Property(property.number).Change(property.type, Precision(property), change); });
}

base::Record ControlPage::ReadOptions() {
  BindFormats({&kOptions, 1});
  return ReadRecord(kOptions);
}

void ControlPage::ChangeOptions(const Change& change) {
  BindFormats({&kOptions, 1});
  ChangeRecord(kOptions, change);
}

std::int32_t ControlPage::WholeNumber(std::string_view property, const ui::Control& box) const {
  return NamingProperty(property, [&] {
    try {
      return Context().settings.numbers.ToInt32(box.Text());
    } catch (const base::Error& error) {
      Context().messages.RefuseControl(box, error.what());
      throw;
    }
  });
}

std::vector<std::string> ControlPage::AssignedFunctions() {
  std::vector<std::string> functions;
  for (const std::string& name : Context().device.ControlOutputNames) {
    NamingProperty(name, [&] {
      host::NetworkVariable& output = Context().device.RoofTopVariables[name];
      const std::string value = output.ConfigProperties()[kFunctionProperty].Read();
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
